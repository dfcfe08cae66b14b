#include "documents_fixture.h"

std::wstring OpenFailed(const std::wstring& path) { return L"打开文件" + path + L"失败"; }

std::wstring FailureLine(int line, const std::wstring& function, const std::wstring& text) {
  return L"errormsg|ERROR|" + std::to_wstring(line) + L"|CSolidWorksAddIn::" + function + L"|" + text;
}

std::string JsonEscaped(const std::wstring& text) {
  std::string escaped;
  for (const char character : Utf8(text)) {
    if (character == '\\' || character == '"') escaped += '\\';
    escaped += character;
  }
  return escaped;
}

HRESULT RaisedCode(const std::function<void()>& call) {
  try {
    call();
  } catch (const _com_error& error) {
    return error.Error();
  }
  return S_OK;
}

DocumentsTest::DocumentsTest() {
  m_boxes->WhileUp([this] { m_linesAtBoxes.push_back(AddInLog().size()); });
}

std::string DocumentsTest::Selection(const std::vector<Chosen>& chosen) {
  std::string answer;
  for (const auto& [member, paths] : chosen) {
    std::string list;
    for (const std::wstring& path : paths) list += (list.empty() ? "\"" : ",\"") + JsonEscaped(path) + "\"";
    answer += (answer.empty() ? "\"" : ",\"") + std::string(member) + "\":[" + list + "]";
  }
  return "{" + answer + "}";
}

cad_host::PickResult DocumentsTest::PickFiles(const std::vector<Chosen>& chosen) {
  Answer("QD_PLMDataSelector", Selection(chosen));
  return Pick(L"OpenDataSelector");
}

std::shared_ptr<cad_host::Document> DocumentsTest::OpenAssembly(const std::wstring& name) {
  m_folder.MakeFolder(L"parts");
  const std::wstring bolt = MakeModel(L"parts\\bolt.sldprt");
  const std::wstring nut = MakeModel(L"parts\\nut.sldprt");
  cad_host::ModelFile model;
  model.components = {{L"bolt-1", bolt, {1, 0, 0}}, {L"nut-1", nut, {}}, {L"bolt-2", bolt, {2, 0, 0}}};
  model.mates = {{L"Concentric1", L"bolt-1", L"nut-1"}, {L"Concentric2", L"nut-1", L"bolt-2"}};
  const auto assembly = m_host->Open(MakeModel(name, model));
  assembly->selection = {{assembly->FindComponent(L"bolt-1"), kPicked}};
  return assembly;
}

DocumentsTest::Texts DocumentsTest::BoxTexts() const {
  Texts texts;
  for (const auto& box : m_boxes->Boxes()) texts.push_back(box.text);
  return texts;
}

DocumentsTest::Texts DocumentsTest::CalledMethods() const {
  Texts methods;
  for (const auto& call : m_host->GetJournal().Calls()) methods.push_back(call.method);
  return methods;
}

DocumentsTest::Texts DocumentsTest::OpenNames() const {
  Texts names;
  for (const auto& document : m_host->OpenDocuments()) names.push_back(document->title);
  return names;
}

DocumentsTest::Texts DocumentsTest::ComponentNames(const cad_host::Document& assembly) {
  Texts names;
  for (const auto& component : assembly.components) {
    names.push_back(component->record.path.substr(component->record.path.find_last_of(L'\\') + 1));
  }
  return names;
}
