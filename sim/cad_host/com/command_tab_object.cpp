#include "command_tab_object.h"

#include "host_state.h"

namespace cad_host {

std::wstring CommandTabObject::Describe() const {
  const auto tab = GetState();
  if (!tab) return L"a removed command tab";
  return L"command tab \"" + tab->name + L"\" of " + DocumentTypeName(tab->document_type);
}

STDMETHODIMP CommandTabObject::AddCommandTabBox(ICommandTabBox** retval) {
  return Call(L"ICommandTab::AddCommandTabBox", {Out(retval)}, [&](CommandTab& tab) {
    tab.boxes.push_back(std::make_shared<CommandTabBox>());
    *retval = ObjectFor<CommandTabBoxObject>(SharedServices(), tab.boxes.back());
    Session()->commands.Remember();
    return S_OK;
  });
}

STDMETHODIMP CommandTabObject::get_Visible(VARIANT_BOOL* retval) {
  return Call(L"ICommandTab::get_Visible", {Out(retval)}, [&](CommandTab& tab) {
    Give(retval, tab.visible);
    return S_OK;
  });
}

STDMETHODIMP CommandTabObject::put_Visible(VARIANT_BOOL TabVisible) {
  return Call(L"ICommandTab::put_Visible", {In(TabVisible)}, [&](CommandTab& tab) {
    tab.visible = TabVisible != VARIANT_FALSE;
    Session()->commands.Remember();
    return S_OK;
  });
}

STDMETHODIMP CommandTabObject::get_Name(BSTR* retval) {
  return Call(L"ICommandTab::get_Name", {Out(retval)}, [&](CommandTab& tab) {
    Give(retval, tab.name);
    return S_OK;
  });
}

STDMETHODIMP CommandTabBoxObject::IAddCommands(long CommandIDCount, long* CommandIDs, long* TextDisplayStyles,
                                               VARIANT_BOOL* retval) {
  return Call(L"ICommandTabBox::IAddCommands",
              {In(CommandIDs, CommandIDCount), In(TextDisplayStyles, CommandIDCount), Out(retval)},
              [&](CommandTabBox& box) {
                for (long index = 0; index < CommandIDCount; ++index) {
                  box.commands.push_back({CommandIDs[index], TextDisplayStyles[index]});
                }
                Session()->commands.Remember();
                Give(retval, true);
                return S_OK;
              });
}

}  // namespace cad_host
