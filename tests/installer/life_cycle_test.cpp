// The life of the add-in on a computer, from the first installation to the last removal. After each step the
// whole computer is compared with what it was before.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "base/utf8.h"
#include "client_program.h"
#include "computer.h"
#include "environment.h"
#include "list_difference.h"
#include "program_folder.h"

namespace {

using namespace computer;
using Lines = std::vector<std::wstring>;

constexpr const wchar_t* kTypeLibrary = L"SOFTWARE\\Classes\\TypeLib\\{EA77B297-A3D1-4C82-BF87-2CA5AADE9530}";
constexpr const char* kOldLine = "an old line\r\n";

std::wstring FolderOf(const wchar_t* name) {
  wchar_t path[MAX_PATH] = {};
  ExpandEnvironmentStringsW(name, path, MAX_PATH);
  return path;
}

const std::wstring kLog = FolderOf(L"%APPDATA%") + L"\\TAVO\\log\\SolidWorks.log";

/// What users and administrators put on the computer; no package may touch it.
class FilesOfPeople {
 public:
  FilesOfPeople() {
    Add(FolderOf(L"%APPDATA%"), L"TAVO\\config\\New TAVO SolidWorks AddOn\\PlmClient.json", "{}");
    Add(FolderOf(L"%APPDATA%"), L"TAVO\\log\\SolidWorks.log", kOldLine);
    Add(FolderOf(L"%ProgramData%"), L"TAVO\\config\\New TAVO SolidWorks AddOn\\View.json",
        ReadFileBytes(BuiltFile(L"config\\View.json")));
    Add(L"C:\\Program Files", L"TAVO\\SolidWorks Integration\\config\\notes.txt", "ours");
  }
  FilesOfPeople(const FilesOfPeople&) = delete;
  FilesOfPeople& operator=(const FilesOfPeople&) = delete;
  ~FilesOfPeople() {
    for (const std::wstring& file : m_files) DeleteFileW(file.c_str());
    for (auto folder = m_folders.rbegin(); folder != m_folders.rend(); ++folder)
      RemoveDirectoryW(folder->c_str());
  }

 private:
  void Add(const std::wstring& root, const std::wstring& name, std::string_view content) {
    const std::wstring path = root + L"\\" + name;
    for (std::size_t at = path.find(L'\\', root.size() + 1); at != path.npos; at = path.find(L'\\', at + 1)) {
      const std::wstring folder = path.substr(0, at);
      if (CreateDirectoryW(folder.c_str(), nullptr)) m_folders.push_back(folder);
    }
    WriteFileBytes(path, content);
    m_files.push_back(path);
  }

  Lines m_folders, m_files;
};

class LifeCycle : public InstallerTest {
 protected:
  /// What has changed since the last call, but for the installer's own account.
  Lines Step() {
    Snapshot now = Look();
    const Lines changes = ChangesNotBelow(Changes(m_last, now), InstallersOwn());
    m_last = std::move(now);
    return changes;
  }

  void Install() {
    ASSERT_EQ(Msiexec(L"/i " + ThisPackage() + L" LOADATSTARTUP=1"), 0u);

    const Lines changes = Step();
    EXPECT_TRUE(
        std::all_of(changes.begin(), changes.end(), [](const auto& line) { return line[0] == L'+'; }));
    const Lines places = {kInstallFolder, L"HKLM\\Software\\Classes\\", L"HKLM\\Software\\SolidWorks\\"};
    EXPECT_PRED_FORMAT2(SameEntries, ChangesNotBelow(changes, places), Lines{});
    for (const std::wstring& place : places) EXPECT_FALSE(ChangesBelow(changes, {place}).empty());
  }

