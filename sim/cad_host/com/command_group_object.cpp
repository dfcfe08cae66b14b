#include "command_group_object.h"

#include "host_state.h"

namespace cad_host {

std::wstring CommandGroupObject::Describe() const {
  const auto group = GetState();
  return group ? L"command group \"" + group->title + L"\"" : L"a removed command group";
}

STDMETHODIMP CommandGroupObject::AddCommandItem(BSTR Name, long Position, BSTR HintString, BSTR ToolTip,
                                                long ImageListIndex, BSTR CallbackFunction, BSTR EnableMethod,
                                                long UserID, long* retval) {
  return Call(L"ICommandGroup::AddCommandItem",
              {In(Name), In(Position), In(HintString), In(ToolTip), In(ImageListIndex), In(CallbackFunction),
               In(EnableMethod), In(UserID), Out(retval)},
              [&](CommandGroup& group) {
                group.items.push_back({.name = Text(Name),
                                       .position = Position,
                                       .hint = Text(HintString),
                                       .tool_tip = Text(ToolTip),
                                       .image_index = ImageListIndex,
                                       .callback = Text(CallbackFunction),
                                       .enable_method = Text(EnableMethod),
                                       .user_id = UserID});
                *retval = static_cast<long>(group.items.size()) - 1;
                return S_OK;
              });
}

STDMETHODIMP CommandGroupObject::Activate(VARIANT_BOOL* retval) {
  return Call(L"ICommandGroup::Activate", {Out(retval)}, [&](CommandGroup& group) {
    Session()->commands.Activate(group);
    Give(retval, true);
    return S_OK;
  });
}

HRESULT CommandGroupObject::SetIcons(IconList& icons, BSTR path) {
  icons = CommandInterface::ReadIcons(Text(path));
  if (!icons.is_bitmap) SharedServices()->journal.Note(L"not a bitmap: \"" + icons.path + L"\"");
  return S_OK;
}

STDMETHODIMP CommandGroupObject::get_LargeIconList(BSTR* retval) {
  return Call(L"ICommandGroup::get_LargeIconList", {Out(retval)}, [&](CommandGroup& group) {
    Give(retval, group.large_icons.path);
    return S_OK;
  });
}

STDMETHODIMP CommandGroupObject::put_LargeIconList(BSTR LargeIconList) {
  return Call(L"ICommandGroup::put_LargeIconList", {In(LargeIconList)},
              [&](CommandGroup& group) { return SetIcons(group.large_icons, LargeIconList); });
}

STDMETHODIMP CommandGroupObject::get_SmallIconList(BSTR* retval) {
  return Call(L"ICommandGroup::get_SmallIconList", {Out(retval)}, [&](CommandGroup& group) {
    Give(retval, group.small_icons.path);
    return S_OK;
  });
}

STDMETHODIMP CommandGroupObject::put_SmallIconList(BSTR SmallIconList) {
  return Call(L"ICommandGroup::put_SmallIconList", {In(SmallIconList)},
              [&](CommandGroup& group) { return SetIcons(group.small_icons, SmallIconList); });
}

STDMETHODIMP CommandGroupObject::get_HasToolbar(VARIANT_BOOL* retval) {
  return Call(L"ICommandGroup::get_HasToolbar", {Out(retval)}, [&](CommandGroup& group) {
    Give(retval, group.has_toolbar);
    return S_OK;
  });
}

STDMETHODIMP CommandGroupObject::put_HasToolbar(VARIANT_BOOL HasToolbar) {
  return Call(L"ICommandGroup::put_HasToolbar", {In(HasToolbar)}, [&](CommandGroup& group) {
    group.has_toolbar = HasToolbar != VARIANT_FALSE;
    return S_OK;
  });
}

STDMETHODIMP CommandGroupObject::get_HasMenu(VARIANT_BOOL* retval) {
  return Call(L"ICommandGroup::get_HasMenu", {Out(retval)}, [&](CommandGroup& group) {
    Give(retval, group.has_menu);
    return S_OK;
  });
}

STDMETHODIMP CommandGroupObject::put_HasMenu(VARIANT_BOOL HasMenu) {
  return Call(L"ICommandGroup::put_HasMenu", {In(HasMenu)}, [&](CommandGroup& group) {
    group.has_menu = HasMenu != VARIANT_FALSE;
    return S_OK;
  });
}

STDMETHODIMP CommandGroupObject::get_CommandID(long CommandIndex, long* retval) {
  return Call(L"ICommandGroup::get_CommandID", {In(CommandIndex), Out(retval)}, [&](CommandGroup& group) {
    const auto index = static_cast<std::size_t>(CommandIndex);
    if (CommandIndex >= 0 && index < group.items.size()) *retval = group.items[index].command_id;
    return S_OK;
  });
}

}  // namespace cad_host
