#include "covering_fixture.h"

#include <algorithm>

#include "folder_tree.h"

CoveringFixture::CoveringFixture() {
  m_folder.MakeFolder(L"prj");
  m_folder.MakeFolder(L"dl");
}

std::wstring CoveringFixture::Put(const std::wstring& name, const std::wstring& label) {
  m_folder.MakeFolder(name.substr(0, name.find_last_of(L'\\')));
  cad_host::ModelFile model;
  model.revision = m_revisions.try_emplace(label, static_cast<long>(m_revisions.size()) + 10).first->second;
  const std::wstring path = MakeModel(name, model);
  m_labels[m_folder.Read(name)] = label;
  return path;
}

void CoveringFixture::Assemble(const std::wstring& name) {
  ConnectAndLogIn();
  m_assembly = m_host->Open(MakeModel(L"Top.sldasm"));
  m_component = AddComponent(name);
  m_assembly->selection.push_back({.component = m_component, .point = {}});
}

std::shared_ptr<cad_host::Component> CoveringFixture::AddComponent(const std::wstring& name) {
  return m_host->AddComponent(*m_assembly, At(name));
}

cad_host::PickResult CoveringFixture::Cover(const Texts& paths) {
  Answer("QD_PLMDataSelector", FilesAnswer({{"ReplaceFileByCovering", paths}}));
  m_host->GetJournal().Clear();
  return Pick(L"OpenDataSelector");
}

void CoveringFixture::CoverExpectingBox(const std::wstring& path, const std::wstring& box) {
  const std::size_t boxes = m_boxes->Boxes().size();
  const std::size_t lines = CoverLines();
  m_boxes->Expect(IDOK);
  m_boxes->WhileUp([this, lines] { EXPECT_EQ(CoverLines(), lines) << "logged before the message"; });
  EXPECT_EQ(Cover({path}).result, S_OK);
  m_boxes->WhileUp([] {});
  ASSERT_EQ(m_boxes->Boxes().size(), boxes + 1);
  EXPECT_EQ(m_boxes->Boxes().back().text, box);
  EXPECT_EQ(m_boxes->Boxes().back().caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes().back().buttons, std::vector<int>{IDOK});
}

std::size_t CoveringFixture::CoverLines() const {
  const Texts lines = AddInLog();
  return static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), [](const std::wstring& line) {
    return line.find(L"ReplaceCurrentFileByCovering") != std::wstring::npos;
  }));
}

Texts CoveringFixture::Files() const {
  Texts files;
  for (const wchar_t* folder : {L"dl", L"prj"}) {
    for (const std::wstring& path : ListTree(m_folder, folder)) {
      files.push_back(path.ends_with(L'\\') ? path : path + L" = " + LabelOf(path));
    }
  }
  return files;
}

std::wstring CoveringFixture::LabelOf(const std::wstring& path) const {
  const auto label = m_labels.find(m_folder.Read(path));
  return label == m_labels.end() ? L"?" : label->second;
}
