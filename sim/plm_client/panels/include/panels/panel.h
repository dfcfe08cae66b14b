/// @file What a person sees of a command, and what can be answered, without a window around it.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vault/vault.h"

namespace plm_panels {

/// The text with a number of text_ids.h, in the person's language.
using TextSource = std::function<std::wstring(unsigned)>;

/// Reads the custom properties of a model file; throws plm_vault::VaultError naming the file.
using PropertyReader = std::function<plm_vault::Properties(const std::filesystem::path&)>;

/// Who is logged in; shared by the panels of all commands.
struct Session {
  std::wstring user{};  ///< empty: nobody has logged in yet
};

/// What every panel works with.
struct PanelContext {
  plm_vault::Vault& vault;
  Session& session;
  TextSource text;
  PropertyReader read_properties;
  std::wstring user{};  ///< for whom this command is done
};

enum class FieldKind {
  kText,    ///< can be written
  kChoice,  ///< one of its choices
  kFolder,  ///< the path of a folder
  kShown,   ///< can only be read
};

struct Choice {
  std::wstring value;
  std::wstring label;
};

/// A value beside its label, above the list.
struct Field {
  std::wstring name;  ///< for scripts: "user"
  unsigned label;
  FieldKind kind = FieldKind::kText;
  std::wstring value{};
  std::vector<Choice> choices{};
};

struct Column {
  unsigned label;
  int width;  ///< in pixels at 96 dots per inch
};

/// A button. The first of a panel is its default.
struct Action {
  std::wstring name;  ///< for scripts: "open"
  unsigned label;
  bool is_enabled = true;
};

/// An action that the panel does by itself unless the person is faster.
struct AutomaticAction {
  std::wstring name;
  int milliseconds;
};

/// One command of the host: fields, a list, details of what is selected in it, and actions. An action that
/// changes the vault does so when it is performed, not before. Everything may throw plm_vault::VaultError;
/// the panel stays usable.
class Panel {
 public:
  explicit Panel(PanelContext context) : m_context(std::move(context)) {}
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  virtual ~Panel() = default;

  /// For whom the command is done.
  const std::wstring& User() const { return m_context.user; }

  /// The command in the person's words, as the number of a text.
  virtual unsigned Title() const = 0;

  virtual std::vector<Field> Fields() const { return {}; }
  /// Gives the field another value. @throws VaultError if there is no such field, or it has no such choice.
  void SetField(std::wstring_view name, const std::wstring& value);

  virtual std::vector<Column> Columns() const { return {}; }
  virtual std::size_t RowCount() const { return 0; }
  virtual std::wstring Cell(std::size_t row, std::size_t column) const;
  virtual bool AllowsSeveralRows() const { return true; }

  /// The selected rows, in ascending order.
  const std::vector<std::size_t>& Selection() const { return m_selection; }
  /// Selects these rows and no others; rows that are not there are left out.
  void Select(std::vector<std::size_t> rows);

  /// Names with values about what is selected.
  virtual plm_vault::Properties Details() const { return {}; }

  virtual std::vector<Action> Actions() const = 0;
  virtual std::optional<AutomaticAction> Automatic() const { return std::nullopt; }

  /// The JSON text with which the action would answer now. Changes nothing.
  virtual std::wstring Preview(const std::wstring& action) const = 0;

  /// Does the action. @return the JSON text of the answer; nothing if the panel stays, with a Message.
  std::optional<std::wstring> Perform(const std::wstring& action);

  /// What the last action that did not answer has done.
  const std::wstring& Message() const { return m_message; }

 protected:
  plm_vault::Vault& Vault() const { return m_context.vault; }
  const PanelContext& Context() const { return m_context; }
  std::wstring Text(unsigned id) const { return m_context.text(id); }
  /// The properties of a file; a file that cannot be read has one that says why.
  plm_vault::Properties PropertiesOf(const std::filesystem::path& file) const;
  void Say(std::wstring message) { m_message = std::move(message); }
  void ClearSelection() { m_selection.clear(); }

  virtual void OnField(const Field& field, const std::wstring& value);
  virtual void OnSelect() {}
  /// Does the action `action`, which is enabled. This one only answers, with the preview.
  virtual std::optional<std::wstring> OnAction(const std::wstring& action) { return Preview(action); }

 private:
  PanelContext m_context;
  std::vector<std::size_t> m_selection;
  std::wstring m_message;
};

}  // namespace plm_panels
