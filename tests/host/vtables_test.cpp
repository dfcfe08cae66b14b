// The simulated host's objects have every slot of the real host.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>

#include "CComBSTR.h"
#include "cad_host/host.h"
#include "case_name.h"
#include "host/assembly.h"
#include "host/command_manager.h"
#include "host/custom_properties.h"
#include "host/drawing.h"
#include "host/model_doc.h"
#include "host/selection.h"
#include "slot_table.h"
#include "temp_folder.h"

namespace {

constexpr int kFirstOwnSlot = 7;  // after IUnknown and IDispatch

/// An add-in that only connects, to get a cookie.
class IdleAddIn : public ISwAddin {
 public:
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP ConnectToSW(IDispatch*, long, VARIANT_BOOL* connected) override {
    *connected = VARIANT_TRUE;
    return S_OK;
  }
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* disconnected) override {
    *disconnected = VARIANT_TRUE;
    return S_OK;
  }
};

/// A host that creates one object of the interface of the parameter.
class VtableTest : public testing::TestWithParam<InterfaceRow> {
 protected:
  VtableTest() : m_addInEntry(m_host.Connect(&m_addIn, L"Idle")) {}

  IDispatchPtr Served() {
    static const std::map<std::string, std::function<IDispatchPtr(VtableTest&)>> ways = {
        {"ISldWorks", &VtableTest::Application},
        {"IModelDoc2", [](VtableTest& test) { return test.Active(swDocPART); }},
        {"IModelDocExtension", &VtableTest::Extension},
        {"ICustomPropertyManager", &VtableTest::PropertyManager},
        {"IAssemblyDoc", [](VtableTest& test) { return test.As<IAssemblyDoc>(test.Active(swDocASSEMBLY)); }},
        {"IDrawingDoc", [](VtableTest& test) { return test.As<IDrawingDoc>(test.Active(swDocDRAWING)); }},
        {"ISelectionMgr", &VtableTest::Selection},
        {"IComponent2", &VtableTest::Component},
        {"ICommandManager", &VtableTest::Manager},
        {"ICommandGroup", &VtableTest::Group},
        {"ICommandTab", &VtableTest::Tab},
        {"ICommandTabBox", &VtableTest::TabBox},
    };
    return ways.at(GetParam().name)(*this);
  }

  /// The interface pointer itself, not the identity that a query for IDispatch returns.
  template <class Interface>
  static IDispatchPtr As(IUnknown* object) {
    Interface* served = nullptr;
    EXPECT_EQ(object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(&served)), S_OK);
    return {static_cast<IDispatch*>(served), false};
  }

  IDispatchPtr Application() { return As<ISldWorks>(m_host.Application()); }
  IModelDoc2Ptr Active(swDocumentTypes_e type) {
    m_host.New(type);
    IModelDoc2Ptr document;
    m_host.Application()->get_IActiveDoc2(&document);
    return document;
  }
  IModelDocExtensionPtr ExtensionPointer() {
    IModelDocExtensionPtr extension;
    Active(swDocPART)->get_Extension(&extension);
    return extension;
  }
  IDispatchPtr Extension() { return As<IModelDocExtension>(ExtensionPointer()); }
  IDispatchPtr PropertyManager() {
    ICustomPropertyManagerPtr manager;
    ExtensionPointer()->get_CustomPropertyManager(CComBSTR(L""), &manager);
    return As<ICustomPropertyManager>(manager);
  }
  IDispatchPtr Selection() {
    ISelectionMgrPtr selection;
    Active(swDocPART)->get_ISelectionManager(&selection);
    return As<ISelectionMgr>(selection);
  }
  IDispatchPtr Component() {
    cad_host::WriteModelFile(m_folder.Path(L"bolt.sldprt"), {});
    const IModelDoc2Ptr document = Active(swDocASSEMBLY);
    auto& assembly = *m_host.ActiveDocument();
    assembly.selection = {{m_host.AddComponent(assembly, m_folder.Path(L"bolt.sldprt")), {}}};
    ISelectionMgrPtr selection;
    document->get_ISelectionManager(&selection);
    IDispatchPtr selected;
    selection->GetSelectedObject6(1, -1, &selected);
    return As<IComponent2>(selected);
  }
  ICommandManagerPtr ManagerPointer() {
    ICommandManagerPtr manager;
    m_host.Application()->GetCommandManager(m_addInEntry.cookie, &manager);
    return manager;
  }
  IDispatchPtr Manager() { return As<ICommandManager>(ManagerPointer()); }
  IDispatchPtr Group() {
    ICommandGroupPtr group;
    long errors = 0;
    ManagerPointer()->CreateCommandGroup2(0, CComBSTR(L""), CComBSTR(L""), CComBSTR(L""), -1, VARIANT_FALSE,
                                          &errors, &group);
    return As<ICommandGroup>(group);
  }
  ICommandTabPtr TabPointer() {
    ICommandTabPtr tab;
    ManagerPointer()->AddCommandTab(swDocPART, CComBSTR(L"Tab"), &tab);
    return tab;
  }
  IDispatchPtr Tab() { return As<ICommandTab>(TabPointer()); }
  IDispatchPtr TabBox() {
    ICommandTabBoxPtr box;
    TabPointer()->AddCommandTabBox(&box);
    return As<ICommandTabBox>(box);
  }

  static bool IsDeclared(int slot) {
    return std::ranges::any_of(SlotTable(), [slot](const SlotRow& row) {
      return row.interface_name == std::string(GetParam().name) && row.published_slot == slot;
    });
  }

  TempFolder m_folder;
  IdleAddIn m_addIn;
  cad_host::Host m_host;
  cad_host::AddIn& m_addInEntry;
};

TEST_P(VtableTest, ReturnsNotImplementedForEveryReservedSlot) {
  const IDispatchPtr served = Served();
  IDispatch* const object = served;
  ASSERT_NE(object, nullptr);
  using Method = HRESULT(STDMETHODCALLTYPE*)(void*);
  const Method* const vtable = *reinterpret_cast<const Method* const*>(object);
  int reserved = 0;
  for (int slot = kFirstOwnSlot; slot < GetParam().slots; ++slot) {
    if (IsDeclared(slot)) continue;
    ++reserved;
    EXPECT_EQ(vtable[slot](object), E_NOTIMPL) << "slot " << slot;
  }
  EXPECT_GT(reserved, 0);
}

TEST_P(VtableTest, CannotBeCalledByName) {
  const IDispatchPtr served = Served();
  wchar_t name[] = L"Name";
  LPOLESTR names[] = {name};
  DISPID id = 0;
  EXPECT_EQ(served->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id), E_NOTIMPL);
  DISPPARAMS none{};
  EXPECT_EQ(served->Invoke(1, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            E_NOTIMPL);
}

std::vector<InterfaceRow> ServedInterfaces() {
  std::vector<InterfaceRow> rows = InterfaceTable();
  std::erase_if(rows, [](const InterfaceRow& row) { return row.name == std::string("ISwAddin"); });
  return rows;
}

INSTANTIATE_TEST_SUITE_P(, VtableTest, testing::ValuesIn(ServedInterfaces()), CaseName<InterfaceRow>);

}  // namespace
