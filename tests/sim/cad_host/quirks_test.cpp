// Each quirk of the host, on and off.
#include "cad_host/quirks.h"

#include <array>
#include <set>

#include "com/test_add_in.h"
#include "host/assembly.h"
#include "host/command_manager.h"
#include "host/model_doc.h"
#include "host/selection.h"
#include "host_fixture.h"

namespace {

using cad_host::HostError;
using cad_host::Quirk;
using cad_host::Quirks;

class QuirksTest : public HostTest {
 protected:
  static constexpr long kSaved = 5;  // user id of a group

  void TurnOff(Quirk quirk) { Host().GetQuirks().Set(quirk, false); }

  /// The command manager of a connected add-in.
  ICommandManagerPtr Manager() {
    if (Host().ConnectedAddIns().empty()) Host().Connect(&m_addIn, L"Test add-in");
    ICommandManagerPtr manager;
    Host().Application()->GetCommandManager(Host().ConnectedAddIns()[0]->cookie, &manager);
    return manager;
  }

  HRESULT OpenMissingFile() {
    IModelDoc2Ptr document;
    long errors = 0;
    long warnings = 0;
    const HRESULT result = Host().Application()->OpenDoc6(CComBSTR(m_folder.Path(L"none.sldprt")), swDocPART,
                                                          1, CComBSTR(L""), &errors, &warnings, &document);
    EXPECT_FALSE(document);
    EXPECT_NE(errors, 0);
    return result;
  }

  ICommandTabPtr AddTab() {
    ICommandTabPtr tab;
    EXPECT_EQ(Manager()->AddCommandTab(swDocPART, CComBSTR(L"Tab"), &tab), S_OK);
    return tab;
  }

  /// What RemoveCommandTab returns for a tab that exists.
  bool RemoveNewTab() {
    VARIANT_BOOL removed = VARIANT_FALSE;
    EXPECT_EQ(Manager()->RemoveCommandTab(AddTab(), &removed), S_OK);
    EXPECT_TRUE(Host().Tabs().empty());
    return removed == VARIANT_TRUE;
  }

  /// An assembly with the component "bolt-1", which is selected, at the point (1, 2, 3).
  std::shared_ptr<cad_host::Document> OpenAssembly() {
    const auto assembly = Host().Open(MakeAssembly(L"top.sldasm"));
    assembly->selection = {{Host().AddComponent(*assembly, MakePart(L"bolt.sldprt")), {1, 2, 3}}};
    return assembly;
  }

  template <class Interface>
  _com_ptr_t<_com_IIID<Interface, &__uuidof(Interface)>> Active() {
    IModelDoc2Ptr document;
    Host().Application()->get_IActiveDoc2(&document);
    return document;
  }

  /// Replaces the component by a file of the same name in another folder.
  bool ReplaceByTheSameName() {
    m_folder.MakeFolder(L"newer");
    VARIANT_BOOL replaced = VARIANT_FALSE;
    EXPECT_EQ(
        Active<IAssemblyDoc>()->ReplaceComponents2(CComBSTR(MakePart(L"newer\\bolt.sldprt", 2)),
                                                   CComBSTR(L""), VARIANT_TRUE, 0, VARIANT_TRUE, &replaced),
        S_OK);
    return replaced == VARIANT_TRUE;
  }

  static HRESULT Resolve(IDispatch* object, const wchar_t* name, DISPID& id) {
    auto* text = const_cast<wchar_t*>(name);
    return object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
  }

  /// @param arguments the last one first.
  template <std::size_t kCount>
  static HRESULT CallByName(IDispatch* object, const wchar_t* name, std::array<VARIANT, kCount> arguments,
                            VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    const HRESULT resolved = Resolve(object, name, id);
    if (FAILED(resolved)) return resolved;
    DISPPARAMS parameters{arguments.data(), nullptr, kCount, 0};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result, nullptr,
                          nullptr);
  }

  static HRESULT PointByName(IDispatch* selection, VARIANT* result) {
    return CallByName(selection, L"IGetSelectionPoint2", std::array{Number(-1), Number(1)}, result);
  }

