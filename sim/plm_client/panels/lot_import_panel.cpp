#include "lot_import_panel.h"

#include <algorithm>
#include <system_error>

#include "CStringHelper.h"
#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {
namespace {

bool IsModel(const std::filesystem::path& file) {
  constexpr std::wstring_view kExtensions[] = {L".sldprt", L".sldasm", L".slddrw"};
  return std::ranges::count(kExtensions, CStringHelper::ToLower(file.extension().wstring())) > 0;
}

}  // namespace

LotImportPanel::LotImportPanel(PanelContext context)
    : Panel(std::move(context)), m_folder(Vault().Folder() / L"work") {
  LookForFiles();
}

unsigned LotImportPanel::Title() const { return IDS_COMMAND_LOT_IMPORT; }

std::vector<Field> LotImportPanel::Fields() const {
  return {{L"folder", IDS_LABEL_FOLDER, FieldKind::kFolder, m_folder.wstring()},
          {L"comment", IDS_LABEL_COMMENT, FieldKind::kText, m_comment}};
}

std::vector<Column> LotImportPanel::Columns() const {
  return {{IDS_LABEL_FILE, 240}, {IDS_LABEL_BECOMES, 280}};
}

std::wstring LotImportPanel::Cell(std::size_t row, std::size_t column) const {
  std::wstring name = m_files.at(row).filename().wstring();
  if (column == 0) return name;
  const std::optional<plm_vault::Item> known = Vault().FindByFileName(name);
  if (!known) return Text(IDS_NEW_ITEM);
  return Filled(Text(IDS_NEXT_REVISION),
                known->number + L" " + plm_vault::RevisionLabel(known->revision + 1));
}

plm_vault::Properties LotImportPanel::Details() const {
  return Selection().size() == 1 ? PropertiesOf(m_files.at(Selection().front())) : plm_vault::Properties{};
}

std::vector<Action> LotImportPanel::Actions() const {
  return {{L"import", IDS_ACTION_IMPORT, !Selection().empty()}};
}

std::wstring LotImportPanel::Preview(const std::wstring&) const {
  return AnswerJson().Flag("__InvokeResult__", true).Done();
}

std::optional<std::wstring> LotImportPanel::OnAction(const std::wstring&) {
  std::vector<std::wstring> numbers;
  numbers.reserve(Selection().size());
  for (const std::size_t row : Selection()) {
    numbers.push_back(Vault().Import(m_files.at(row), Context().user, {}, m_comment).item.number);
  }
  return AnswerJson().Flag("__InvokeResult__", true).Texts("numbers", numbers).Done();
}

void LotImportPanel::OnField(const Field& field, const std::wstring& value) {
  if (field.name == L"comment") {
    m_comment = value;
    return;
  }
  m_folder = value;
  LookForFiles();
}

/// A folder that is not there has no files: its path may be half written.
void LotImportPanel::LookForFiles() {
  ClearSelection();
  m_files.clear();
  std::error_code failure;
  for (const auto& entry : std::filesystem::directory_iterator(m_folder, failure)) {
    if (IsModel(entry.path())) m_files.push_back(entry.path());
  }
  std::ranges::sort(m_files);
}

}  // namespace plm_panels
