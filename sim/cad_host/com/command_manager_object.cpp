#include "command_manager_object.h"

#include <comdef.h>

#include <algorithm>

#include "command_group_object.h"
#include "command_tab_object.h"
#include "host_state.h"
#include "host_values.h"
#include "late_binding.h"

namespace cad_host {
namespace {

constexpr LateMethod kGroupData = {.name = L"IGetGroupDataFromRegistry", .id = 23, .arguments = 3};

/// The array of numbers that a caller by name passed as the last argument.
SAFEARRAY* LastArray(const DISPPARAMS& parameters) {
  const VARIANTARG& argument = parameters.rgvarg[0];
  if (argument.vt != (VT_BYREF | VT_ARRAY | VT_I4) || !argument.pparray || !*argument.pparray) {
    throw _com_error(DISP_E_TYPEMISMATCH);
  }
  return *argument.pparray;
}

}  // namespace

STDMETHODIMP CommandManagerObject::RemoveCommandGroup(long UserID, VARIANT_BOOL* retval) {
  return Call(L"ICommandManager::RemoveCommandGroup", {In(UserID), Out(retval)}, [&](AddInCommands& manager) {
    Give(retval, Session()->commands.RemoveGroup(manager.add_in, UserID));
    return S_OK;
  });
}

STDMETHODIMP CommandManagerObject::GetCommandTab(long DocumentType, BSTR TabName, ICommandTab** retval) {
  return Call(L"ICommandManager::GetCommandTab", {In(DocumentType), In(TabName), Out(retval)},
              [&](AddInCommands&) {
                if (const auto tab = Session()->commands.FindTab(DocumentType, Text(TabName))) {
                  *retval = ObjectFor<CommandTabObject>(SharedServices(), tab);
                }
                return S_OK;
              });
}

STDMETHODIMP CommandManagerObject::AddCommandTab(long DocumentType, BSTR TabName, ICommandTab** retval) {
  return Call(L"ICommandManager::AddCommandTab", {In(DocumentType), In(TabName), Out(retval)},
              [&](AddInCommands&) {
                CommandInterface& commands = Session()->commands;
                const std::wstring name = Text(TabName);
                auto tab = commands.FindTab(DocumentType, name);
                const bool another = SharedServices()->quirks.IsOn(Quirk::kEqualTabNames);
                if (!tab || another) tab = commands.AddTab(DocumentType, name);
                *retval = ObjectFor<CommandTabObject>(SharedServices(), tab);
                return S_OK;
              });
}

STDMETHODIMP CommandManagerObject::RemoveCommandTab(ICommandTab* TabToRemove, VARIANT_BOOL* retval) {
  return Call(L"ICommandManager::RemoveCommandTab", {In(TabToRemove), Out(retval)}, [&](AddInCommands&) {
    auto* const tab = dynamic_cast<CommandTabObject*>(HostObject::From(TabToRemove));
    const bool removed = tab && Session()->commands.RemoveTab(tab->GetState());
    Give(retval, removed && !SharedServices()->quirks.HappensNow(Quirk::kFalseTabRemoval));
    return S_OK;
  });
}

STDMETHODIMP CommandManagerObject::CreateCommandGroup2(long UserID, BSTR Title, BSTR ToolTip, BSTR Hint,
                                                       long Position, VARIANT_BOOL IgnorePreviousVersion,
                                                       long* Errors, ICommandGroup** retval) {
  return Call(L"ICommandManager::CreateCommandGroup2",
              {In(UserID), In(Title), In(ToolTip), In(Hint), In(Position), In(IgnorePreviousVersion),
               Out(Errors), Out(retval)},
              [&](AddInCommands& manager) {
                CommandGroup group{.add_in = manager.add_in,
                                   .user_id = UserID,
                                   .title = Text(Title),
                                   .tool_tip = Text(ToolTip),
                                   .hint = Text(Hint),
                                   .position = Position,
                                   .ignores_previous = IgnorePreviousVersion != VARIANT_FALSE,
                                   .small_icons = {},
                                   .large_icons = {},
                                   .items = {}};
                const auto created = Session()->commands.CreateGroup(std::move(group));
                *Errors = created ? swCreateCommandGroup_Success : swCreateCommandGroup_Exists;
                if (created) *retval = ObjectFor<CommandGroupObject>(SharedServices(), created);
                return S_OK;
              });
}

STDMETHODIMP CommandManagerObject::RemoveFlyoutGroup(long UserID, VARIANT_BOOL* retval) {
  // The simulated host cannot create flyout groups, so there is nothing to remove.
  return Call(L"ICommandManager::RemoveFlyoutGroup", {In(UserID), Out(retval)},
              [](AddInCommands&) { return S_OK; });
}

STDMETHODIMP CommandManagerObject::GetCommandIDsCount(long UserGroupId, long* retval) {
  return Call(L"ICommandManager::GetCommandIDsCount", {In(UserGroupId), Out(retval)},
              [&](AddInCommands& manager) {
                const SavedGroup* const saved = Session()->commands.FindSaved(manager.add_in, UserGroupId);
                if (saved) *retval = static_cast<long>(saved->item_user_ids.size());
                return S_OK;
              });
}

STDMETHODIMP CommandManagerObject::IGetGroupDataFromRegistry(long UserGroupId, long Count, long* UserIDs,
                                                             VARIANT_BOOL* retval) {
  return Call(L"ICommandManager::IGetGroupDataFromRegistry",
              {In(UserGroupId), In(Count), Out(UserIDs, Count), Out(retval)}, [&](AddInCommands& manager) {
                const SavedGroup* const saved = Session()->commands.FindSaved(manager.add_in, UserGroupId);
                if (!saved) return S_OK;
                const std::vector<long>& ids = saved->item_user_ids;
                const auto capacity = static_cast<std::size_t>(std::max(Count, 0L));
                std::copy_n(ids.begin(), std::min(capacity, ids.size()), UserIDs);
                Give(retval, true);
                return S_OK;
              });
}

STDMETHODIMP CommandManagerObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return FindLate(*SharedServices(), kGroupData, names, count, ids);
}

STDMETHODIMP CommandManagerObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                          VARIANT* result, EXCEPINFO*, UINT*) try {
  const HRESULT checked = CheckLate(*SharedServices(), kGroupData, id, parameters);
  if (FAILED(checked)) return checked;
  const long group = LateNumber(*parameters, 0);
  const long count = LateNumber(*parameters, 1);
  SAFEARRAY* const ids = LastArray(*parameters);
  const auto capacity = static_cast<long>(ids->rgsabound[0].cElements);
  VARIANT_BOOL found = VARIANT_FALSE;
  const HRESULT read =
      IGetGroupDataFromRegistry(group, std::min(count, capacity), static_cast<long*>(ids->pvData), &found);
  if (FAILED(read) || !result) return read;
  result->vt = VT_BOOL;
  result->boolVal = found;
  return S_OK;
} catch (const _com_error& error) {
  return error.Error();
}

}  // namespace cad_host