  static VARIANT Number(long value) {
    VARIANT number{};
    number.vt = VT_I4;
    number.lVal = value;
    return number;
  }

  TestAddIn m_addIn;
};

std::wstring MessageOfUnknownName(const wchar_t* name) {
  try {
    Quirks::Named(name);
  } catch (const HostError& error) {
    return error.Message();
  }
  return L"no error";
}

TEST_F(QuirksTest, AreAllOnUntilOneIsSwitchedOff) {
  for (const auto& named : Quirks::All()) {
    EXPECT_TRUE(Host().GetQuirks().IsOn(named.quirk));
    TurnOff(named.quirk);
    EXPECT_FALSE(Host().GetQuirks().IsOn(named.quirk));
  }
  Host().GetQuirks().Set(Quirk::kHeldFiles, true);
  EXPECT_TRUE(Host().GetQuirks().IsOn(Quirk::kHeldFiles));
}

TEST_F(QuirksTest, CanBeOffFromTheStart) {
  cad_host::HostOptions options;
  options.quirks.Set(Quirk::kHeldFiles, false);
  cad_host::Host host(options);
  EXPECT_FALSE(host.GetQuirks().IsOn(Quirk::kHeldFiles));
}

TEST_F(QuirksTest, EachHasOneNameAndASentence) {
  std::set<Quirk> quirks;
  for (const auto& named : Quirks::All()) {
    EXPECT_TRUE(quirks.insert(named.quirk).second);
    EXPECT_EQ(Quirks::Named(named.name), named.quirk);
    EXPECT_NE(std::wstring(named.description), L"");
  }
}

TEST_F(QuirksTest, AnUnknownNameIsRefusedWithTheKnownOnes) {
  EXPECT_EQ(MessageOfUnknownName(L"tabs"),
            L"no quirk \"tabs\"; there are caller-arrays, enable-argument, equal-tab-names, "
            L"false-tab-removal, held-files, same-name-refused, silent-open-failure");
}

TEST_F(QuirksTest, AFailedOpeningIsSilentEverySecondTime) {
  EXPECT_EQ(OpenMissingFile(), S_OK);
  EXPECT_EQ(OpenMissingFile(), E_FAIL);
  EXPECT_EQ(OpenMissingFile(), S_OK);
}

TEST_F(QuirksTest, AFailedOpeningAlwaysFailsWithoutTheQuirk) {
  TurnOff(Quirk::kSilentOpenFailure);
  EXPECT_EQ(OpenMissingFile(), E_FAIL);
  EXPECT_EQ(OpenMissingFile(), E_FAIL);
}

TEST_F(QuirksTest, TabsOfOneNameAreDifferentTabs) {
  const ICommandTabPtr first = AddTab();
  EXPECT_NE(AddTab().GetInterfacePtr(), first.GetInterfacePtr());
  EXPECT_EQ(Host().Tabs().size(), 2u);
}

TEST_F(QuirksTest, TabsOfOneNameAreTheSameTabWithoutTheQuirk) {
  TurnOff(Quirk::kEqualTabNames);
  const ICommandTabPtr first = AddTab();
  EXPECT_EQ(AddTab().GetInterfacePtr(), first.GetInterfacePtr());
  EXPECT_EQ(Host().Tabs().size(), 1u);
}

TEST_F(QuirksTest, TheRemovalOfATabIsDeniedEverySecondTime) {
  EXPECT_FALSE(RemoveNewTab());
  EXPECT_TRUE(RemoveNewTab());
  EXPECT_FALSE(RemoveNewTab());
}

TEST_F(QuirksTest, TheRemovalOfATabIsReportedWithoutTheQuirk) {
  TurnOff(Quirk::kFalseTabRemoval);
  EXPECT_TRUE(RemoveNewTab());
  EXPECT_TRUE(RemoveNewTab());
}

TEST_F(QuirksTest, FilesOfDocumentsAndComponentsCannotBeDeleted) {
  OpenAssembly();
  EXPECT_FALSE(DeleteFileW(m_folder.Path(L"bolt.sldprt").c_str()));
  EXPECT_FALSE(DeleteFileW(m_folder.Path(L"top.sldasm").c_str()));
}

