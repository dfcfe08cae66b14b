/// @file The command manager of an add-in.
#pragma once

#include "cad_host/add_in.h"
#include "com_object.h"

namespace cad_host {

class CommandManagerObject : public ComObject<AddInCommands, ICommandManager> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"the command manager"; }

  STDMETHODIMP RemoveCommandGroup(long UserID, VARIANT_BOOL* retval) override;
  STDMETHODIMP GetCommandTab(long DocumentType, BSTR TabName, ICommandTab** retval) override;
  STDMETHODIMP AddCommandTab(long DocumentType, BSTR TabName, ICommandTab** retval) override;
  STDMETHODIMP RemoveCommandTab(ICommandTab* TabToRemove, VARIANT_BOOL* retval) override;
  STDMETHODIMP CreateCommandGroup2(long UserID, BSTR Title, BSTR ToolTip, BSTR Hint, long Position,
                                   VARIANT_BOOL IgnorePreviousVersion, long* Errors,
                                   ICommandGroup** retval) override;
  STDMETHODIMP RemoveFlyoutGroup(long UserID, VARIANT_BOOL* retval) override;
  STDMETHODIMP GetCommandIDsCount(long UserGroupId, long* retval) override;
  STDMETHODIMP IGetGroupDataFromRegistry(long UserGroupId, long Count, long* UserIDs,
                                         VARIANT_BOOL* retval) override;

  // Only IGetGroupDataFromRegistry, only while Quirk::kCallerArrays is off.
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;
};

}  // namespace cad_host
