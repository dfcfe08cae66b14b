/// @file Panels on a vault of their own.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "panels/make_panel.h"
#include "temp_folder.h"
#include "vault/vault.h"

/// Tests of panels: a vault with the users kim and wang. Texts for people are the numbers of the texts.
class PanelTest : public testing::Test {
 protected:
  PanelTest();

  /// The panel for a command with a request; kim is proposed as user.
  std::unique_ptr<plm_panels::Panel> Make(const std::string& command, const std::string& request = "");

  /// Takes a file with this name into the vault.
  plm_vault::Item Import(const std::wstring& name, const std::string& bytes = "content");

  /// Selects the rows whose first cell is one of `texts`.
  static void SelectRows(plm_panels::Panel& panel, const std::vector<std::wstring>& texts);

  /// The answer of an action, as compact JSON; "stays" if the panel stays open.
  static std::string AnswerOf(plm_panels::Panel& panel, const std::wstring& action);

  /// `json`, UTF-16 with indentation, as compact JSON in UTF-8.
  static std::string Compact(const std::wstring& json);

  /// The message of the VaultError that the action throws.
  static std::wstring FailureOf(plm_panels::Panel& panel, const std::wstring& action);

  /// The path of a file in the vault's folder as it stands in JSON.
  std::string JsonPath(const std::wstring& name) const;

  TempFolder m_folder;
  plm_vault::Vault m_vault = plm_vault::Vault::Create(m_folder.Path(L"vault"));
  plm_panels::Session m_session;
  std::map<std::wstring, plm_vault::Properties> m_properties;  // of files, by their names
};
