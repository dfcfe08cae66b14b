#include <gtest/gtest.h>

#include <windows.h>

#include <optional>
#include <string>

#include "CComBSTR.h"
#include "CFilePathHelper.h"
#include "CZALCADPathHelper.h"
#include "environment.h"
#include "program_folder.h"
#include "temp_folder.h"

namespace {
using namespace std::string_literals;

constexpr wchar_t kName[] = L"New TAVO SolidWorks AddOn";

/// A file that an installation puts beside a module, by default this program. The destructor deletes it.
class InstalledFile {
 public:
  explicit InstalledFile(const std::wstring& name, const std::wstring& module_folder = ProgramFolder())
      : m_folder(module_folder + L"\\config") {
    CreateDirectoryW(m_folder.c_str(), nullptr);
    m_path = m_folder + L"\\" + name;
    WriteFileBytes(m_path, "installed");
  }
  InstalledFile(const InstalledFile&) = delete;
  InstalledFile& operator=(const InstalledFile&) = delete;
  ~InstalledFile() {
    DeleteFileW(m_path.c_str());
    RemoveDirectoryW(m_folder.c_str());
  }
  const std::wstring& Path() const { return m_path; }

 private:
  std::wstring m_folder;
  std::wstring m_path;
};

class PathHelper : public testing::Test {
 protected:
  std::wstring ConfigurationFile(const std::wstring& name, const std::wstring& file) {
    std::wstring path = L"left over";
    m_status = CZALCADPathHelper::GetCADCfgPath(name, file, path);
    return path;
  }
  std::wstring LogFolder() {
    std::wstring path = L"left over";
    m_status = CZALCADPathHelper::GetCADCfgLogPath(path);
    return path;
  }

  /// Writes a file into the administrator's configuration folder. @return its path.
  std::wstring WriteForAll(const std::wstring& file, const std::wstring& name = kName) const {
    return m_programData.Write(L"TAVO\\config\\" + name + L"\\" + file, "the administrator's");
  }

  TempFolder m_home;
  TempFolder m_programData;
  ScopedEnvironment m_environment{L"TAVO_HOME", m_home.Path()};
  ScopedEnvironment m_programDataVariable{L"PROGRAMDATA", m_programData.Path()};
  long m_status = -1;
};

TEST_F(PathHelper, PrefersTheFileInTheConfigurationFolder) {
  const InstalledFile installed(L"paths_test.json");
  const std::wstring own = m_home.Write(L"config\\New TAVO SolidWorks AddOn\\paths_test.json", "own");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), own);
  EXPECT_EQ(m_status, 0);
}

TEST_F(PathHelper, FallsBackToTheInstalledDefault) {
  const InstalledFile installed(L"paths_test.json");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
  EXPECT_EQ(m_status, 0);
}

TEST_F(PathHelper, LooksInTheUsersThenTheAdministratorsThenTheInstalledFolder) {
  const InstalledFile installed(L"paths_test.json");
  const std::wstring for_all = WriteForAll(L"paths_test.json");
  const std::wstring own = m_home.Write(L"config\\New TAVO SolidWorks AddOn\\paths_test.json", "own");

  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), own);
  DeleteFileW(own.c_str());
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), for_all);
  EXPECT_EQ(m_status, 0);
  DeleteFileW(for_all.c_str());
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
}

TEST_F(PathHelper, LooksInTheAdministratorsFolderOfTheName) {
  const InstalledFile installed(L"paths_test.json");
  const std::wstring for_all = WriteForAll(L"paths_test.json", L"Other");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
  EXPECT_EQ(ConfigurationFile(L"Other", L"paths_test.json"), for_all);
  EXPECT_EQ(CZALCADPathHelper::InitCADCfgPath(L"Other"), 0);
  EXPECT_EQ(ConfigurationFile(L"", L"paths_test.json"), for_all);
}

TEST_F(PathHelper, IgnoresAnAdministratorsFolderWithTheNameOfTheFile) {
  const InstalledFile installed(L"paths_test.json");
  m_programData.MakeFolder(L"TAVO\\config\\New TAVO SolidWorks AddOn\\paths_test.json");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
}

TEST_F(PathHelper, FindsTheAdministratorsFolderAtEachCall) {
  const InstalledFile installed(L"paths_test.json");
  const std::wstring for_all = WriteForAll(L"paths_test.json");
  for (const std::optional<std::wstring>& nowhere : {std::optional<std::wstring>(), std::optional(L""s)}) {
    m_programDataVariable.Set(nowhere);
    EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
    EXPECT_EQ(m_status, 0);
  }
  m_programDataVariable.Set(m_programData.Path());
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), for_all);
}

TEST_F(PathHelper, LooksForTheInstalledDefaultBesideTheCallingDll) {
  const std::wstring folder = ProgramFolder() + L"\\paths_module";
  const InstalledFile beside_dll(L"paths_test.json", folder);
  const InstalledFile beside_program(L"paths_test.json");
  const HMODULE module = LoadLibraryW((folder + L"\\paths_module.dll").c_str());
  ASSERT_NE(module, nullptr) << GetLastError();
  const auto configuration_file = reinterpret_cast<BSTR (*)(const wchar_t*, const wchar_t*)>(
      reinterpret_cast<void*>(GetProcAddress(module, "ConfigurationFile")));

  CComBSTR path;
  path.Attach(configuration_file(kName, L"paths_test.json"));
  EXPECT_EQ(path.View(), beside_dll.Path());
  FreeLibrary(module);
}

