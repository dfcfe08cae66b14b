#include "scene.h"

#include <stdexcept>
#include <utility>

#include "CStringHelper.h"
#include "file_size.h"
#include "plm_client/json_text.h"

namespace {

constexpr const wchar_t* kTitle = L"TAVO SolidWorks Integration";
constexpr const wchar_t* kLog = L"log\\SolidWorks.log";
constexpr const wchar_t* kConfiguration = L"config\\New TAVO SolidWorks AddOn\\PlmClient.json";
constexpr cad_host::Point kPicked = {0.25, -1.5, 3};

std::wstring PipeName() { return L"tavo-soak-" + std::to_wstring(GetCurrentProcessId()); }

}  // namespace

Scene::Scene()
    : m_home(L"TAVO_HOME", m_folder.Path()),
      m_tmp(L"TMP", m_folder.MakeFolder(L"tmp")),
      m_temp(L"TEMP", m_folder.Path(L"tmp")) {
  current = this;
  if (FAILED(m_dll.RegisterServer())) throw std::runtime_error("the DLL cannot be registered");
  m_imports = std::make_unique<ImportGate>(m_dll.Handle());
  m_blocks = std::make_unique<BlockLedger>(*m_imports, m_dll.Handle());
  m_imports->Redirect("MessageBoxW", &AnswerBox);
  m_folder.WriteText(kConfiguration, LR"({"pipe":")" + PipeName() + LR"("})");
  for (const wchar_t* folder : {L"models\\parts", L"models\\download"}) m_folder.MakeFolder(folder);
  m_client = std::make_unique<ClientProcess>(PipeName(), m_folder.MakeFolder(L"answers"),
                                             m_folder.Path(L"record.txt"));
  Answer("QD_PLMLogin", R"({"__InvokeResult__":true,"user":"王","id":7})");
  Answer("QD_PLMLogout", R"({"__InvokeResult__":true})");
  m_host = std::make_unique<cad_host::Host>();
  Connect();
}

Scene::~Scene() {
  if (m_addIn) Disconnect();
  m_host.reset();
  CoFreeUnusedLibrariesEx(0, 0);
  current = nullptr;
}

int Scene::AnswerBox(HWND, const wchar_t* text, const wchar_t* caption, UINT) {
  current->m_boxes.push_back(std::wstring(caption ? caption : L"") + L": " + text);
  return IDOK;
}

void Scene::Connect() { m_addIn = &m_host->Connect(kTitle); }

bool Scene::Disconnect() { return m_host->Disconnect(*std::exchange(m_addIn, nullptr)); }

HRESULT Scene::Pick(const std::wstring& callback) {
  const cad_host::PickResult picked = m_host->Pick(*m_addIn, callback);
  if (!picked.enabled) return OLE_E_NOTRUNNING;
  return picked.result == DISP_E_EXCEPTION ? picked.code : picked.result;
}

void Scene::LogIn() {
  if (!IsLoggedIn() && FAILED(Pick(L"PlmLogin"))) throw std::runtime_error("nobody can log in");
}

void Scene::LogOut() {
  if (IsLoggedIn() && FAILED(Pick(L"PlmLogOut"))) throw std::runtime_error("nobody can log out");
}

void Scene::CloseDocuments() {
  const auto open = m_host->OpenDocuments();
  for (const auto& document : open) m_host->Close(document);
}

std::shared_ptr<cad_host::Document> Scene::OpenAssembly(const std::wstring& selected) {
  CloseDocuments();
  auto assembly = m_host->Open(ModelPath(L"top.sldasm"));
  assembly->selection = {{assembly->FindComponent(selected), kPicked}};
  return assembly;
}

void Scene::WritePart(const std::wstring& name, long revision) {
  cad_host::ModelFile part;
  part.revision = revision;
  cad_host::WriteModelFile(ModelPath(name), part);
}

void Scene::RemoveFile(const std::wstring& name) { DeleteFileW(ModelPath(name).c_str()); }

long Scene::RevisionOf(const std::wstring& name) const {
  if (!m_folder.Exists(L"models\\" + name)) return 0;
  return cad_host::ReadModelFile(ModelPath(name)).revision;
}

void Scene::Answer(const std::string& command, const std::string& text) {
  std::string& answered = m_answers[command];
  if (answered == text) return;
  m_folder.Write(L"answers\\" + std::wstring(command.begin(), command.end()) + L".json", text);
  answered = text;
}

void Scene::AnswerWithFile(const std::string& member, const std::wstring& name) {
  const std::string path = CStringHelper::UnicodeToUTF8(ModelPath(name));
  for (const char* command :
       {"QD_PLMDataSelector", "QD_PLMQuery", "QD_PLMMyCheckOutList", "QD_PLMTaskManage"}) {
    Answer(command, "{\"" + member + "\":[" + plm_client::JsonString(path) + "]}");
  }
}

void Scene::Forget() {
  m_boxes.clear();
  m_host->GetJournal().Clear();
}

long long Scene::LogSize() const { return FileSize(m_folder.Path(kLog)); }

std::string Scene::LogFrom(long long size) const {
  return m_folder.Exists(kLog) ? m_folder.Read(kLog).substr(static_cast<std::size_t>(size)) : std::string();
}
