// What leaves the DLL in a host of the other ABI, which cannot catch an exception of ours: results, never
// exceptions.
#include <gtest/gtest.h>

#include <windows.h>

#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "base/module_path.h"
#include "base/unique_handle.h"
#include "environment.h"
#include "list_difference.h"
#include "temp_folder.h"

namespace {

constexpr DWORD kPatience = 60'000;  // ms
constexpr wchar_t kView[] = L"home\\config\\New TAVO SolidWorks AddOn\\View.json";
constexpr char kGoodView[] =
    R"({"name":"PLM","Menu":[{"name":"Log in","ToolTip":"tip","Hint":"hint","CallbackFunction":"PlmLogin",)"
    R"("EnableMethod":"EnablePlmLogin","ImageListIndex":0}]})";

constexpr int kMethods = 28;
constexpr const wchar_t* kCommands[] = {L"PlmLogin",
                                        L"PlmLogOut",
                                        L"OpenDataSelector",
                                        L"PlmMyCheckOutList",
                                        L"PlmWf",
                                        L"PlmCode",
                                        L"PlmQuery",
                                        L"PlmImportCurrent",
                                        L"PlmLotimport",
                                        L"PlmCreateMaterial",
                                        L"PlmMyTempMaterial",
                                        L"PlmTaskManage",
                                        L"PlmMaterialBackFill",
                                        L"PlmImportChangeItem"};

using Lines = std::vector<std::string>;

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L'\\')); }

/// The DLL without the configuration that is installed beside it, and a platform root.
class ForeignHost : public testing::TestWithParam<const char*> {
 protected:
  ForeignHost()
      : m_home(L"TAVO_HOME", m_folder.MakeFolder(L"home")), m_data(L"PROGRAMDATA", m_folder.Path()) {
    const std::wstring built = FolderOf(FolderOf(ModulePath(nullptr))) + L"\\bin\\solidworks_add_in.dll";
    EXPECT_TRUE(CopyFileW(built.c_str(), m_folder.Path(L"add_in.dll").c_str(), TRUE));
  }

  /// Runs the host. @return what it printed, line by line.
  Lines Run(const std::wstring& scenario, const std::wstring& guard) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    const UniqueHandle output =
        OwnHandle(CreateFileW(m_folder.Path(L"output.txt").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                              &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::wstring program = FolderOf(ModulePath(nullptr)) + L"\\foreign_host.exe";
    std::wstring command =
        L"\"" + program + L"\" \"" + m_folder.Path(L"add_in.dll") + L"\" " + scenario + L" " + guard;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.get();
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                               &startup, &started));
    const UniqueHandle thread = OwnHandle(started.hThread);
    const UniqueHandle process = OwnHandle(started.hProcess);
    if (WaitForSingleObject(process.get(), kPatience) != WAIT_OBJECT_0) {
      ADD_FAILURE() << "the host hangs";
      TerminateProcess(process.get(), 1);
    }
    DWORD exit_code = 0;
    GetExitCodeProcess(process.get(), &exit_code);
    EXPECT_EQ(exit_code, m_expectedExitCode);
    Lines lines;
    std::istringstream text(m_folder.Read(L"output.txt"));
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  Lines Run(const std::wstring& scenario) {
    const std::string guard = GetParam();
    return Run(scenario, std::wstring(guard.begin(), guard.end()));
  }

  /// What the host prints of a connection that fails with `code`.
  static Lines NotConnected(const std::string& code) {
    return {"ConnectToSW " + code + " 00000000", "DllCanUnloadNow 00000000", "alive"};
  }

  /// What the host prints of each method by slot, if the commands fail for want of a connection.
  static Lines EverySlot() {
    Lines lines;
    for (int method = 0; method < kMethods; ++method) {
      const bool is_command = method % 2 == 0;
      const std::string status = method == 1 ? "00000001" : "00000000";  // "Log in" alone is enabled
      lines.push_back("slot 000000" + HexByte(7 + method) +
                      (is_command ? " 80004003 ffffffff" : " 00000000 " + status));
    }
    return lines;
  }

