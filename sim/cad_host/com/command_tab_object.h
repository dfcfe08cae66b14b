/// @file A command tab and its boxes.
#pragma once

#include "cad_host/commands.h"
#include "com_object.h"

namespace cad_host {

class CommandTabObject : public ComObject<CommandTab, ICommandTab> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override;

  STDMETHODIMP AddCommandTabBox(ICommandTabBox** retval) override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* retval) override;
  STDMETHODIMP put_Visible(VARIANT_BOOL TabVisible) override;
  STDMETHODIMP get_Name(BSTR* retval) override;
};

class CommandTabBoxObject : public ComObject<CommandTabBox, ICommandTabBox> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"a command tab box"; }

  STDMETHODIMP IAddCommands(long CommandIDCount, long* CommandIDs, long* TextDisplayStyles,
                            VARIANT_BOOL* retval) override;
};

}  // namespace cad_host
