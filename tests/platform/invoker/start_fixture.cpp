#include "start_fixture.h"

#include <sstream>

#include "CStringHelper.h"
#include "base/module_path.h"
#include "base/unique_handle.h"
#include "plm_client/json_text.h"

namespace {

std::wstring BuiltProgram() {
  const std::wstring tests = ModulePath(GetModuleHandleW(nullptr));
  return tests.substr(0, tests.rfind(L'\\')) + L"\\invoker_test_client.exe";
}

}  // namespace

ClientStart::~ClientStart() { KillClients(); }

void ClientStart::Install(const std::string& verb, std::string_view further_members) {
  m_folder.MakeFolder(kFolder);
  m_folder.Write(kFolder + LR"(\behaviour.txt)", verb + " " + CStringHelper::UnicodeToUTF8(m_pipe));
  ASSERT_TRUE(CopyFileW(BuiltProgram().c_str(), Program().c_str(), TRUE));
  ConfigureProgram(Program(), further_members);
}

void ClientStart::ConfigureProgram(const std::wstring& path, std::string_view further_members) {
  ConfigurePipe(",\"client\":" + plm_client::JsonString(CStringHelper::UnicodeToUTF8(path)) +
                std::string(further_members));
}

std::vector<std::wstring> ClientStart::Found() const {
  std::vector<std::wstring> lines;
  if (!m_folder.Exists(kFolder)) return lines;
  for (const std::wstring& file : m_folder.List(kFolder)) {
    if (!file.starts_with(L"started-")) continue;
    std::wistringstream text(m_folder.ReadText(kFolder + L"\\" + file));
    for (std::wstring line; std::getline(text, line);) lines.push_back(line);
  }
  return lines;
}

void ClientStart::KillClients() const {
  constexpr std::size_t kLines = 3;  // of each start
  const std::vector<std::wstring> found = Found();
  for (std::size_t line = 0; line < found.size(); line += kLines) {
    const UniqueHandle process =
        OwnHandle(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, std::stoul(found[line])));
    if (!process) continue;
    TerminateProcess(process.get(), 0);
    WaitForSingleObject(process.get(), 10'000);
  }
}
