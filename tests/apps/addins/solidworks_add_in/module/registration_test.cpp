// Registration of the DLL in the registry of the Wine prefix.
#include <gtest/gtest.h>

#include "CStringHelper.h"
#include "add_in_dll.h"
#include "base/com_pointers.h"
#include "host/application.h"
#include "registry.h"
#include "solidworks_add_in_h.h"
#include "temp_folder.h"

namespace {

const std::wstring kAddInClass = L"{555D9E80-10EC-45A2-9712-D43E5E66F163}";
const std::wstring kBitmapHandlerClass = L"{BBFA8676-A288-4967-90CD-ED68F7490D93}";
const std::wstring kLibrary = L"{EA77B297-A3D1-4C82-BF87-2CA5AADE9530}";
const std::wstring kAddIns = L"SOFTWARE\\SolidWorks\\AddIns";

std::wstring Text(REFGUID id) {
  wchar_t text[39];
  StringFromGUID2(id, text, 39);
  return text;
}

const std::wstring kAppId = Text(APPID_SolidWorksAddIn);

RegistryContents Classes(const std::wstring& path) { return ReadRegistry(HKEY_CLASSES_ROOT, path); }
RegistryContents Machine(const std::wstring& path) { return ReadRegistry(HKEY_LOCAL_MACHINE, path); }

/// Everything that a registration writes, by its key.
std::map<std::wstring, RegistryContents> AllEntries() {
  std::map<std::wstring, RegistryContents> entries;
  for (const std::wstring& path : {
           L"AppID\\" + kAppId,
           std::wstring(L"AppID\\solidworks_add_in.DLL"),
           std::wstring(L"solidworks_add_in.SwAddin"),
           std::wstring(L"solidworks_add_in.SwAddin.1"),
           std::wstring(L"solidworks_add_in.BitmapHandler"),
           std::wstring(L"solidworks_add_in.BitmapHandler.1"),
           L"CLSID\\" + kAddInClass,
           L"CLSID\\" + kBitmapHandlerClass,
           L"TypeLib\\" + kLibrary,
           L"Interface\\" + Text(__uuidof(ISolidWorksAddIn)),
           L"Interface\\" + Text(__uuidof(IBitmapHandler)),
       }) {
    if (RegistryContents found = Classes(path); !found.empty()) entries[path] = std::move(found);
  }
  if (RegistryContents found = Machine(kAddIns + L"\\" + kAddInClass); !found.empty()) {
    entries[kAddIns] = std::move(found);
  }
  return entries;
}

class Registration : public testing::Test {
 protected:
  ~Registration() override { m_dll.UnregisterServer(); }

  /// The class `id` is registered with this name and these program ids.
  void ExpectClass(const std::wstring& id, const std::wstring& name, const std::wstring& program) const {
    const std::wstring versioned = program + L".1";
    EXPECT_EQ(Classes(L"CLSID\\" + id), (RegistryContents{{L"\\", name},
                                                          {L"\\AppID", kAppId},
                                                          {L"ProgID\\", versioned},
                                                          {L"VersionIndependentProgID\\", program},
                                                          {L"Programmable\\", L"(no value)"},
                                                          {L"InprocServer32\\", m_dll.Path()},
                                                          {L"InprocServer32\\ThreadingModel", L"Both"},
                                                          {L"TypeLib\\", kLibrary}}));
    EXPECT_EQ(Classes(versioned), (RegistryContents{{L"\\", name}, {L"CLSID\\", id}}));
    EXPECT_EQ(Classes(program),
              (RegistryContents{{L"\\", name}, {L"CLSID\\", id}, {L"CurVer\\", versioned}}));
  }

  ComApartment m_com;
  AddInDll m_dll;
};

}  // namespace

TEST_F(Registration, WritesTheApplicationId) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  EXPECT_EQ(Classes(L"AppID\\" + kAppId), (RegistryContents{{L"\\", L"solidworks_add_in"}}));
  EXPECT_EQ(Classes(L"AppID\\solidworks_add_in.DLL"), (RegistryContents{{L"\\AppID", kAppId}}));
}

TEST_F(Registration, WritesTheAddInClass) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  ExpectClass(kAddInClass, L"SwAddin Class", L"solidworks_add_in.SwAddin");
}

TEST_F(Registration, WritesTheBitmapHandlerClass) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  ExpectClass(kBitmapHandlerClass, L"BitmapHandler Class", L"solidworks_add_in.BitmapHandler");
}

TEST_F(Registration, ListsTheAddInForTheHostAsDisabled) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  EXPECT_EQ(Machine(kAddIns + L"\\" + kAddInClass),
            (RegistryContents{{L"\\", L"dword:0"},
                              {L"\\Description", L"TAVO SolidWorks Integration"},
                              {L"\\Title", L"TAVO SolidWorks Integration"}}));
  EXPECT_FALSE(RegistryKeyExists(HKEY_LOCAL_MACHINE, kAddIns + L"\\" + kBitmapHandlerClass));
}

TEST_F(Registration, IsForTheWholeMachine) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  for (const std::wstring& path : {L"CLSID\\" + kAddInClass, L"CLSID\\" + kBitmapHandlerClass,
                                   L"TypeLib\\" + kLibrary, std::wstring(L"solidworks_add_in.SwAddin")}) {
    EXPECT_TRUE(RegistryKeyExists(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes\\" + path))
        << CStringHelper::UnicodeToUTF8(path);
    EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, L"Software\\Classes\\" + path))
        << CStringHelper::UnicodeToUTF8(path);
  }
  EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, kAddIns));
}

