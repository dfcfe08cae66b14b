#include "stage.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "CStringHelper.h"
#include "plm_client/json_text.h"
#include "solidworks_add_in_h.h"

_COM_SMARTPTR_TYPEDEF(ISolidWorksAddIn, __uuidof(ISolidWorksAddIn));

namespace {

constexpr const wchar_t* kConfiguration = L"config\\New TAVO SolidWorks AddOn\\";
constexpr int kTries = 1'000;  // milliseconds
constexpr cad_host::Point kPicked = {0.25, -1.5, 3};

std::wstring PipeName() { return L"tavo-failing-calls-" + std::to_wstring(GetCurrentProcessId()); }

std::string Utf8(std::wstring_view text) { return CStringHelper::UnicodeToUTF8(text); }

}  // namespace

std::string AnswerNaming(const std::string& member, const std::wstring& path) {
  return "{\"" + member + "\":[" + plm_client::JsonString(Utf8(path)) + "]}";
}

Stage::Stage()
    : m_home(L"TAVO_HOME", m_folder.Path()),
      m_tmp(L"TMP", m_folder.MakeFolder(L"tmp")),
      m_temp(L"TEMP", m_folder.Path(L"tmp")) {
  current = this;
  Load();
  if (FAILED(m_dll->RegisterServer())) throw std::runtime_error("the DLL cannot be registered");
  UsePipe(true);
  m_script.Always("QD_PLMLogin", plm_client::Reply::Text(R"({"__InvokeResult__":true,"user":"王","id":7})"));
  m_script.Always("QD_PLMLogout", plm_client::Reply::Text(R"({"__InvokeResult__":true})").ThenDisconnect());
  MakeModels();
  StartClient();
  StartHost();
}

void Stage::Load() {
  m_dll = std::make_unique<AddInDll>();
  m_imports = std::make_unique<ImportGate>(m_dll->Handle());
  m_blocks = std::make_unique<BlockLedger>(*m_imports, m_dll->Handle());
  m_imports->Redirect("MessageBoxW", &AnswerBox);
  m_imports->Redirect("OutputDebugStringW", &NoteDebugText);
}

void Stage::Reload() {
  BeDisconnected();
  CoFreeUnusedLibrariesEx(0, 0);
  m_blocks.reset();
  m_imports.reset();
  m_dll.reset();
  if (GetModuleHandleW(L"solidworks_add_in.dll")) throw std::runtime_error("the DLL does not unload");
  DeleteFileW(m_folder.Path(kLog).c_str());
  RemoveDirectoryW(m_folder.Path(L"log").c_str());
  Load();
}

void Stage::UsePipe(bool is_served) { Configure(is_served ? PipeName() : PipeName() + L"-nobody", L""); }

void Stage::UseClientProgram(const std::wstring& program) { Configure(PipeName() + L"-nobody", program); }

void Stage::Configure(const std::wstring& pipe, const std::wstring& program) {
  using plm_client::JsonString;
  m_folder.Write(std::wstring(kConfiguration) + L"PlmClient.json",
                 R"({"pipe":)" + JsonString(Utf8(pipe)) + R"(,"client":)" + JsonString(Utf8(program)) + "}");
}

Stage::~Stage() {
  BeDisconnected();
  m_host.reset();
  // Where the system was made not to take a filter back, it still holds it, and with it the DLL.
  CoRegisterMessageFilter(nullptr, nullptr);
  CoFreeUnusedLibrariesEx(0, 0);
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
          m_requests.emplace_back(request.connection, request.command + " " + request.text);
        }
        return m_script(request, stop);
      });
}

void Stage::StartHost() {
  m_host.reset();
  m_host = std::make_unique<cad_host::Host>();  // without tabs that a failing run has stored
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

// Asks the object, because the menu may lack the item.
bool Stage::IsLoggedIn() const {
  long can_log_in = 1;
  ISolidWorksAddInPtr(m_addIn->object)->EnablePlmLogin(&can_log_in);
  return can_log_in == 0;
}

void Stage::BeLoggedIn() {
  BeConnected();
  if (!IsLoggedIn()) AwaitEndOfConnection();
  if (IsLoggedIn() || SUCCEEDED(Pick(L"PlmLogin"))) return;
  std::string why = "nobody can log in:";
  for (const std::wstring& line : LogLines()) why += "\n" + Utf8(line);
  throw std::runtime_error(why);
}

void Stage::BeLoggedOut() {
  BeConnected();
  if (IsLoggedIn()) Pick(L"PlmLogOut");
  AwaitEndOfConnection();
}

void Stage::AwaitEndOfConnection() const {
  for (int tries = 0; m_client->OpenConnectionCount() > 0 && tries < kTries; ++tries) Sleep(1);
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

HRESULT Stage::Disconnect() { return m_host->Disconnect(*std::exchange(m_addIn, nullptr)) ? S_OK : S_FALSE; }

HRESULT Stage::Pick(const std::wstring& callback) {
  const cad_host::PickResult picked = m_host->Pick(*m_addIn, callback);
  if (!picked.enabled) return OLE_E_NOTRUNNING;
  return picked.result == DISP_E_EXCEPTION ? picked.code : picked.result;
}

HRESULT Stage::Call(const std::wstring& command) {
  std::wstring name = command;
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  const HRESULT found = Object()->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id);
  if (FAILED(found)) return found;
  DISPPARAMS none{};
  EXCEPINFO exception{};
  const HRESULT result =
      Object()->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, &exception, nullptr);
  for (BSTR text : {exception.bstrSource, exception.bstrDescription}) SysFreeString(text);
  return result == DISP_E_EXCEPTION ? exception.scode : result;
}

HRESULT Stage::AskWhatIsEnabled() {
  for (const auto& group : m_host->Groups()) {
    for (const auto& item : group->items) m_host->IsEnabled(*m_addIn, item.callback);
  }
  return S_OK;
}
