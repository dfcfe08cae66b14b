// The system calls with which the DLL registers: the locale in which it makes them, and those that fail.
#include <gtest/gtest.h>

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "add_in_dll.h"
#include "import_patch.h"
#include "list_difference.h"
#include "registry.h"

namespace {

constexpr LCID kSystemDefault = 0x0800;
constexpr LCID kGerman = 0x0407;
constexpr HRESULT kDenied = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);

using Texts = std::vector<std::wstring>;

std::wstring SetLocaleCall(LCID locale) { return L"set locale " + std::to_wstring(locale); }

/// Stands between the DLL and the system's functions for the thread's locale, the registry and type
/// libraries.
class SystemCalls {
 public:
  explicit SystemCalls(HMODULE dll)
      : m_setLocale(dll, "SetThreadLocale", &SetLocale),
        m_createKey(dll, "RegCreateKeyExW", &CreateKey),
        m_openKey(dll, "RegOpenKeyExW", &OpenKey),
        m_deleteTree(dll, "RegDeleteTreeW", &DeleteTree),
        m_setValue(dll, "RegSetValueExW", &SetValue),
        m_register(dll, "RegisterTypeLib", &Register),
        m_unregister(dll, "UnRegisterTypeLib", &Unregister) {
    current = this;
  }
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;
  ~SystemCalls() { current = nullptr; }

  /// The calls since Restart; several of the registry in a row are one entry.
  const Texts& Calls() const { return m_calls; }

  /// The thread's locale during these calls.
  const std::set<LCID>& Locales() const { return m_locales; }

  /// How many calls of the registry there were.
  int RegistryCalls() const { return m_registryCalls; }

  /// Forgets the calls. @param denied the number of the next call of the registry that is denied; 0: none.
  void Restart(int denied) {
    m_calls.clear();
    m_locales.clear();
    m_registryCalls = 0;
    m_denied = denied;
  }

  HRESULT library_result = S_OK;  ///< a failure that type libraries have in place of their registration

 private:
  void Record(const std::wstring& call) {
    m_locales.insert(GetThreadLocale());
    if (m_calls.empty() || m_calls.back() != call) m_calls.push_back(call);
  }

  template <class Call>
  static LSTATUS OfRegistry(Call&& call) {
    current->Record(L"registry");
    return ++current->m_registryCalls == current->m_denied ? ERROR_ACCESS_DENIED : call();
  }

  template <class Call>
  static HRESULT OfTypeLibrary(Call&& call) {
    current->Record(L"type library");
    return FAILED(current->library_result) ? current->library_result : call();
  }

  static BOOL WINAPI SetLocale(LCID locale) {
    current->m_calls.push_back(SetLocaleCall(locale));
    return SetThreadLocale(locale);
  }
  static LSTATUS WINAPI CreateKey(HKEY parent, LPCWSTR name, DWORD reserved, LPWSTR type, DWORD options,
                                  REGSAM access, SECURITY_ATTRIBUTES* security, HKEY* key, DWORD* created) {
    return OfRegistry([&] {
      return RegCreateKeyExW(parent, name, reserved, type, options, access, security, key, created);
    });
  }
  static LSTATUS WINAPI OpenKey(HKEY parent, LPCWSTR name, DWORD options, REGSAM access, HKEY* key) {
    return OfRegistry([&] { return RegOpenKeyExW(parent, name, options, access, key); });
  }
  static LSTATUS WINAPI DeleteTree(HKEY parent, LPCWSTR name) {
    return OfRegistry([&] { return RegDeleteTreeW(parent, name); });
  }
  static LSTATUS WINAPI SetValue(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                 DWORD size) {
    return OfRegistry([&] { return RegSetValueExW(key, name, reserved, type, data, size); });
  }
  static HRESULT WINAPI Register(ITypeLib* library, LPOLESTR path, LPOLESTR folder) {
    return OfTypeLibrary([&] { return RegisterTypeLib(library, path, folder); });
  }
  static HRESULT WINAPI Unregister(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND system) {
    return OfTypeLibrary([&] { return UnRegisterTypeLib(id, major, minor, locale, system); });
  }

  static inline SystemCalls* current = nullptr;

  Texts m_calls;
  std::set<LCID> m_locales;
  int m_registryCalls = 0;
  int m_denied = 0;
  ImportPatch m_setLocale, m_createKey, m_openKey, m_deleteTree, m_setValue, m_register, m_unregister;
};