  static std::string HexByte(int number) {
    constexpr char kDigits[] = "0123456789abcdef";
    return {kDigits[number / 16], kDigits[number % 16]};
  }

  /// The texts of the log's lines that are errors, without time, thread and place.
  std::vector<std::wstring> Errors() const {
    std::vector<std::wstring> errors;
    if (!m_folder.Exists(L"home\\log\\SolidWorks.log")) return errors;
    std::wistringstream text(m_folder.ReadText(L"home\\log\\SolidWorks.log"));
    for (std::wstring line; std::getline(text, line);) {
      if (line.ends_with(L'\r')) line.pop_back();
      if (line.find(L" ERROR ") != std::wstring::npos) errors.push_back(line.substr(line.find(L" - ") + 3));
    }
    return errors;
  }

  void ExpectOneError(const std::wstring& naming) const {
    const std::vector<std::wstring> errors = Errors();
    ASSERT_EQ(errors.size(), 1u) << testing::PrintToString(errors);
    EXPECT_NE(errors[0].find(naming), std::wstring::npos) << testing::PrintToString(errors[0]);
  }

  /// Expects one line for each command, in their order.
  static void ExpectOneErrorForEachCommand(std::span<const std::wstring> errors) {
    ASSERT_EQ(errors.size(), std::size(kCommands));
    for (std::size_t index = 0; index < errors.size(); ++index) {
      const std::wstring begin =
          std::wstring(L"ISolidWorksAddIn::") + kCommands[index] + L" raised 0x80004003";
      EXPECT_TRUE(errors[index].starts_with(begin)) << testing::PrintToString(errors[index]);
    }
  }

  TempFolder m_folder;
  DWORD m_expectedExitCode = 0;

 private:
  ScopedEnvironment m_home;
  ScopedEnvironment m_data;
};

TEST_P(ForeignHost, OutlivesAMissingViewFile) {
  EXPECT_EQ(Run(L"connect"), NotConnected("a3013001"));
  ExpectOneError(L"View.json");
}

TEST_P(ForeignHost, OutlivesAMalformedViewFile) {
  m_folder.Write(kView, "{\n \"name\": }");
  EXPECT_EQ(Run(L"connect"), NotConnected("a3013001"));
  ExpectOneError(L"line 2, column 10");
}

TEST_P(ForeignHost, OutlivesAViewFileWithoutAMenu) {
  m_folder.Write(kView, R"({"name":"PLM"})");
  EXPECT_EQ(Run(L"connect-with-manager"), NotConnected("a3013000"));
  ExpectOneError(L"json member [Menu] not exist!");
}

TEST_P(ForeignHost, OutlivesAMenuOfTheWrongForm) {
  m_folder.Write(kView, R"({"name":"PLM","Menu":[1]})");
  EXPECT_EQ(Run(L"connect-with-manager"), NotConnected("a3013001"));
  ExpectOneError(L"json member [Menu] has an element that is no object");
}

TEST_P(ForeignHost, OutlivesANullCommandTab) {
  m_folder.Write(kView, kGoodView);
  EXPECT_EQ(Run(L"connect-with-manager"), NotConnected("80004003"));
  ExpectOneError(L"ICommandManager::AddCommandTab");
}

TEST_P(ForeignHost, OutlivesANullCommandManager) {
  m_folder.Write(kView, kGoodView);
  EXPECT_EQ(Run(L"connect"), NotConnected("80004003"));
  ExpectOneError(L"ISldWorks::GetCommandManager");
}

TEST_P(ForeignHost, OutlivesAHostThatIsNoApplication) {
  EXPECT_EQ(Run(L"no-application"), NotConnected("80004003"));
  ExpectOneError(L"ISldWorks");
}

