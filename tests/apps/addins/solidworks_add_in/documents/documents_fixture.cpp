#include "documents_fixture.h"

DocumentsFixture::DocumentsFixture() {
  m_boxes->WhileUp([this] { m_linesAtBoxes.push_back(AddInLog().size()); });
}

cad_host::PickResult DocumentsFixture::PickFiles(const std::vector<NamedFiles>& members) {
  Answer("QD_PLMDataSelector", FilesAnswer(members));
  return Pick(L"OpenDataSelector");
}

std::shared_ptr<cad_host::Document> DocumentsFixture::OpenAssembly(const std::wstring& name) {
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

Texts DocumentsFixture::BoxTexts() const {
  Texts texts;
  for (const auto& box : m_boxes->Boxes()) texts.push_back(box.text);
  return texts;
}

Texts DocumentsFixture::OpenNames() const {
  Texts names;
  for (const auto& document : m_host->OpenDocuments()) names.push_back(document->title);
  return names;
}

Texts DocumentsFixture::ComponentNames(const cad_host::Document& assembly) {
  Texts names;
  for (const auto& component : assembly.components) {
    names.push_back(component->record.path.substr(component->record.path.find_last_of(L'\\') + 1));
  }
  return names;
}
