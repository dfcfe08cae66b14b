/// @file QD_PLMLotimport.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// The person chooses files of a folder, which are taken into the vault.
class LotImportPanel : public Panel {
 public:
  explicit LotImportPanel(PanelContext context);

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  std::vector<Column> Columns() const override;
  std::size_t RowCount() const override { return m_files.size(); }
  std::wstring Cell(std::size_t row, std::size_t column) const override;
  plm_vault::Properties Details() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field& field, const std::wstring& value) override;
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  void LookForFiles();

  std::filesystem::path m_folder;
  std::wstring m_comment;
  std::vector<std::filesystem::path> m_files;
};

}  // namespace plm_panels
