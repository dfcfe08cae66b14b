#include "code_panel.h"

#include "answer_json.h"
#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

unsigned CodePanel::Title() const { return IDS_COMMAND_GET_CODE; }

std::vector<Field> CodePanel::Fields() const {
  std::vector<Choice> series;
  for (const std::wstring& prefix : Vault().Series()) {
    series.push_back({prefix, prefix + L"  (" + Vault().PeekNumber(prefix) + L")"});
  }
  return {{L"series", IDS_LABEL_SERIES, FieldKind::kChoice, m_series, series},
          {L"code", IDS_LABEL_CODE, FieldKind::kShown, Joined(m_codes)}};
}

/// The default is what comes next: first a code, then the end.
std::vector<Action> CodePanel::Actions() const {
  const Action take{L"take", IDS_ACTION_TAKE};
  const Action done{L"done", IDS_ACTION_DONE, !m_codes.empty()};
  return m_codes.empty() ? std::vector{take, done} : std::vector{done, take};
}

std::wstring CodePanel::Preview(const std::wstring&) const {
  return AnswerJson().Texts("codes", m_codes).Done();
}

std::optional<std::wstring> CodePanel::OnAction(const std::wstring& action) {
  if (action == L"done") return Preview(action);
  m_codes.push_back(Vault().NextNumber(m_series));
  Say(Filled(Text(IDS_SAID_CODE_TAKEN), m_codes.back()));
  return std::nullopt;
}

}  // namespace plm_panels
