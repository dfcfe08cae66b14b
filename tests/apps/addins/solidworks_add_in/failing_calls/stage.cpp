#include "stage.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "CStringHelper.h"
#include "folder_tree.h"

namespace {

constexpr const wchar_t* kTitle = L"TAVO SolidWorks Integration";
constexpr const wchar_t* kConfiguration = L"config\\New TAVO SolidWorks AddOn\\";
constexpr const wchar_t* kLog = L"log\\SolidWorks.log";
constexpr cad_host::Point kPicked = {0.25, -1.5, 3};

std::wstring PipeName() { return L"tavo-failing-calls-" + std::to_wstring(GetCurrentProcessId()); }

std::string Utf8(std::wstring_view text) { return CStringHelper::UnicodeToUTF8(text); }
std::wstring Wide(std::string_view text) { return CStringHelper::UTF8ToUnicode(text); }

}  // namespace

std::string AnswerNaming(const std::string& member, const std::wstring& path) {
  std::string escaped;
  for (const char character : Utf8(path)) {
    if (character == '\\') escaped += '\\';
    escaped += character;
  }
  return "{\"" + member + "\":[\"" + escaped + "\"]}";
}

Stage::Stage()
    : m_home(L"TAVO_HOME", m_folder.Path()),
      m_tmp(L"TMP", m_folder.MakeFolder(L"tmp")),
      m_temp(L"TEMP", m_folder.Path(L"tmp")),
      m_imports(m_dll.Handle()),
      m_blocks(m_imports, m_dll.Handle()) {
  current = this;
  m_imports.Redirect("MessageBoxW", &AnswerBox);
  m_imports.Redirect("OutputDebugStringW", &NoteDebugText);
  if (FAILED(m_dll.RegisterServer())) throw std::runtime_error("the DLL cannot be registered");
  m_folder.Write(std::wstring(kConfiguration) + L"PlmClient.json", R"({"pipe":")" + Utf8(PipeName()) + R"("})");
  m_script.Always("QD_PLMLogin", plm_client::Reply::Text(R"({"__InvokeResult__":true,"user":"王","id":7})"));
  m_script.Always("QD_PLMLogout", plm_client::Reply::Text(R"({"__InvokeResult__":true})"));
  MakeModels();
  StartClient();
  StartHost();
}

Stage::~Stage() {
  BeDisconnected();
  m_host.reset();
  current = nullptr;
}

int Stage::AnswerBox(HWND, const wchar_t* text, const wchar_t* caption, UINT) {
  current->m_boxes.push_back(std::wstring(caption ? caption : L"") + L": " + text);
  return IDOK;
}

void Stage::NoteDebugText(const wchar_t* text) { current->m_debugTexts.emplace_back(text); }

void Stage::MakeModel(const std::wstring& name, cad_host::ModelFile model) {
  model.type = cad_host::DocumentTypeOfName(name);
  cad_host::WriteModelFile(ModelPath(name), model);
  m_models[name] = m_folder.Read(L"models\\" + name);
}

// Each file differs from the others, so that one cannot pass for another that was lost.
void Stage::MakeModels() {
  for (const wchar_t* folder : {L"models\\parts", L"models\\download"}) m_folder.MakeFolder(folder);
  const auto model = [](long revision, const wchar_t* number) {
    cad_host::ModelFile file;
    file.revision = revision;
    file.properties = {{.name = L"Number", .text = number}};
    return file;
  };
  MakeModel(L"parts\\bolt.sldprt", model(1, L"bolt"));
  MakeModel(L"parts\\nut.sldprt", model(1, L"nut"));
  MakeModel(L"download\\nut.sldprt", model(2, L"newer nut"));
  MakeModel(L"download\\screw.sldprt", model(2, L"screw"));
  cad_host::ModelFile part;
  part.properties = {
      {.name = L"A", .text = L"1"}, {.name = L"B", .text = L"2"}, {.name = L"C", .text = L"3"}};
  MakeModel(L"part.sldprt", part);
  cad_host::ModelFile assembly;
  const std::wstring bolt = ModelPath(L"parts\\bolt.sldprt");
  assembly.components = {{L"bolt-1", bolt, {1, 0, 0}},
                         {L"nut-1", ModelPath(L"parts\\nut.sldprt"), {}},
                         {L"bolt-2", bolt, {2, 0, 0}}};
  assembly.mates = {{L"Concentric1", L"bolt-1", L"nut-1"}};
  MakeModel(L"top.sldasm", assembly);
}

