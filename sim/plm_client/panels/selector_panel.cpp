#include "selector_panel.h"

#include <algorithm>

#include "panels/text_ids.h"
#include "texts_of_values.h"

namespace plm_panels {

using plm_vault::Item;
using plm_vault::ItemKind;

namespace {

constexpr const wchar_t* kPartValue = L"part";
constexpr const wchar_t* kAssemblyValue = L"assembly";
constexpr const wchar_t* kDrawingValue = L"drawing";

std::wstring ValueOf(ItemKind kind) {
  switch (kind) {
    case ItemKind::kPart:
      return kPartValue;
    case ItemKind::kAssembly:
      return kAssemblyValue;
    case ItemKind::kDrawing:
      return kDrawingValue;
  }
  return {};
}

std::string MemberFor(const std::wstring& action) {
  if (action == L"insert") return "InsertFile";
  if (action == L"replace") return "ReplaceFile";
  if (action == L"cover") return "ReplaceFileByCovering";
  return "OpenFile";
}

}  // namespace

SelectorPanel::SelectorPanel(PanelContext context, unsigned title)
    : ItemListPanel(std::move(context)), m_title(title) {
  Find();
}

std::vector<Field> SelectorPanel::Fields() const {
  const TextSource& text = Context().text;
  return {{L"search", IDS_LABEL_SEARCH, FieldKind::kText, m_words},
          {L"kind",
           IDS_LABEL_KIND,
           FieldKind::kChoice,
           m_kind,
           {{L"", text(IDS_ALL_KINDS)},
            {kPartValue, text(IDS_KIND_PART)},
            {kAssemblyValue, text(IDS_KIND_ASSEMBLY)},
            {kDrawingValue, text(IDS_KIND_DRAWING)}}},
          {L"revision", IDS_LABEL_REVISION, FieldKind::kChoice, m_revision, RevisionChoices()}};
}

std::vector<Choice> SelectorPanel::RevisionChoices() const {
  std::vector<Choice> choices{{L"", Text(IDS_LATEST_REVISION)}};
  if (Selection().size() == 1) {
    for (int revision = Selected().front().revision; revision > 0; --revision) {
      const std::wstring label = plm_vault::RevisionLabel(revision);
      choices.push_back({label, label});
    }
  }
  return choices;
}

std::vector<Action> SelectorPanel::Actions() const {
  const std::vector<Item> items = Selected();
  const bool has_drawing = std::ranges::count(items, ItemKind::kDrawing, &Item::kind) > 0;
  const bool is_one_model = items.size() == 1 && !has_drawing;
  return {{L"open", IDS_ACTION_OPEN, !items.empty()},
          {L"insert", IDS_ACTION_INSERT, !items.empty() && !has_drawing},
          {L"replace", IDS_ACTION_REPLACE, is_one_model},
          {L"cover", IDS_ACTION_COVER, is_one_model},
          {L"check-out", IDS_ACTION_CHECK_OUT, !items.empty()},
          {L"undo-check-out", IDS_ACTION_UNDO_CHECK_OUT, !items.empty()}};
}

std::wstring SelectorPanel::Preview(const std::wstring& action) const {
  std::vector<std::filesystem::path> paths;
  for (const Item& item : Selected()) {
    paths.push_back(action == L"cover" ? Vault().CoveringFile(item, RevisionOf(item))
                                       : Vault().WorkFile(item));
  }
  return PathsAnswer(MemberFor(action), paths);
}

std::optional<std::wstring> SelectorPanel::OnAction(const std::wstring& action) {
  if (action == L"check-out") {
    CheckOutSelected();
    return std::nullopt;
  }
  if (action == L"undo-check-out") {
    UndoCheckOutOfSelected();
    return std::nullopt;
  }
  for (const Item& item : Selected()) {
    if (action == L"cover") {
      Vault().HandOutForCovering(item, RevisionOf(item));
    } else {
      Vault().HandOut(item, RevisionOf(item));
    }
  }
  return Preview(action);
}

void SelectorPanel::CheckOutSelected() {
  for (const Item& item : Selected()) Vault().CheckOut(item.number, Context().user);
  Say(Filled(Text(IDS_SAID_CHECKED_OUT), Joined(SelectedNumbers())));
  Find();
}

void SelectorPanel::UndoCheckOutOfSelected() {
  for (const Item& item : Selected()) Vault().UndoCheckOut(item.number, Context().user);
  Say(Filled(Text(IDS_SAID_CHECK_OUT_UNDONE), Joined(SelectedNumbers())));
  Find();
}

void SelectorPanel::OnField(const Field& field, const std::wstring& value) {
  if (field.name == L"revision") {
    m_revision = value;
    return;
  }
  (field.name == L"kind" ? m_kind : m_words) = value;
  Find();
}

/// The revision that was chosen may not be one of what is selected now.
void SelectorPanel::OnSelect() {
  if (std::ranges::count(RevisionChoices(), m_revision, &Choice::value) == 0) m_revision.clear();
}

void SelectorPanel::Find() {
  std::vector<Item> items = Vault().Search(m_words);
  std::erase_if(items, [&](const Item& item) { return !m_kind.empty() && ValueOf(item.kind) != m_kind; });
  Show(std::move(items));
}

int SelectorPanel::RevisionOf(const Item& item) const {
  return m_revision.empty() ? item.revision : plm_vault::RevisionOfLabel(m_revision);
}

}  // namespace plm_panels
