/// @file A command group.
#pragma once

#include "cad_host/commands.h"
#include "com_object.h"

namespace cad_host {

class CommandGroupObject : public ComObject<CommandGroup, ICommandGroup> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override;

  STDMETHODIMP AddCommandItem(BSTR Name, long Position, BSTR HintString, BSTR ToolTip, long ImageListIndex,
                              BSTR CallbackFunction, BSTR EnableMethod, long UserID, long* retval) override;
  STDMETHODIMP Activate(VARIANT_BOOL* retval) override;
  STDMETHODIMP get_LargeIconList(BSTR* retval) override;
  STDMETHODIMP put_LargeIconList(BSTR LargeIconList) override;
  STDMETHODIMP get_SmallIconList(BSTR* retval) override;
  STDMETHODIMP put_SmallIconList(BSTR SmallIconList) override;
  STDMETHODIMP get_HasToolbar(VARIANT_BOOL* retval) override;
  STDMETHODIMP put_HasToolbar(VARIANT_BOOL HasToolbar) override;
  STDMETHODIMP get_HasMenu(VARIANT_BOOL* retval) override;
  STDMETHODIMP put_HasMenu(VARIANT_BOOL HasMenu) override;
  STDMETHODIMP get_CommandID(long CommandIndex, long* retval) override;

 private:
  HRESULT SetIcons(IconList& icons, BSTR path);
};

}  // namespace cad_host
