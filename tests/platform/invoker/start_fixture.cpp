#include "start_fixture.h"

#include <sstream>

#include "CStringHelper.h"
#include "base/module_path.h"
#include "plm_client/json_text.h"

namespace {

std::wstring BuiltProgram() {
  const std::wstring tests = ModulePath(GetModuleHandleW(nullptr));
  return tests.substr(0, tests.rfind(L'\\')) + L"\\invoker_test_client.exe";
}

}  // namespace

ClientStart::~ClientStart() {
  if (const UniqueHandle process = Process()) {
    TerminateProcess(process.get(), 0);
    WaitForSingleObject(process.get(), 10'000);
  }
}

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
  if (!m_folder.Exists(kFolder + LR"(\started.txt)")) return lines;
  std::wistringstream text(m_folder.ReadText(kFolder + LR"(\started.txt)"));
  for (std::wstring line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

UniqueHandle ClientStart::Process() const {
  const std::vector<std::wstring> found = Found();
  if (found.empty()) return nullptr;
  return OwnHandle(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, std::stoul(found[0])));
}
