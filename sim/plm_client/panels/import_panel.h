/// @file QD_PLMImportCurrent and QD_PLMCreateChangeItems.
#pragma once

#include "panels/panel.h"

namespace plm_panels {

/// The host's document is taken into the vault; as a change if the command says so.
class ImportPanel : public Panel {
 public:
  enum class Kind { kImport, kChange };

  /// @param file the document's path; empty if the host has none.
  ImportPanel(PanelContext context, Kind kind, std::filesystem::path file);

  unsigned Title() const override;
  std::vector<Field> Fields() const override;
  plm_vault::Properties Details() const override;
  std::vector<Action> Actions() const override;
  std::wstring Preview(const std::wstring& action) const override;

 protected:
  void OnField(const Field& field, const std::wstring& value) override;
  std::optional<std::wstring> OnAction(const std::wstring& action) override;

 private:
  std::wstring WhatItBecomes() const;

  Kind m_kind;
  std::filesystem::path m_file;
  std::optional<plm_vault::Item> m_known;
  std::wstring m_name;
  std::wstring m_comment;
};

}  // namespace plm_panels