TEST_F(PathHelper, ReturnsThePathInTheConfigurationFolderIfThereIsNoFile) {
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"),
            m_home.Path(L"config\\New TAVO SolidWorks AddOn\\paths_test.json"));
  EXPECT_EQ(m_status, 0);
  EXPECT_FALSE(m_home.Exists(L"config")) << "the call makes no folder";
}

TEST_F(PathHelper, IgnoresAFolderWithTheNameOfTheFile) {
  const InstalledFile installed(L"paths_test.json");
  m_home.MakeFolder(L"config\\New TAVO SolidWorks AddOn\\paths_test.json");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
}

TEST_F(PathHelper, RemembersTheNameUnlessAnotherIsPassed) {
  EXPECT_EQ(CZALCADPathHelper::InitCADCfgPath(kName), 0);
  EXPECT_EQ(ConfigurationFile(L"", L"file"), m_home.Path(L"config\\New TAVO SolidWorks AddOn\\file"));
  EXPECT_EQ(ConfigurationFile(L"Other", L"file"), m_home.Path(L"config\\Other\\file"));
  EXPECT_EQ(CZALCADPathHelper::InitCADCfgPath(L"Other"), 0);
  EXPECT_EQ(ConfigurationFile(L"", L"file"), m_home.Path(L"config\\Other\\file"));
}

TEST_F(PathHelper, FindsAConfigurationFileBeyondTwoHundredAndSixtyCharacters) {
  const InstalledFile installed(L"paths_test.json");
  const std::wstring home = m_home.MakeFolder(std::wstring(120, L'd') + L"\\" + std::wstring(120, L'e'));
  m_environment.Set(home);
  const std::wstring own = home + L"\\config\\New TAVO SolidWorks AddOn\\paths_test.json";
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
  m_home.Write(own.substr(m_home.Path().size() + 1), "own");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), own) << "without the prefix for long paths";
}

TEST_F(PathHelper, MakesTheLogFolder) {
  EXPECT_EQ(LogFolder(), m_home.Path(L"log"));
  EXPECT_EQ(m_status, 0);
  EXPECT_TRUE(m_home.Exists(L"log"));
  EXPECT_EQ(LogFolder(), m_home.Path(L"log"));
  EXPECT_EQ(m_status, 0) << "also if the folder exists";
}

TEST_F(PathHelper, MakesTheLogFolderUnderARootThatIsMissing) {
  m_environment.Set(m_home.Path(L"根\\root"));
  EXPECT_EQ(LogFolder(), m_home.Path(L"根\\root\\log"));
  EXPECT_TRUE(m_home.Exists(L"根\\root\\log"));
}

TEST_F(PathHelper, ReturnsALogFolderThatCannotBeMade) {
  m_home.Write(L"log", "a file in the way");
  EXPECT_EQ(LogFolder(), m_home.Path(L"log"));
  EXPECT_LT(m_status, 0);
  EXPECT_EQ(m_home.Read(L"log"), "a file in the way");
}

struct Root {
  const char* what;
  std::optional<std::wstring> tavo_home;
  std::optional<std::wstring> app_data;
  std::wstring log_folder;
};

TEST_F(PathHelper, FindsTheRootAtEachCall) {
  const ScopedEnvironment app_data(L"APPDATA", std::nullopt);
  const std::wstring home = m_home.Path(L"home"), data = m_home.Path(L"data");
  const Root roots[] = {
      {"both set", home, data, home + L"\\log"},
      {"a separator at the end", home + L"\\", data, home + L"\\log"},
      {"slashes at the end", home + L"//", data, home + L"\\log"},
      {"not set", std::nullopt, data, data + L"\\TAVO\\log"},
      {"empty", L"", data, data + L"\\TAVO\\log"},
      {"neither set", std::nullopt, std::nullopt, L""},
  };
  for (const Root& root : roots) {
    SCOPED_TRACE(root.what);
    m_environment.Set(root.tavo_home);
    app_data.Set(root.app_data);
    EXPECT_EQ(LogFolder(), root.log_folder);
    EXPECT_EQ(m_status == 0, !root.log_folder.empty());
  }
}

TEST_F(PathHelper, WithoutARootStillFindsTheAdministratorsAndTheInstalledFile) {
  const ScopedEnvironment app_data(L"APPDATA", std::nullopt);
  m_environment.Set(std::nullopt);
  EXPECT_LT(CZALCADPathHelper::InitCADCfgPath(kName), 0);
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), L"");
  EXPECT_LT(m_status, 0);
  const InstalledFile installed(L"paths_test.json");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), installed.Path());
  const std::wstring for_all = WriteForAll(L"paths_test.json");
  EXPECT_EQ(ConfigurationFile(kName, L"paths_test.json"), for_all);
  EXPECT_LT(m_status, 0);
}
}  // namespace