TEST_F(QuirksTest, FilesOfDocumentsAndComponentsCanBeDeletedWithoutTheQuirk) {
  TurnOff(Quirk::kHeldFiles);
  const auto assembly = OpenAssembly();
  Host().Save(*assembly);
  EXPECT_TRUE(DeleteFileW(m_folder.Path(L"bolt.sldprt").c_str()));
  EXPECT_TRUE(DeleteFileW(m_folder.Path(L"top.sldasm").c_str()));
}

TEST_F(QuirksTest, AReplacementOfTheSameFileNameIsRefused) {
  const auto assembly = OpenAssembly();
  EXPECT_FALSE(ReplaceByTheSameName());
  EXPECT_EQ(assembly->components[0]->loaded_revision, 1);
}

TEST_F(QuirksTest, AReplacementOfTheSameFileNameIsLoadedWithoutTheQuirk) {
  TurnOff(Quirk::kSameNameRefused);
  const auto assembly = OpenAssembly();
  EXPECT_TRUE(ReplaceByTheSameName());
  EXPECT_EQ(assembly->components[0]->loaded_revision, 2);
}

TEST_F(QuirksTest, ArraysOfTheCallerAreNotFilledByName) {
  OpenAssembly();
  ISelectionMgrPtr selection;
  Active<IModelDoc2>()->get_ISelectionManager(&selection);
  _variant_t point;
  EXPECT_EQ(PointByName(selection, &point), E_NOTIMPL);
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(Resolve(Manager(), L"IGetGroupDataFromRegistry", id), E_NOTIMPL);
}

TEST_F(QuirksTest, ThePointOfASelectionIsReturnedByNameWithoutTheQuirk) {
  TurnOff(Quirk::kCallerArrays);
  OpenAssembly();
  ISelectionMgrPtr selection;
  Active<IModelDoc2>()->get_ISelectionManager(&selection);
  _variant_t point;
  ASSERT_EQ(PointByName(selection, &point), S_OK);
  ASSERT_EQ(point.vt, VT_ARRAY | VT_R8);
  ASSERT_EQ(point.parray->rgsabound[0].cElements, 3u);
  const auto* const places = static_cast<const double*>(point.parray->pvData);
  EXPECT_EQ(std::vector<double>(places, places + 3), (std::vector<double>{1, 2, 3}));
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(Resolve(selection, L"GetSelectedObject6", id), DISP_E_UNKNOWNNAME);
}

TEST_F(QuirksTest, SavedIdsAreReadByNameWithoutTheQuirk) {
  TurnOff(Quirk::kCallerArrays);
  const ICommandManagerPtr manager = Manager();
  ICommandGroupPtr group;
  long number = 0;
  manager->CreateCommandGroup2(kSaved, CComBSTR(L"Group"), CComBSTR(L""), CComBSTR(L""), -1, VARIANT_FALSE,
                               &number, &group);
  group->AddCommandItem(CComBSTR(L"Item"), -1, CComBSTR(L""), CComBSTR(L""), 0, CComBSTR(L"Run"),
                        CComBSTR(L"MayRun"), 11, &number);
  VARIANT_BOOL activated = VARIANT_FALSE;
  group->Activate(&activated);

  _variant_t ids;
  ids.vt = VT_ARRAY | VT_I4;
  ids.parray = SafeArrayCreateVector(VT_I4, 0, 1);
  VARIANT place{};
  place.vt = VT_BYREF | VT_ARRAY | VT_I4;
  place.pparray = &ids.parray;
  _variant_t found;
  ASSERT_EQ(
      CallByName(manager, L"IGetGroupDataFromRegistry", std::array{place, Number(9), Number(kSaved)}, &found),
      S_OK)
      << "a count beyond the array";
  EXPECT_EQ(found, _variant_t(true));
  EXPECT_EQ(*static_cast<const long*>(ids.parray->pvData), 11);
  EXPECT_EQ(CallByName(manager, L"IGetGroupDataFromRegistry",
                       std::array{Number(0), Number(1), Number(kSaved)}, &found),
            DISP_E_TYPEMISMATCH);
}

}  // namespace
