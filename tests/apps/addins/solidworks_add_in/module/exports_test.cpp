// The exports and imports of the DLL, and how COM loads and unloads it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "add_in_dll.h"
#include "base/com_pointers.h"
#include "host/application.h"
#include "import_patch.h"
#include "list_difference.h"
#include "solidworks_add_in_h.h"

namespace {

/// The image of a loaded module.
class Image {
 public:
  explicit Image(HINSTANCE module) : m_base(reinterpret_cast<const BYTE*>(module)) {
    const auto* dos = At<IMAGE_DOS_HEADER>(0);
    m_headers = At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(dos->e_lfanew));
  }

  std::vector<std::string> Exports() const {
    const auto* directory = Directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
    const std::vector<DWORD> names = Table(directory->AddressOfNames, directory->NumberOfNames);
    const std::vector<DWORD> functions = Table(directory->AddressOfFunctions, directory->NumberOfFunctions);
    const auto empty = static_cast<DWORD>(std::ranges::count(functions, 0u));
    EXPECT_EQ(directory->NumberOfNames, directory->NumberOfFunctions - empty) << "an export without a name";
    std::vector<std::string> result;
    for (const DWORD name : names) result.push_back(At<char>(name));
    return result;
  }

  std::vector<std::string> Imports() const {
    std::vector<std::string> result;
    const auto* entry = Directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (; entry->Name; ++entry) result.push_back(At<char>(entry->Name));
    return result;
  }

  /// The flags of the sections.
  std::vector<DWORD> Sections() const {
    std::vector<DWORD> result;
    const IMAGE_SECTION_HEADER* const sections = IMAGE_FIRST_SECTION(m_headers);
    for (WORD index = 0; index < m_headers->FileHeader.NumberOfSections; ++index) {
      result.push_back(sections[index].Characteristics);
    }
    return result;
  }

  WORD Machine() const { return m_headers->FileHeader.Machine; }
  const IMAGE_OPTIONAL_HEADER64& Header() const { return m_headers->OptionalHeader; }

 private:
  template <class T>
  const T* At(DWORD address) const {
    return reinterpret_cast<const T*>(m_base + address);
  }
  /// The linker does not align the tables of exports.
  std::vector<DWORD> Table(DWORD address, DWORD count) const {
    std::vector<DWORD> table(count);
    std::memcpy(table.data(), At<char>(address), count * sizeof(DWORD));
    return table;
  }
  template <class T>
  const T* Directory(int entry) const {
    return At<T>(m_headers->OptionalHeader.DataDirectory[entry].VirtualAddress);
  }

  const BYTE* m_base;
  const IMAGE_NT_HEADERS64* m_headers;
};

class Exports : public testing::Test {
 protected:
  IClassFactoryPtr Factory(REFCLSID id) {
    IClassFactoryPtr factory;
    EXPECT_EQ(m_dll.GetClassObject(id, IID_PPV_ARGS(&factory)), S_OK);
    return factory;
  }

  ComApartment m_com;
  AddInDll m_dll;
};

}  // namespace

TEST_F(Exports, AreTheFourThatComNeeds) {
  EXPECT_SAME_ENTRIES(Image(m_dll.Handle()).Exports(),
                      std::vector<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                               "DllUnregisterServer"});
}

TEST_F(Exports, BelongToA64BitDllThatImportsOnlySystemDlls) {
  EXPECT_EQ(Image(m_dll.Handle()).Machine(), IMAGE_FILE_MACHINE_AMD64);
  // All of them are among the KnownDLLs, which Windows takes from the system folder, whatever lies beside a
  // program.
  const std::set<std::string> system = {"advapi32.dll", "kernel32.dll", "msvcrt.dll",
                                        "ole32.dll",    "oleaut32.dll", "shell32.dll",
                                        "shlwapi.dll",  "user32.dll",   "ws2_32.dll"};
  for (std::string name : Image(m_dll.Handle()).Imports()) {
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_TRUE(system.contains(name)) << name;
  }
}

/// The counters of GDI and USER objects do not see every kind, such as timers. So a function that is new here
/// must be looked at: what does it make, and who sees that it is destroyed?
TEST_F(Exports, BelongToADllThatImportsNoFunctionThatMakesAGuiObject) {
  const std::set<std::string_view> known = {"AllowSetForegroundWindow",
                                            "DispatchMessageW",
                                            "GetActiveWindow",
                                            "GetQueueStatus",
                                            "MessageBoxW",
                                            "MsgWaitForMultipleObjectsEx",
                                            "PeekMessageW",
                                            "PostMessageW",
                                            "PostQuitMessage",
                                            "PostThreadMessageW",
                                            "RegisterWindowMessageW"};
  std::set<std::string_view> imported;
  ForEachImport(m_dll.Handle(), [&](std::string_view library, std::string_view function, const ULONGLONG*) {
    const std::string name(library);
    if (_stricmp(name.c_str(), "user32.dll") == 0 || _stricmp(name.c_str(), "gdi32.dll") == 0) {
      imported.insert(function);
    }
  });
  EXPECT_EQ(imported, known);
}

TEST_F(Exports, BelongToADllThatLoadsNoOther) {
  ForEachImport(m_dll.Handle(), [](std::string_view, std::string_view function, const ULONGLONG*) {
    // The one call is in the C runtime's rand_s, for advapi32.dll, which this DLL imports anyway.
    EXPECT_TRUE(!function.starts_with("LoadLibrary") || function == "LoadLibraryW") << function;
    EXPECT_NE(function, "LoadPackagedLibrary");
    EXPECT_NE(function, "WinExec");
    EXPECT_FALSE(function.starts_with("ShellExecute")) << function;
  });
}

