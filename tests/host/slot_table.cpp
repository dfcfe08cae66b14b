#include "slot_table.h"

#include <cstring>
#include <type_traits>

#include "host/application.h"
#include "host/assembly.h"
#include "host/command_manager.h"
#include "host/custom_properties.h"
#include "host/drawing.h"
#include "host/model_doc.h"
#include "host/selection.h"

namespace {

/// A pointer to a virtual method begins with the method's offset in the vtable, plus one.
template <class Method>
int SlotOf(Method method) {
  std::size_t first_word = 0;
  std::memcpy(&first_word, &method, sizeof first_word);
  return static_cast<int>((first_word - 1) / sizeof(void*));
}

/// `Owner` is the base of the interface that declares the method.
template <class Interface, class Signature, class Owner, class... Arguments>
SlotRow Slot(int published_slot, const char* interface_name, const char* name,
             HRESULT (STDMETHODCALLTYPE Owner::*method)(Arguments...)) {
  static_assert(std::is_base_of_v<Owner, Interface>);
  static_assert(std::is_same_v<Signature, HRESULT(Arguments...)>);
  return {interface_name, name, published_slot, SlotOf(method)};
}

}  // namespace

const std::vector<SlotRow>& SlotTable() {
  static const std::vector<SlotRow> table = {
      Slot<ISldWorks, HRESULT(BSTR, IDispatch**)>(11, "ISldWorks", "ActivateDoc", &ISldWorks::ActivateDoc),
      Slot<ISldWorks, HRESULT(BSTR)>(17, "ISldWorks", "CloseDoc", &ISldWorks::CloseDoc),
      Slot<ISldWorks, HRESULT(BSTR*)>(25, "ISldWorks", "RevisionNumber", &ISldWorks::RevisionNumber),
      Slot<ISldWorks, HRESULT(BSTR, IDispatch**)>(131, "ISldWorks", "GetOpenDocumentByName",
                                                  &ISldWorks::GetOpenDocumentByName),
      Slot<ISldWorks, HRESULT(long, IDispatch*, long, VARIANT_BOOL*)>(
          155, "ISldWorks", "SetAddinCallbackInfo", &ISldWorks::SetAddinCallbackInfo),
      Slot<ISldWorks, HRESULT(IModelDoc2**)>(165, "ISldWorks", "get_IActiveDoc2",
                                             &ISldWorks::get_IActiveDoc2),
      Slot<ISldWorks, HRESULT(BSTR, long, long, BSTR, long*, long*, IModelDoc2**)>(
          176, "ISldWorks", "OpenDoc6", &ISldWorks::OpenDoc6),
      Slot<ISldWorks, HRESULT(long, ICommandManager**)>(231, "ISldWorks", "GetCommandManager",
                                                        &ISldWorks::GetCommandManager),
      Slot<IModelDoc2, HRESULT(ISelectionMgr**)>(8, "IModelDoc2", "get_ISelectionManager",
                                                 &IModelDoc2::get_ISelectionManager),
      Slot<IModelDoc2, HRESULT(BSTR*)>(90, "IModelDoc2", "GetTitle", &IModelDoc2::GetTitle),
      Slot<IModelDoc2, HRESULT(BSTR*)>(91, "IModelDoc2", "GetPathName", &IModelDoc2::GetPathName),
      Slot<IModelDoc2, HRESULT(long*)>(92, "IModelDoc2", "GetType", &IModelDoc2::GetType),
      Slot<IModelDoc2, HRESULT(VARIANT_BOOL*)>(398, "IModelDoc2", "IsOpenedViewOnly",
                                               &IModelDoc2::IsOpenedViewOnly),
      Slot<IModelDoc2, HRESULT(VARIANT_BOOL*)>(399, "IModelDoc2", "IsOpenedReadOnly",
                                               &IModelDoc2::IsOpenedReadOnly),
      Slot<IModelDoc2, HRESULT(VARIANT_BOOL*)>(473, "IModelDoc2", "GetSaveFlag", &IModelDoc2::GetSaveFlag),
      Slot<IModelDoc2, HRESULT(IModelDocExtension**)>(798, "IModelDoc2", "get_Extension",
                                                      &IModelDoc2::get_Extension),
      Slot<IModelDocExtension, HRESULT(BSTR, ICustomPropertyManager**)>(
          92, "IModelDocExtension", "get_CustomPropertyManager",
          &IModelDocExtension::get_CustomPropertyManager),
      Slot<ICustomPropertyManager, HRESULT(long*)>(8, "ICustomPropertyManager", "get_Count",
                                                   &ICustomPropertyManager::get_Count),
      Slot<ICustomPropertyManager, HRESULT(VARIANT*)>(9, "ICustomPropertyManager", "GetNames",
                                                      &ICustomPropertyManager::GetNames),
      Slot<ICustomPropertyManager, HRESULT(BSTR, BSTR, long*)>(13, "ICustomPropertyManager", "Set",
                                                               &ICustomPropertyManager::Set),
      Slot<ICustomPropertyManager, HRESULT(BSTR, BSTR*, BSTR*)>(16, "ICustomPropertyManager", "Get2",
                                                                &ICustomPropertyManager::Get2),
      Slot<ICustomPropertyManager, HRESULT(VARIANT*, VARIANT*, VARIANT*, long*)>(
          19, "ICustomPropertyManager", "GetAll", &ICustomPropertyManager::GetAll),
      Slot<ICustomPropertyManager, HRESULT(BSTR, VARIANT_BOOL, BSTR*, BSTR*, VARIANT_BOOL*)>(
          21, "ICustomPropertyManager", "Get3", &ICustomPropertyManager::Get3),
      Slot<IAssemblyDoc,
           HRESULT(BSTR, long, BSTR, VARIANT_BOOL, BSTR, double, double, double, IComponent2**)>(
          153, "IAssemblyDoc", "AddComponent5", &IAssemblyDoc::AddComponent5),
      Slot<IAssemblyDoc, HRESULT(BSTR, BSTR, VARIANT_BOOL, long, VARIANT_BOOL, VARIANT_BOOL*)>(
          193, "IAssemblyDoc", "ReplaceComponents2", &IAssemblyDoc::ReplaceComponents2),
      Slot<IDrawingDoc, HRESULT(BSTR, BSTR, double, double, double, IView**)>(
          236, "IDrawingDoc", "CreateDrawViewFromModelView3", &IDrawingDoc::CreateDrawViewFromModelView3),
      Slot<ISelectionMgr, HRESULT(long, long, IDispatch**)>(44, "ISelectionMgr", "GetSelectedObject6",
                                                            &ISelectionMgr::GetSelectedObject6),
      Slot<ISelectionMgr, HRESULT(long, long, double*)>(46, "ISelectionMgr", "IGetSelectionPoint2",
                                                        &ISelectionMgr::IGetSelectionPoint2),
      Slot<IComponent2, HRESULT(long*)>(40, "IComponent2", "GetSuppression", &IComponent2::GetSuppression),
      Slot<IComponent2, HRESULT(BSTR*)>(44, "IComponent2", "GetPathName", &IComponent2::GetPathName),
      Slot<IComponent2, HRESULT(BSTR*)>(69, "IComponent2", "get_Name2", &IComponent2::get_Name2),
      Slot<IComponent2, HRESULT(long, long*)>(110, "IComponent2", "SetSuppression2",
                                              &IComponent2::SetSuppression2),
      Slot<ICommandManager, HRESULT(long, VARIANT_BOOL*)>(8, "ICommandManager", "RemoveCommandGroup",
                                                          &ICommandManager::RemoveCommandGroup),
      Slot<ICommandManager, HRESULT(long, BSTR, ICommandTab**)>(17, "ICommandManager", "GetCommandTab",
                                                                &ICommandManager::GetCommandTab),
      Slot<ICommandManager, HRESULT(long, BSTR, ICommandTab**)>(18, "ICommandManager", "AddCommandTab",
                                                                &ICommandManager::AddCommandTab),
      Slot<ICommandManager, HRESULT(ICommandTab*, VARIANT_BOOL*)>(19, "ICommandManager", "RemoveCommandTab",
                                                                  &ICommandManager::RemoveCommandTab),
      Slot<ICommandManager, HRESULT(long, BSTR, BSTR, BSTR, long, VARIANT_BOOL, long*, ICommandGroup**)>(
          20, "ICommandManager", "CreateCommandGroup2", &ICommandManager::CreateCommandGroup2),
      Slot<ICommandManager, HRESULT(long, VARIANT_BOOL*)>(26, "ICommandManager", "RemoveFlyoutGroup",
                                                          &ICommandManager::RemoveFlyoutGroup),
      Slot<ICommandManager, HRESULT(long, long*)>(28, "ICommandManager", "GetCommandIDsCount",
                                                  &ICommandManager::GetCommandIDsCount),
      Slot<ICommandManager, HRESULT(long, long, long*, VARIANT_BOOL*)>(
          29, "ICommandManager", "IGetGroupDataFromRegistry", &ICommandManager::IGetGroupDataFromRegistry),
      Slot<ICommandGroup, HRESULT(BSTR, long, BSTR, BSTR, long, BSTR, BSTR, long, long*)>(
          7, "ICommandGroup", "AddCommandItem", &ICommandGroup::AddCommandItem),
      Slot<ICommandGroup, HRESULT(VARIANT_BOOL*)>(10, "ICommandGroup", "Activate", &ICommandGroup::Activate),
      Slot<ICommandGroup, HRESULT(BSTR*)>(15, "ICommandGroup", "get_LargeIconList",
                                          &ICommandGroup::get_LargeIconList),
      Slot<ICommandGroup, HRESULT(BSTR)>(16, "ICommandGroup", "put_LargeIconList",
                                         &ICommandGroup::put_LargeIconList),
      Slot<ICommandGroup, HRESULT(BSTR*)>(17, "ICommandGroup", "get_SmallIconList",
                                          &ICommandGroup::get_SmallIconList),
      Slot<ICommandGroup, HRESULT(BSTR)>(18, "ICommandGroup", "put_SmallIconList",
                                         &ICommandGroup::put_SmallIconList),
      Slot<ICommandGroup, HRESULT(VARIANT_BOOL*)>(26, "ICommandGroup", "get_HasToolbar",
                                                  &ICommandGroup::get_HasToolbar),
      Slot<ICommandGroup, HRESULT(VARIANT_BOOL)>(27, "ICommandGroup", "put_HasToolbar",
                                                 &ICommandGroup::put_HasToolbar),
      Slot<ICommandGroup, HRESULT(VARIANT_BOOL*)>(28, "ICommandGroup", "get_HasMenu",
                                                  &ICommandGroup::get_HasMenu),
      Slot<ICommandGroup, HRESULT(VARIANT_BOOL)>(29, "ICommandGroup", "put_HasMenu",
                                                 &ICommandGroup::put_HasMenu),
      Slot<ICommandGroup, HRESULT(long, long*)>(36, "ICommandGroup", "get_CommandID",
                                                &ICommandGroup::get_CommandID),
      Slot<ICommandTab, HRESULT(ICommandTabBox**)>(10, "ICommandTab", "AddCommandTabBox",
                                                   &ICommandTab::AddCommandTabBox),
      Slot<ICommandTab, HRESULT(VARIANT_BOOL*)>(12, "ICommandTab", "get_Visible", &ICommandTab::get_Visible),
      Slot<ICommandTab, HRESULT(VARIANT_BOOL)>(13, "ICommandTab", "put_Visible", &ICommandTab::put_Visible),
      Slot<ICommandTab, HRESULT(BSTR*)>(16, "ICommandTab", "get_Name", &ICommandTab::get_Name),
      Slot<ICommandTabBox, HRESULT(long, long*, long*, VARIANT_BOOL*)>(8, "ICommandTabBox", "IAddCommands",
                                                                       &ICommandTabBox::IAddCommands),
      Slot<ISwAddin, HRESULT(IDispatch*, long, VARIANT_BOOL*)>(3, "ISwAddin", "ConnectToSW",
                                                               &ISwAddin::ConnectToSW),
      Slot<ISwAddin, HRESULT(VARIANT_BOOL*)>(4, "ISwAddin", "DisconnectFromSW", &ISwAddin::DisconnectFromSW),
  };
  return table;
}

