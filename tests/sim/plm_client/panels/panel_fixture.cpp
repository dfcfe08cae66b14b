#include "panel_fixture.h"

#include <algorithm>

#include "CJsonObject.h"
#include "CStringHelper.h"

PanelTest::PanelTest() {
  m_vault.AddUser({L"kim", L"Kim Lindqvist"});
  m_vault.AddUser({L"wang", L"\u738b\u6653\u660e"});
}

std::unique_ptr<plm_panels::Panel> PanelTest::Make(const std::string& command, const std::string& request) {
  return plm_panels::MakePanel(
      command, request,
      {.vault = m_vault,
       .session = m_session,
       .text = [](unsigned id) { return std::to_wstring(id); },
       .read_properties =
           [this](const std::filesystem::path& file) { return m_properties[file.filename().wstring()]; },
       .user = L"kim"});
}

plm_vault::Item PanelTest::Import(const std::wstring& name, const std::string& bytes) {
  return m_vault.Import(m_folder.Write(L"elsewhere\\" + name, bytes), L"kim", {}, {}).item;
}

void PanelTest::SelectRows(plm_panels::Panel& panel, const std::vector<std::wstring>& texts) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < panel.RowCount(); ++row) {
    if (std::ranges::count(texts, panel.Cell(row, 0)) > 0) rows.push_back(row);
  }
  ASSERT_EQ(rows.size(), texts.size()) << "not every row is there";
  panel.Select(rows);
}

std::string PanelTest::AnswerOf(plm_panels::Panel& panel, const std::wstring& action) {
  const std::optional<std::wstring> answer = panel.Perform(action);
  return answer ? Compact(*answer) : "stays";
}

std::string PanelTest::Compact(const std::wstring& json) {
  CJsonObject object;
  if (!object.CreateFrom(json)) return "no JSON: " + CStringHelper::UnicodeToUTF8(json);
  return CStringHelper::UnicodeToUTF8(object.ToJson());
}

std::wstring PanelTest::FailureOf(plm_panels::Panel& panel, const std::wstring& action) {
  try {
    panel.Perform(action);
  } catch (const plm_vault::VaultError& failure) {
    return failure.Message();
  }
  return L"no failure";
}

std::string PanelTest::JsonPath(const std::wstring& name) const {
  std::string path;
  for (const char character : CStringHelper::UnicodeToUTF8(m_folder.Path(L"vault\\" + name))) {
    path += character == '\\' ? "\\\\" : std::string(1, character);
  }
  return path;
}