TEST_F(Exports, BelongToADllThatTheSystemProtects) {
  const Image image(m_dll.Handle());
  // Loaded at any of many addresses, its data are never run.
  constexpr WORD kProtection = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                               IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA | IMAGE_DLLCHARACTERISTICS_NX_COMPAT;
  EXPECT_EQ(image.Header().DllCharacteristics & kProtection, kProtection);
  EXPECT_GT(image.Header().DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC].Size, 0u) << "it cannot be moved";
  constexpr DWORD kWriteAndRun = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
  for (const DWORD section : image.Sections()) EXPECT_NE(section & kWriteAndRun, kWriteAndRun);
}

TEST_F(Exports, ClassObjectOfAnUnknownClassIsNotAvailable) {
  void* object = this;
  EXPECT_EQ(m_dll.GetClassObject(IID_IUnknown, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(Exports, ClassObjectHasOnlyItsOwnInterfaces) {
  void* object = this;
  EXPECT_EQ(m_dll.GetClassObject(CLSID_SwAddin, IID_IDispatch, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(m_dll.GetClassObject(CLSID_SwAddin, IID_IClassFactory, nullptr), E_POINTER);
  IUnknownPtr unknown;
  EXPECT_EQ(m_dll.GetClassObject(CLSID_SwAddin, IID_PPV_ARGS(&unknown)), S_OK);
}

TEST_F(Exports, EachCreationMakesANewObject) {
  for (const CLSID& id : {CLSID_SwAddin, CLSID_BitmapHandler}) {
    const IClassFactoryPtr factory = Factory(id);
    IUnknownPtr first, second;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&first)), S_OK);
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&second)), S_OK);
    EXPECT_NE(first.GetInterfacePtr(), second.GetInterfacePtr());
  }
}

TEST_F(Exports, AddInHasTheHostsInterfaceAndItsOwn) {
  IUnknownPtr unknown;
  ASSERT_EQ(Factory(CLSID_SwAddin)->CreateInstance(nullptr, IID_PPV_ARGS(&unknown)), S_OK);
  ISwAddinPtr add_in = unknown;
  IDispatchPtr dispatch = add_in;
  EXPECT_EQ(reinterpret_cast<void*>(dispatch.GetInterfacePtr()), unknown.GetInterfacePtr())
      << "ISolidWorksAddIn is the object's first interface";
  ISolidWorksAddIn* own = nullptr;
  ASSERT_EQ(add_in->QueryInterface(IID_PPV_ARGS(&own)), S_OK);
  own->Release();
  void* other = this;
  EXPECT_EQ(unknown->QueryInterface(IID_IClassFactory, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
}

TEST_F(Exports, CreationRejectsAggregationAndUnknownInterfaces) {
  const IClassFactoryPtr factory = Factory(CLSID_BitmapHandler);
  void* object = this;
  EXPECT_EQ(factory->CreateInstance(factory, IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
  object = this;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(Exports, DllStaysLoadedWhileAnObjectLives) {
  ASSERT_EQ(m_dll.CanUnloadNow(), S_OK);
  IUnknownPtr object;
  ASSERT_EQ(Factory(CLSID_SwAddin)->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
  EXPECT_EQ(m_dll.CanUnloadNow(), S_FALSE);
  IDispatchPtr second_reference = object;
  object = nullptr;
  EXPECT_EQ(m_dll.CanUnloadNow(), S_FALSE);
  second_reference = nullptr;
  EXPECT_EQ(m_dll.CanUnloadNow(), S_OK);
}

TEST_F(Exports, DllStaysLoadedWhileAClassObjectIsHeld) {
  IClassFactoryPtr factory = Factory(CLSID_SwAddin);
  EXPECT_EQ(m_dll.CanUnloadNow(), S_FALSE);
  factory = nullptr;
  EXPECT_EQ(m_dll.CanUnloadNow(), S_OK);
}

TEST_F(Exports, DllStaysLoadedWhileTheServerIsLocked) {
  EXPECT_EQ(Factory(CLSID_SwAddin)->LockServer(TRUE), S_OK);
  EXPECT_EQ(Factory(CLSID_BitmapHandler)->LockServer(TRUE), S_OK);
  EXPECT_EQ(m_dll.CanUnloadNow(), S_FALSE);
  Factory(CLSID_SwAddin)->LockServer(FALSE);
  EXPECT_EQ(m_dll.CanUnloadNow(), S_FALSE);
  Factory(CLSID_SwAddin)->LockServer(FALSE);
  EXPECT_EQ(m_dll.CanUnloadNow(), S_OK);
}

TEST_F(Exports, FailedCreationsLeaveNoLock) {
  void* object = nullptr;
  Factory(CLSID_SwAddin)->CreateInstance(nullptr, IID_IClassFactory, &object);
  m_dll.GetClassObject(CLSID_SwAddin, IID_IDispatch, &object);
  EXPECT_EQ(m_dll.CanUnloadNow(), S_OK);
}

TEST_F(Exports, ObjectsMayBeHeldByManyThreads) {
  IUnknownPtr object;
  ASSERT_EQ(Factory(CLSID_SwAddin)->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([unknown = object.GetInterfacePtr()] {
      for (int round = 0; round < 20000; ++round) {
        unknown->AddRef();
        unknown->Release();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(object->AddRef(), 2u);
  EXPECT_EQ(object->Release(), 1u);
}

TEST(LoadingTheDll, WorksManyTimes) {
  for (int round = 0; round < 20; ++round) {
    const AddInDll dll;
    EXPECT_EQ(dll.CanUnloadNow(), S_OK);
  }
  EXPECT_EQ(GetModuleHandleW(L"solidworks_add_in.dll"), nullptr);
}
