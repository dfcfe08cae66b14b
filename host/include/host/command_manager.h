/// @file The command interface that an add-in adds to the host.
#pragma once

#include "host/interfaces_fwd.h"
#include "host/slots.h"

/// A box of commands on a command tab.
struct ICommandTabBox : ReserveSlots<IDispatch, 7, 8> {
  virtual HRESULT STDMETHODCALLTYPE IAddCommands(long CommandIDCount, long* CommandIDs,
                                                 long* TextDisplayStyles, VARIANT_BOOL* retval) = 0;
};
__CRT_UUID_DECL(ICommandTabBox, 0x1dbaab20, 0x9626, 0x4cb8, 0xa2, 0x75, 0xc3, 0x46, 0xac, 0x42, 0x53, 0x62)
_COM_SMARTPTR_TYPEDEF(ICommandTabBox, __uuidof(ICommandTabBox));

namespace layout {
struct CommandTab_10 : ReserveSlots<IDispatch, 7, 10> {
  virtual HRESULT STDMETHODCALLTYPE AddCommandTabBox(ICommandTabBox** retval) = 0;
};
struct CommandTab_13 : ReserveSlots<CommandTab_10, 11, 12> {
  virtual HRESULT STDMETHODCALLTYPE get_Visible(VARIANT_BOOL* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Visible(VARIANT_BOOL TabVisible) = 0;
};
}  // namespace layout

/// A tab of the command manager for one document type.
struct ICommandTab : ReserveSlots<layout::CommandTab_13, 14, 16> {
  virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* retval) = 0;
};
__CRT_UUID_DECL(ICommandTab, 0xfc248e07, 0x607d, 0x4429, 0x96, 0x0b, 0xe4, 0xce, 0x20, 0xab, 0x55, 0xab)
_COM_SMARTPTR_TYPEDEF(ICommandTab, __uuidof(ICommandTab));

namespace layout {
struct CommandGroup_7 : ReserveSlots<IDispatch, 7, 7> {
  virtual HRESULT STDMETHODCALLTYPE AddCommandItem(BSTR Name, long Position, BSTR HintString, BSTR ToolTip,
                                                   long ImageListIndex, BSTR CallbackFunction,
                                                   BSTR EnableMethod, long UserID, long* retval) = 0;
};
struct CommandGroup_10 : ReserveSlots<CommandGroup_7, 8, 10> {
  virtual HRESULT STDMETHODCALLTYPE Activate(VARIANT_BOOL* retval) = 0;
};
struct CommandGroup_18 : ReserveSlots<CommandGroup_10, 11, 15> {
  virtual HRESULT STDMETHODCALLTYPE get_LargeIconList(BSTR* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_LargeIconList(BSTR LargeIconList) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_SmallIconList(BSTR* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_SmallIconList(BSTR SmallIconList) = 0;
};
struct CommandGroup_29 : ReserveSlots<CommandGroup_18, 19, 26> {
  virtual HRESULT STDMETHODCALLTYPE get_HasToolbar(VARIANT_BOOL* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_HasToolbar(VARIANT_BOOL HasToolbar) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_HasMenu(VARIANT_BOOL* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_HasMenu(VARIANT_BOOL HasMenu) = 0;
};
}  // namespace layout

/// A menu and toolbar of an add-in.
struct ICommandGroup : ReserveSlots<layout::CommandGroup_29, 30, 36> {
  virtual HRESULT STDMETHODCALLTYPE get_CommandID(long CommandIndex, long* retval) = 0;
};
__CRT_UUID_DECL(ICommandGroup, 0xff545450, 0xb559, 0x400d, 0x96, 0x4c, 0xa3, 0x81, 0x1f, 0x20, 0x91, 0x48)
_COM_SMARTPTR_TYPEDEF(ICommandGroup, __uuidof(ICommandGroup));

namespace layout {
struct CommandManager_8 : ReserveSlots<IDispatch, 7, 8> {
  virtual HRESULT STDMETHODCALLTYPE RemoveCommandGroup(long UserID, VARIANT_BOOL* retval) = 0;
};
struct CommandManager_20 : ReserveSlots<CommandManager_8, 9, 17> {
  virtual HRESULT STDMETHODCALLTYPE GetCommandTab(long DocumentType, BSTR TabName, ICommandTab** retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddCommandTab(long DocumentType, BSTR TabName, ICommandTab** retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveCommandTab(ICommandTab* TabToRemove, VARIANT_BOOL* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateCommandGroup2(long UserID, BSTR Title, BSTR ToolTip, BSTR Hint,
                                                        long Position, VARIANT_BOOL IgnorePreviousVersion,
                                                        long* Errors, ICommandGroup** retval) = 0;
};
struct CommandManager_26 : ReserveSlots<CommandManager_20, 21, 26> {
  virtual HRESULT STDMETHODCALLTYPE RemoveFlyoutGroup(long UserID, VARIANT_BOOL* retval) = 0;
};
}  // namespace layout

/// An add-in's command groups and command tabs.
struct ICommandManager : ReserveSlots<layout::CommandManager_26, 27, 28> {
  virtual HRESULT STDMETHODCALLTYPE GetCommandIDsCount(long UserGroupId, long* retval) = 0;
  virtual HRESULT STDMETHODCALLTYPE IGetGroupDataFromRegistry(long UserGroupId, long Count, long* UserIDs,
                                                              VARIANT_BOOL* retval) = 0;
};
__CRT_UUID_DECL(ICommandManager, 0xf61069cf, 0x2e42, 0x4ac4, 0xa5, 0x17, 0x6a, 0x95, 0xb7, 0x9e, 0x45, 0xee)
_COM_SMARTPTR_TYPEDEF(ICommandManager, __uuidof(ICommandManager));
