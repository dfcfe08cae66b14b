// What came of a run, read from the host, the PLM client, the log and the folders.
#include <algorithm>

#include "CStringHelper.h"
#include "folder_tree.h"
#include "stage.h"

namespace {

std::wstring Wide(std::string_view text) { return CStringHelper::UTF8ToUnicode(text); }

}  // namespace

void Stage::ForgetEffects() {
  m_boxes.clear();
  m_debugTexts.clear();
  m_host->GetJournal().Clear();
  m_seenLog = LogFile().size();
  const std::lock_guard lock(m_requestsMutex);
  m_requests.clear();
}

std::string Stage::LogFile() const { return m_folder.Exists(kLog) ? m_folder.Read(kLog) : std::string(); }

Texts Stage::LogLines() const {
  Texts lines = m_debugTexts;
  const std::string log = LogFile();
  for (std::size_t begin = m_seenLog; begin < log.size();) {
    const std::size_t end = std::min(log.find('\n', begin), log.size());
    lines.push_back(Wide(std::string_view(log).substr(begin, end - begin)));
    begin = end + 1;
  }
  return lines;
}

Texts Stage::ErrorLines() const {
  Texts errors;
  for (const std::wstring& line : LogLines()) {
    const std::size_t level = line.find(L"ERROR ");
    if (level != std::wstring::npos) errors.push_back(line.substr(level));
  }
  return errors;
}

std::map<std::wstring, std::string> Stage::ModelFiles() const {
  std::map<std::wstring, std::string> files;
  const TempFolder& folder = m_folder;
  for (const std::wstring& path : ListTree(folder, L"models")) {
    if (!path.ends_with(L'\\')) files[path.substr(7)] = folder.Read(path);
  }
  return files;
}

Texts Stage::LostFiles() const {
  Texts lost;
  const auto files = ModelFiles();
  for (const auto& [name, bytes] : m_models) {
    const auto has_bytes = [&wanted = bytes](const auto& file) { return file.second == wanted; };
    if (std::none_of(files.begin(), files.end(), has_bytes)) lost.push_back(name);
  }
  return lost;
}

Texts Stage::HeldReferences() const {
  Texts held;
  for (const auto& reference : m_host->HeldReferences()) {
    held.push_back(reference.object + L" " + std::to_wstring(reference.count));
  }
  std::sort(held.begin(), held.end());
  return held;
}

void Stage::AddDocumentEffects(Texts& effects) const {
  for (const auto& document : m_host->OpenDocuments()) {
    const bool is_active = document == m_host->ActiveDocument();
    effects.push_back(L"open: " + document->title + (is_active ? L", active" : L""));
    for (const auto& component : document->components) {
      effects.push_back(L"component: " + component->record.path.substr(ModelPath(L"").size()) +
                        L", revision " + std::to_wstring(component->loaded_revision) +
                        (component->IsSuppressed() ? L", suppressed" : L""));
    }
    for (const auto& property : document->model.properties) {
      effects.push_back(L"property: " + property.name + L"=" + property.text);
    }
  }
  for (const auto& [name, bytes] : ModelFiles()) {
    const auto known = std::find_if(m_models.begin(), m_models.end(),
                                    [&content = bytes](const auto& file) { return file.second == content; });
    if (known == m_models.end() || known->first != name) {
      effects.push_back(L"file: " + name + L" is " +
                        (known == m_models.end() ? L"another" : L"the first " + known->first));
    }
  }
}

void Stage::AddInterfaceEffects(Texts& effects) const {
  effects.push_back(m_addIn ? L"connected" : L"not connected");
  for (const auto& group : m_host->Groups()) {
    effects.push_back(L"menu: " + group->title + L", " + std::to_wstring(group->items.size()) + L" items" +
                      (group->has_menu ? L", menu" : L"") + (group->has_toolbar ? L", toolbar" : L"") +
                      (group->active ? L", active" : L"") +
                      (group->small_icons.is_bitmap && group->large_icons.is_bitmap ? L", icons" : L""));
  }
  for (const auto& tab : m_host->Tabs()) {
    std::size_t commands = 0;
    for (const auto& box : tab->boxes) commands += box->commands.size();
    effects.push_back(L"tab: " + tab->name + L" for " + std::to_wstring(tab->document_type) + L", " +
                      std::to_wstring(commands) + L" commands" + (tab->visible ? L", visible" : L""));
  }
  for (const auto& entry : cad_host::Host::RegisteredAddIns()) {
    if (entry.title == kTitle) effects.push_back(L"registered");
  }
  effects.push_back(L"event sinks: " + std::to_wstring(m_host->AdvisedSinks()));
}

void Stage::ForgetLateRequests() {
  const std::lock_guard lock(m_requestsMutex);
  int newest = 0;
  for (const auto& [connection, request] : m_requests) newest = std::max(newest, connection);
  std::erase_if(m_requests, [newest](const auto& request) { return request.first != newest; });
}

Texts Stage::Effects() const {
  Texts effects;
  {
    const std::lock_guard lock(m_requestsMutex);
    for (const auto& [connection, request] : m_requests) effects.push_back(L"asked: " + Wide(request));
  }
  for (const std::wstring& box : m_boxes) effects.push_back(L"box: " + box);
  AddDocumentEffects(effects);
  AddInterfaceEffects(effects);
  if (m_addIn) effects.push_back(IsLoggedIn() ? L"logged in" : L"logged out");
  return effects;
}