/// The thread has the German locale. Nothing is registered afterwards.
class RegistrationCalls : public testing::Test {
 protected:
  RegistrationCalls() { SetThreadLocale(kGerman); }
  ~RegistrationCalls() override {
    m_calls.Restart(0);
    m_calls.library_result = S_OK;
    m_dll.UnregisterServer();
    SetThreadLocale(m_before);
  }

  bool Called(const std::wstring& call) const { return std::ranges::count(m_calls.Calls(), call) > 0; }

  ComApartment m_com;
  const LCID m_before = GetThreadLocale();
  AddInDll m_dll;
  SystemCalls m_calls{m_dll.Handle()};
};

}  // namespace

TEST_F(RegistrationCalls, AreMadeInTheSystemsLocale) {
  for (HRESULT (AddInDll::*call)() const : {&AddInDll::RegisterServer, &AddInDll::UnregisterServer}) {
    m_calls.Restart(0);
    EXPECT_EQ((m_dll.*call)(), S_OK);
    EXPECT_SAME_ENTRIES(m_calls.Calls(), Texts{SetLocaleCall(kSystemDefault), L"registry", L"type library",
                                               SetLocaleCall(kGerman)});
    EXPECT_EQ(m_calls.Locales(), std::set<LCID>{ConvertDefaultLocale(kSystemDefault)});
    EXPECT_EQ(GetThreadLocale(), kGerman);
  }
}

TEST_F(RegistrationCalls, EndWithTheFirstThatFails) {
  int denied = 0;
  HRESULT result = kDenied;
  while (FAILED(result)) {
    m_calls.Restart(++denied);
    result = m_dll.RegisterServer();
    EXPECT_EQ(GetThreadLocale(), kGerman) << denied;
    if (SUCCEEDED(result)) break;
    ASSERT_EQ(result, kDenied) << denied;
    EXPECT_EQ(m_calls.RegistryCalls(), denied);
    EXPECT_FALSE(Called(L"type library")) << denied;
  }
  EXPECT_EQ(m_calls.RegistryCalls(), denied - 1) << "each call was denied once";
  EXPECT_GT(denied, 40);
}

HGLOBAL WINAPI LoadNothing(HMODULE, HRSRC) { return nullptr; }
DWORD WINAPI SizeOfNothing(HMODULE, HRSRC) { return 0; }

TEST_F(RegistrationCalls, AreNotMadeIfTheScriptCannotBeRead) {
  HINSTANCE dll = m_dll.Handle();
  for (const bool is_loaded : {false, true}) {
    const ImportPatch fault = is_loaded ? ImportPatch(dll, "SizeofResource", SizeOfNothing)
                                        : ImportPatch(dll, "LoadResource", LoadNothing);
    m_calls.Restart(0);
    EXPECT_EQ(m_dll.RegisterServer(), HRESULT_FROM_WIN32(ERROR_RESOURCE_DATA_NOT_FOUND)) << is_loaded;
    EXPECT_EQ(m_calls.RegistryCalls(), 0) << is_loaded;
  }
}

TEST_F(RegistrationCalls, ReturnTheFailureOfTheTypeLibrary) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  m_calls.library_result = TYPE_E_REGISTRYACCESS;
  EXPECT_EQ(m_dll.RegisterServer(), TYPE_E_REGISTRYACCESS);
  EXPECT_EQ(GetThreadLocale(), kGerman);
  EXPECT_EQ(m_dll.UnregisterServer(), TYPE_E_REGISTRYACCESS);
  EXPECT_EQ(GetThreadLocale(), kGerman);
}

/// The first and the last call fail; everything between is removed.
TEST_F(RegistrationCalls, ThatUndoGoOnAfterAFailureAndReturnTheFirst) {
  ASSERT_EQ(m_dll.RegisterServer(), S_OK);
  m_calls.Restart(1);
  m_calls.library_result = TYPE_E_REGISTRYACCESS;
  EXPECT_EQ(m_dll.UnregisterServer(), kDenied);
  EXPECT_TRUE(Called(L"type library"));
  EXPECT_EQ(GetThreadLocale(), kGerman);
  EXPECT_TRUE(RegistryKeyExists(HKEY_CLASSES_ROOT, L"AppID\\solidworks_add_in.DLL"));
  for (const wchar_t* program : {L"solidworks_add_in.SwAddin", L"solidworks_add_in.BitmapHandler"}) {
    EXPECT_FALSE(RegistryKeyExists(HKEY_CLASSES_ROOT, program));
  }
}
