#include "command_store.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/file_attributes.h"
#include "base/system_path.h"
#include "cad_host/host_error.h"
#include "files/records.h"

namespace cad_host {
namespace {

// The records of the file, by their first field. Boxes belong to the tab before them, commands to the box.
constexpr const wchar_t* kLastId = L"last-command-id";
constexpr const wchar_t* kGroup = L"group";  // add-in, user id
constexpr const wchar_t* kItem = L"item";    // user id, command id
constexpr const wchar_t* kTab = L"tab";      // document type, name, 1 if visible
constexpr const wchar_t* kBox = L"box";
constexpr const wchar_t* kCommand = L"command";  // command id, text style

std::wstring Number(long value) { return std::to_wstring(value); }

Records TableOf(const CommandMemory& memory) {
  Records records = {{kLastId, Number(memory.last_command_id)}};
  for (const SavedGroup& group : memory.groups) {
    records.push_back({kGroup, group.add_in, Number(group.user_id)});
    for (std::size_t item = 0; item < group.command_ids.size(); ++item) {
      records.push_back({kItem, Number(group.item_user_ids[item]), Number(group.command_ids[item])});
    }
  }
  for (const auto& tab : memory.tabs) {
    records.push_back({kTab, Number(tab->document_type), tab->name, tab->visible ? L"1" : L"0"});
    for (const auto& box : tab->boxes) {
      records.push_back({kBox});
      for (const TabCommand& command : box->commands) {
        records.push_back({kCommand, Number(command.id), Number(command.text_style)});
      }
    }
  }
  return records;
}

void ReadRecord(const Record& record, CommandMemory& memory) {
  const std::wstring kind = FieldOf(record, 0);
  if (kind == kLastId) {
    memory.last_command_id = NumberOf(record, 1);
  } else if (kind == kGroup) {
    memory.groups.push_back({FieldOf(record, 1), NumberOf(record, 2), {}, {}});
  } else if (kind == kItem && !memory.groups.empty()) {
    memory.groups.back().item_user_ids.push_back(NumberOf(record, 1));
    memory.groups.back().command_ids.push_back(NumberOf(record, 2));
  } else if (kind == kTab) {
    memory.tabs.push_back(std::make_shared<CommandTab>());
    *memory.tabs.back() = {NumberOf(record, 1), FieldOf(record, 2), NumberOf(record, 3) != 0, {}};
  } else if (kind == kBox && !memory.tabs.empty()) {
    memory.tabs.back()->boxes.push_back(std::make_shared<CommandTabBox>());
  } else if (kind == kCommand && !memory.tabs.empty() && !memory.tabs.back()->boxes.empty()) {
    memory.tabs.back()->boxes.back()->commands.push_back({NumberOf(record, 1), NumberOf(record, 2)});
  } else {
    throw HostError(L"a record that is not known or not in its place: " + kind);
  }
}

}  // namespace

CommandStore::CommandStore(const std::wstring& folder) {
  if (folder.empty()) return;
  const std::wstring full_path = FullPath(folder);
  std::error_code error;
  std::filesystem::create_directories(full_path, error);
  if (error) throw HostError(L"cannot make the folder " + full_path);
  m_path = full_path + L"\\commands.txt";
}

CommandMemory CommandStore::Read() const {
  CommandMemory memory;
  if (m_path.empty() || !IsFile(m_path)) return memory;
  std::ifstream file(m_path.c_str(), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  try {
    for (const Record& record : DecodeRecords(bytes)) ReadRecord(record, memory);
  } catch (const HostError& error) {
    throw HostError(m_path + L": " + error.Message());
  }
  return memory;
}

void CommandStore::Write(const CommandMemory& memory) const {
  if (m_path.empty()) return;
  std::ofstream file(m_path.c_str(), std::ios::binary);
  file << EncodeRecords(TableOf(memory));
  file.close();
  if (!file) throw HostError(L"cannot write " + m_path);
}

}  // namespace cad_host