void Stage::StartClient() {
  m_client = std::make_unique<plm_client::Client>(
      plm_client::Settings{.pipe = PipeName()},
      [this](const plm_client::Request& request, const std::stop_token& stop) {
        {
          const std::lock_guard lock(m_requestsMutex);
          m_requests.push_back(request.command + " " + request.text);
        }
        return m_script(request, stop);
      });
}

void Stage::StartHost() {
  m_host.reset();
  m_host = std::make_unique<cad_host::Host>();
}

void Stage::PutModelsBack() {
  const auto open = m_host->OpenDocuments();
  for (const auto& document : open) m_host->Close(document);
  const auto found = ModelFiles();
  for (const auto& [name, bytes] : found) {
    if (!m_models.contains(name)) DeleteFileW(ModelPath(name).c_str());
  }
  RemoveDirectoryW(ModelPath(L"download\\temp").c_str());
  for (const auto& [name, bytes] : m_models) {
    const auto now = found.find(name);
    if (now == found.end() || now->second != bytes) m_folder.Write(L"models\\" + name, bytes);
  }
}

void Stage::BeConnected() {
  if (!m_addIn && FAILED(Connect())) throw std::runtime_error("the add-in does not connect");
}

bool Stage::IsLoggedIn() { return !m_host->IsEnabled(*m_addIn, L"PlmLogin"); }

void Stage::BeLoggedIn() {
  BeConnected();
  if (!IsLoggedIn() && FAILED(Pick(L"PlmLogin"))) throw std::runtime_error("nobody can log in");
}

void Stage::BeLoggedOut() {
  BeConnected();
  if (IsLoggedIn()) Pick(L"PlmLogOut");
}

void Stage::BeDisconnected() {
  if (m_addIn) Disconnect();
  StartHost();
}

void Stage::OpenAssembly(const std::wstring& selected) {
  const auto assembly = m_host->Open(ModelPath(L"top.sldasm"));
  assembly->selection = {{assembly->FindComponent(selected), kPicked}};
}

void Stage::OpenPart() { m_host->Open(ModelPath(L"part.sldprt")); }

void Stage::Answer(const std::string& command, const std::string& text) {
  m_script.Always(command, plm_client::Reply::Text(text));
}

HRESULT Stage::Connect() {
  try {
    m_addIn = &m_host->Connect(kTitle);
    return S_OK;
  } catch (const cad_host::HostError& error) {
    return error.Result();
  }
}

HRESULT Stage::Disconnect() {
  return m_host->Disconnect(*std::exchange(m_addIn, nullptr)) ? S_OK : S_FALSE;
}

HRESULT Stage::Pick(const std::wstring& callback) {
  const cad_host::PickResult picked = m_host->Pick(*m_addIn, callback);
  if (!picked.enabled) return OLE_E_NOTRUNNING;
  return picked.result == DISP_E_EXCEPTION ? picked.code : picked.result;
}

HRESULT Stage::AskWhatIsEnabled() {
  for (const auto& group : m_host->Groups()) {
    for (const auto& item : group->items) m_host->IsEnabled(*m_addIn, item.callback);
  }
  return S_OK;
}

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
      effects.push_back(L"component: " + component->record.path.substr(ModelPath(L"").size()) + L", revision " +
                        std::to_wstring(component->loaded_revision) +
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
                      (group->active ? L", active" : L"") +
                      (group->small_icons.is_bitmap && group->large_icons.is_bitmap ? L", icons" : L""));
  }
  for (const auto& tab : m_host->Tabs()) {
    std::size_t commands = 0;
    for (const auto& box : tab->boxes) commands += box->commands.size();
    effects.push_back(L"tab: " + tab->name + L" for " + std::to_wstring(tab->document_type) + L", " +
                      std::to_wstring(commands) + L" commands");
  }
  effects.push_back(L"event sinks: " + std::to_wstring(m_host->AdvisedSinks()));
}

Texts Stage::Effects() {
  Texts effects;
  {
    const std::lock_guard lock(m_requestsMutex);
    for (const std::string& request : m_requests) effects.push_back(L"asked: " + Wide(request));
  }
  for (const std::wstring& box : m_boxes) effects.push_back(L"box: " + box);
  AddDocumentEffects(effects);
  AddInterfaceEffects(effects);
  if (m_addIn) effects.push_back(IsLoggedIn() ? L"logged in" : L"logged out");
  return effects;
}
