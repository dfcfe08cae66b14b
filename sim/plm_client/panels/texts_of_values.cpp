#include "texts_of_values.h"

#include "panels/text_ids.h"

namespace plm_panels {

using plm_vault::ItemKind;
using plm_vault::ItemState;
using plm_vault::TaskState;

std::wstring TextOf(const TextSource& text, ItemKind kind) {
  switch (kind) {
    case ItemKind::kPart:
      return text(IDS_KIND_PART);
    case ItemKind::kAssembly:
      return text(IDS_KIND_ASSEMBLY);
    case ItemKind::kDrawing:
      return text(IDS_KIND_DRAWING);
  }
  return {};
}

std::wstring TextOf(const TextSource& text, ItemState state) {
  switch (state) {
    case ItemState::kInWork:
      return text(IDS_STATE_IN_WORK);
    case ItemState::kInReview:
      return text(IDS_STATE_IN_REVIEW);
    case ItemState::kReleased:
      return text(IDS_STATE_RELEASED);
  }
  return {};
}

std::wstring TextOf(const TextSource& text, TaskState state) {
  return text(state == TaskState::kOpen ? IDS_TASK_OPEN : IDS_TASK_DONE);
}

std::vector<Choice> WorkflowChoices(const TextSource& text) {
  return {{L"release", text(IDS_WORKFLOW_RELEASE)},
          {L"review", text(IDS_WORKFLOW_REVIEW)},
          {L"change", text(IDS_WORKFLOW_CHANGE)}};
}

std::vector<Choice> UserChoices(const plm_vault::Vault& vault) {
  std::vector<Choice> choices;
  for (const plm_vault::User& user : vault.Users()) {
    choices.push_back({user.name, user.name + L" \u2013 " + user.full_name});
  }
  return choices;
}

std::wstring Filled(std::wstring pattern, std::wstring_view value) {
  constexpr std::wstring_view kPlaceholder = L"%1";
  const std::size_t place = pattern.find(kPlaceholder);
  return place == std::wstring::npos ? pattern : pattern.replace(place, kPlaceholder.size(), value);
}

std::wstring Joined(const std::vector<std::wstring>& texts) {
  std::wstring joined;
  for (const std::wstring& text : texts) joined += (joined.empty() ? L"" : L", ") + text;
  return joined;
}

}  // namespace plm_panels