TEST_P(ForeignHost, OutlivesEveryMethodBySlotBeforeAConnection) {
  Lines expected = EverySlot();
  expected.insert(expected.end(), {"DllCanUnloadNow 00000000", "alive"});
  EXPECT_SAME_ENTRIES(Run(L"commands"), expected);
  ExpectOneErrorForEachCommand(Errors());
}

TEST_P(ForeignHost, OutlivesEveryMethodByNameBeforeAConnection) {
  Lines expected;
  for (int id = 1; id <= kMethods; ++id) {
    const bool is_command = id % 2 == 1;
    const std::string value = id == 2 ? "00000001" : "00000000";
    expected.push_back(
        "Invoke 000000" + HexByte(id) +
        (is_command ? " 80020009 80004003 00000000 00000000" : " 00000000 00000000 00000003 " + value));
  }
  expected.insert(expected.end(), {"DllCanUnloadNow 00000000", "alive"});
  EXPECT_SAME_ENTRIES(Run(L"invoke"), expected);
  ExpectOneErrorForEachCommand(Errors());
}

TEST_P(ForeignHost, OutlivesEverythingAfterAConnectionThatFailed) {
  Lines expected = {"ConnectToSW a3013001 00000000"};
  const Lines slots = EverySlot();
  expected.insert(expected.end(), slots.begin(), slots.end());
  expected.insert(expected.end(),
                  {"ConnectToSW a3013001 00000000", "DisconnectFromSW 00000000 00000000",
                   "DisconnectFromSW 00000000 00000000", "DllCanUnloadNow 00000000", "alive"});
  EXPECT_SAME_ENTRIES(Run(L"everything-after-a-failure"), expected);
  const std::vector<std::wstring> errors = Errors();
  ASSERT_EQ(errors.size(), 2 + std::size(kCommands));
  EXPECT_NE(errors.front().find(L"View.json"), std::wstring::npos);
  EXPECT_NE(errors.back().find(L"View.json"), std::wstring::npos);
  ExpectOneErrorForEachCommand(std::span(errors).subspan(1, std::size(kCommands)));
}

std::string GuardName(const testing::TestParamInfo<const char*>& test) { return test.param; }
INSTANTIATE_TEST_SUITE_P(, ForeignHost, testing::Values("none", "ehsc", "eha", "seh"), GuardName);

/// An exception of the host's own passes the DLL's frames unseen: the host goes on, but the DLL stays loaded.
class ExceptionOfTheHost : public ForeignHost {
 protected:
  const Lines kCaughtAndLoaded = {"ConnectToSW e0000001 00000000", "DllCanUnloadNow 00000001", "alive"};
};

TEST_P(ExceptionOfTheHost, PassesTheDllWhichStaysLoaded) {
  EXPECT_EQ(Run(L"throwing-host"), kCaughtAndLoaded);
}

INSTANTIATE_TEST_SUITE_P(, ExceptionOfTheHost, testing::Values("ehsc", "eha", "seh"), GuardName);

/// A fault in the host is caught under /EHa and by __except only.
class FaultOfTheHost : public ExceptionOfTheHost {};

TEST_P(FaultOfTheHost, PassesTheDllWhichStaysLoaded) {
  EXPECT_EQ(Run(L"fault"), (Lines{"fault e0000001", "DllCanUnloadNow 00000000", "alive"}));
  EXPECT_EQ(Run(L"faulting-host"), kCaughtAndLoaded);
}

INSTANTIATE_TEST_SUITE_P(, FaultOfTheHost, testing::Values("eha", "seh"), GuardName);

class UncaughtFaultOfTheHost : public ForeignHost {};

TEST_P(UncaughtFaultOfTheHost, EndsIt) {
  m_expectedExitCode = static_cast<DWORD>(STATUS_ACCESS_VIOLATION);
  EXPECT_EQ(Run(L"fault"), Lines{});
}

INSTANTIATE_TEST_SUITE_P(, UncaughtFaultOfTheHost, testing::Values("none", "ehsc"), GuardName);

}  // namespace