TEST_F(Registration, WritesTheTypeLibrary) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  RegistryContents library = Classes(L"TypeLib\\" + kLibrary);
  EXPECT_EQ(library[L"1.0\\"], L"solidworks_add_in 1.0 Type Library");
  EXPECT_EQ(library[L"1.0\\0\\win64\\"], m_dll.Path());

  ITypeLib* loaded = nullptr;
  ASSERT_EQ(LoadRegTypeLib(LIBID_SolidWorksAddInLib, 1, 0, 0, &loaded), S_OK);
  loaded->Release();
}

TEST_F(Registration, MakesTheClassesCreatable) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  ISwAddinPtr add_in;
  EXPECT_EQ(add_in.CreateInstance(L"solidworks_add_in.SwAddin"), S_OK);
  IDispatchPtr versioned;
  EXPECT_EQ(versioned.CreateInstance(L"solidworks_add_in.SwAddin.1"), S_OK);
  IDispatchPtr handler;
  EXPECT_EQ(handler.CreateInstance(L"solidworks_add_in.BitmapHandler"), S_OK);
  IDispatchPtr by_id;
  EXPECT_EQ(by_id.CreateInstance(CLSID_SwAddin), S_OK);
}

TEST_F(Registration, TwiceWritesTheSameEntries) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  const auto once = AllEntries();
  ASSERT_EQ(once.size(), 12u);
  EXPECT_EQ(m_dll.RegisterServer(), S_OK);
  EXPECT_EQ(AllEntries(), once);
}

TEST_F(Registration, DeletesOldEntriesUnderTheAddInsOwnKeys) {
  const ForeignKey old_class(HKEY_CLASSES_ROOT, L"CLSID\\" + kAddInClass + L"\\LocalServer32");
  const ForeignKey old_entry(HKEY_LOCAL_MACHINE, kAddIns + L"\\" + kAddInClass + L"\\Old");
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  EXPECT_FALSE(RegistryKeyExists(HKEY_CLASSES_ROOT, L"CLSID\\" + kAddInClass + L"\\LocalServer32"));
  EXPECT_FALSE(RegistryKeyExists(HKEY_LOCAL_MACHINE, kAddIns + L"\\" + kAddInClass + L"\\Old"));
}

TEST_F(Registration, UndoneLeavesNoEntriesOfTheAddIn) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  EXPECT_EQ(m_dll.UnregisterServer(), S_OK);
  EXPECT_EQ(AllEntries(), (std::map<std::wstring, RegistryContents>{}));
  IUnknown* object = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)),
            REGDB_E_CLASSNOTREG);
}

TEST_F(Registration, UndoneKeepsTheHostsKeys) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  ASSERT_EQ(m_dll.UnregisterServer(), S_OK);
  EXPECT_TRUE(RegistryKeyExists(HKEY_LOCAL_MACHINE, kAddIns)) << "even if no add-in is left";
  EXPECT_TRUE(RegistryKeyExists(HKEY_CLASSES_ROOT, L"CLSID"));
  EXPECT_TRUE(RegistryKeyExists(HKEY_CLASSES_ROOT, L"AppID"));
}

TEST_F(Registration, DoesNotChangeOtherAddIns) {
  const ForeignKey neighbour(HKEY_LOCAL_MACHINE, kAddIns + L"\\{00000000-1111-2222-3333-444444444444}");
  const RegistryContents before = Machine(kAddIns);
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  ASSERT_EQ(m_dll.UnregisterServer(), S_OK);
  EXPECT_EQ(Machine(kAddIns), before);
}

TEST_F(Registration, UndoneKeepsAKeyWithForeignSubkeys) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  {
    const ForeignKey shell(HKEY_CLASSES_ROOT, L"solidworks_add_in.SwAddin\\shell");
    EXPECT_EQ(m_dll.UnregisterServer(), S_OK);
    EXPECT_EQ(Classes(L"solidworks_add_in.SwAddin"),
              (RegistryContents{{L"\\", L"(no value)"}, {L"shell\\Foreign", L"dword:1"}}));
  }
  EXPECT_EQ(m_dll.UnregisterServer(), S_OK);
  EXPECT_FALSE(RegistryKeyExists(HKEY_CLASSES_ROOT, L"solidworks_add_in.SwAddin"));
}

TEST_F(Registration, CanBeUndoneTwiceOrWithoutARegistration) {
  EXPECT_EQ(m_dll.UnregisterServer(), S_OK);
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  EXPECT_EQ(m_dll.UnregisterServer(), S_OK);
  EXPECT_EQ(m_dll.UnregisterServer(), S_OK);
}

TEST(RegistrationOfACopy, AcceptsAnyPath) {
  const ComApartment com;
  const TempFolder folder;
  // Quotes, per cent signs and braces have a meaning in registration scripts.
  const std::wstring path = folder.Path(L"it's {50%} of %MODULE% 設計\\solidworks_add_in.dll");
  folder.MakeFolder(L"it's {50%} of %MODULE% 設計");
  ASSERT_TRUE(CopyFileW(AddInDll::BuiltPath().c_str(), path.c_str(), TRUE));
  {
    const AddInDll dll(path);
    ASSERT_EQ(dll.RegisterServer(), S_OK);
    EXPECT_EQ(Classes(L"CLSID\\" + kAddInClass)[L"InprocServer32\\"], path);
    EXPECT_EQ(Classes(L"TypeLib\\" + kLibrary)[L"1.0\\0\\win64\\"], path);
    EXPECT_EQ(dll.UnregisterServer(), S_OK);
  }
  EXPECT_TRUE(AllEntries().empty());
}