  /// The diagnosis program finds nothing wrong. The host finds the add-in by its registry entry, connects it,
  /// lets it run a command and unloads it.
  /// @param warnings  of the diagnosis program
  void Use(int warnings = 0) {
    const TempFolder clients_folder, doctors_folder, hosts_folder;
    const std::wstring answers = L"\"" + SourceFile(L"demo\\answers") + L"\"";
    const ClientProgram client(L"plm_client.exe", clients_folder, L"--answers " + answers);
    for (int pauses = 0; pauses < 200 && client.Output().find("serving") == std::string::npos; ++pauses)
      Sleep(100);
    const ClientProgram doctor((kInstallFolder + L"\\tavo_doctor.exe").c_str(), doctors_folder, L"--json");
    EXPECT_EQ(doctor.ExitCode(), 0u) << doctor.Errors();
    const std::string findings = "\"failures\":0,\"warnings\":" + std::to_string(warnings) + ",";
    EXPECT_NE(doctor.Output().find(findings), std::string::npos) << doctor.Output();

    const std::wstring script = hosts_folder.Write(L"session.txt",
                                                   "connect \"TAVO SolidWorks Integration\"\n"
                                                   "expect enabled \"Log In\"\n"
                                                   "pick \"Log In\"\n"
                                                   "expect enabled \"Data Selector\"\n"
                                                   "disconnect\n");
    const ClientProgram host(L"cad_host.exe", hosts_folder, script);
    EXPECT_EQ(host.ExitCode(), 0u) << host.Output() << host.Errors();

    const Lines changes = Step();
    ASSERT_EQ(changes.size(), 1u) << "only the log grows";
    EXPECT_EQ(changes[0].find(L"~ " + kLog), 0u);
  }

  void BreakAndRepair() {
    ASSERT_TRUE(DeleteFileW(kDll.c_str()));
    ASSERT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, kTypeLibrary), ERROR_SUCCESS);
    ASSERT_EQ(RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kHostsKey.c_str(), L"Title"), ERROR_SUCCESS);

    ASSERT_EQ(Repair(), 0u);

    EXPECT_PRED_FORMAT2(SameEntries, Step(), Lines{}) << "all is back, and nothing else has changed";
  }

  void Upgrade() {
    ASSERT_EQ(Msiexec(L"/i " + NextPackage()), 0u);

    const Lines changes = Step();
    ASSERT_EQ(changes.size(), 1u) << "only the DLL differs between the two packages";
    EXPECT_EQ(changes[0].find(L"~ " + kDll), 0u);
    EXPECT_EQ(FileVersion(kDll), NEXT_VERSION L".0");
  }

  void TryToGoBack() {
    EXPECT_EQ(Msiexec(L"/i " + ThisPackage()), DWORD{ERROR_INSTALL_FAILURE});
    EXPECT_PRED_FORMAT2(SameEntries, Step(), Lines{});
  }

  void Remove() const { ASSERT_EQ(Msiexec(L"/x " + NextPackage()), 0u); }

  static std::string Log() { return ReadFileBytes(kLog); }

 private:
  const ScopedEnvironment m_home{L"TAVO_HOME", std::nullopt};
  Snapshot m_last;
};

TEST_F(LifeCycle, ChangesWhatItShouldAndLeavesNothing) {
  const FilesOfPeople people;
  const Snapshot bare = Look();
  Step();

  Install();
  Use();
  BreakAndRepair();
  Use();
  Upgrade();
  Use(1);  // the DLL is newer than the diagnosis program, since only the DLL was made in two versions
  TryToGoBack();
  Remove();

  EXPECT_PRED_FORMAT2(SameEntries, ChangesNotBelow(Changes(bare, Look()), {kLog}), Lines{});
  EXPECT_NE(Log().find(kOldLine), std::string::npos);
}

TEST_F(LifeCycle, BeginsItsLogWithTheVersionOfThePackage) {
  const FilesOfPeople people;
  Step();
  Install();
  Use();
  EXPECT_EQ(Products().at(0).version, PRODUCT_VERSION);
  const std::string begin = "version " + utf8::Encode<wchar_t>(PRODUCT_VERSION) + " from " +
                            utf8::Encode<wchar_t>(std::wstring_view(kDll)) + ", log configuration ";
  const std::string log = Log().substr(std::string_view(kOldLine).size());
  EXPECT_LT(log.find(begin), log.find('\n')) << log;
}

}  // namespace
