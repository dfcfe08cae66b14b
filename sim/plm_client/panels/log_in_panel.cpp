#include "log_in_panel.h"

#include <algorithm>

#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {
namespace {

constexpr int kLogOutDelay = 4000;

}  // namespace

LogInPanel::LogInPanel(PanelContext context) : Panel(std::move(context)), m_user(Context().user) {}

unsigned LogInPanel::Title() const { return IDS_COMMAND_LOG_IN; }

std::vector<Field> LogInPanel::Fields() const {
  return {{L"user", IDS_LABEL_USER, FieldKind::kChoice, m_user, UserChoices(Vault())}};
}

std::vector<Action> LogInPanel::Actions() const { return {{L"log-in", IDS_ACTION_LOG_IN, !m_user.empty()}}; }

std::wstring LogInPanel::Preview(const std::wstring&) const { return Answer(L"..."); }

std::optional<std::wstring> LogInPanel::OnAction(const std::wstring&) {
  const std::wstring token = Vault().LogIn(m_user);
  Context().session.user = m_user;
  return Answer(token);
}

std::wstring LogInPanel::Answer(const std::wstring& token) const {
  const std::vector<plm_vault::User> users = Vault().Users();
  const auto user = std::ranges::find(users, m_user, &plm_vault::User::name);
  return AnswerJson()
      .Flag("__InvokeResult__", true)
      .Text("user", m_user)
      .Text("name", user == users.end() ? m_user : user->full_name)
      .Text("token", token)
      .Done();
}

unsigned LogOutPanel::Title() const { return IDS_COMMAND_LOG_OUT; }

std::vector<Field> LogOutPanel::Fields() const {
  return {{L"user", IDS_LABEL_USER, FieldKind::kShown, Context().user}};
}

std::vector<Column> LogOutPanel::Columns() const {
  return {
      {IDS_LABEL_CHECKED_OUT_BY, 90}, {IDS_LABEL_NUMBER, 80}, {IDS_LABEL_NAME, 220}, {IDS_LABEL_SINCE, 130}};
}

std::size_t LogOutPanel::RowCount() const { return m_items.size(); }

std::wstring LogOutPanel::Cell(std::size_t row, std::size_t column) const {
  const plm_vault::Item& item = m_items.at(row);
  const std::wstring cells[] = {item.checked_out_by, item.number, item.name, item.checked_out_at};
  return cells[column];
}

std::vector<Action> LogOutPanel::Actions() const {
  return {{L"log-out", IDS_ACTION_LOG_OUT}, {L"stay", IDS_ACTION_STAY}};
}

std::optional<AutomaticAction> LogOutPanel::Automatic() const {
  return AutomaticAction{L"log-out", kLogOutDelay};
}

std::wstring LogOutPanel::Preview(const std::wstring& action) const {
  return AnswerJson().Flag("__InvokeResult__", action == L"log-out").Done();
}

std::optional<std::wstring> LogOutPanel::OnAction(const std::wstring& action) {
  if (action == L"log-out") {
    Vault().LogOut(Context().user);
    Context().session.user.clear();
  }
  return Preview(action);
}

}  // namespace plm_panels
