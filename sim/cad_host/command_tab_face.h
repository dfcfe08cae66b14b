/// @file A command tab and its boxes.
#pragma once

#include "cad_host/commands.h"
#include "face.h"

namespace cad_host {

class CommandTabFace : public Face<CommandTab, ICommandTab> {
 public:
  using Face::Face;

  std::wstring Describe() const override;

  STDMETHODIMP AddCommandTabBox(ICommandTabBox** retval) override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* retval) override;
  STDMETHODIMP put_Visible(VARIANT_BOOL TabVisible) override;
  STDMETHODIMP get_Name(BSTR* retval) override;
};

class CommandTabBoxFace : public Face<CommandTabBox, ICommandTabBox> {
 public:
  using Face::Face;

  std::wstring Describe() const override { return L"a command tab box"; }

  STDMETHODIMP IAddCommands(long CommandIDCount, long* CommandIDs, long* TextDisplayStyles,
                            VARIANT_BOOL* retval) override;
};

}  // namespace cad_host