const std::vector<InterfaceRow>& InterfaceTable() {
  static const std::vector<InterfaceRow> table = {
      {"ISldWorks", L"{83A33D22-27C5-11CE-BFD4-00400513BB57}", __uuidof(ISldWorks), 368},
      {"IModelDoc2", L"{B90793FB-EF3D-4B80-A5C4-99959CDB6CEB}", __uuidof(IModelDoc2), 804},
      {"IModelDocExtension", L"{99F4D4AF-F268-4EE1-8C55-041F7BECF879}", __uuidof(IModelDocExtension), 359},
      {"ICustomPropertyManager", L"{F1938D94-0D1F-4E88-9874-164B1E6568F1}", __uuidof(ICustomPropertyManager),
       34},
      {"IAssemblyDoc", L"{83A33D35-27C5-11CE-BFD4-00400513BB57}", __uuidof(IAssemblyDoc), 215},
      {"IDrawingDoc", L"{83A33D33-27C5-11CE-BFD4-00400513BB57}", __uuidof(IDrawingDoc), 285},
      {"ISelectionMgr", L"{83A33D59-27C5-11CE-BFD4-00400513BB57}", __uuidof(ISelectionMgr), 70},
      {"IComponent2", L"{655D6F2A-5441-45D1-8CBA-D35FB26988E4}", __uuidof(IComponent2), 178},
      {"ICommandManager", L"{F61069CF-2E42-4AC4-A517-6A95B79E45EE}", __uuidof(ICommandManager), 31},
      {"ICommandGroup", L"{FF545450-B559-400D-964C-A3811F209148}", __uuidof(ICommandGroup), 45},
      {"ICommandTab", L"{FC248E07-607D-4429-960B-E4CE20AB55AB}", __uuidof(ICommandTab), 19},
      {"ICommandTabBox", L"{1DBAAB20-9626-4CB8-A275-C346AC425362}", __uuidof(ICommandTabBox), 13},
      {"ISwAddin", L"{DA306A0D-EAC5-4406-8610-B1DA805D9270}", __uuidof(ISwAddin), 5},
  };
  return table;
}
