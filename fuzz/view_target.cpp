#include <algorithm>
#include <optional>

#include "base/utf8.h"
#include "configuration/view_faults.h"
#include "promise.h"
#include "targets.h"
#include "view_writer.h"

namespace fuzz {
namespace {

constexpr std::size_t kItems = 16;
constexpr int kIcons = 14;

/// The number of mistakes in a view, each of which is one line; nothing if it has no menu.
std::optional<std::size_t> MistakesIn(std::string_view json) {
  const ViewRules rules{.maximum_items = kItems,
                        .icons = kIcons,
                        .is_command = [](const std::wstring& name) { return name == kCommand; },
                        .is_enable_method = [](const std::wstring& name) { return name == kEnableMethod; }};
  CJsonObject view;
  view.CreateFrom(utf8::Decode<wchar_t>(json));
  std::vector<CJsonObject::Pointer> items;
  try {
    items = view.GetObjectArray(L"Menu");
  } catch (const CZALException&) {
    return std::nullopt;
  }
  const std::vector<std::wstring> faults = FindViewFaults(view, items, rules);
  for (const std::wstring& fault : faults) {
    Require(!fault.empty(), "a fault has a text");
    Require(std::ranges::none_of(fault, [](wchar_t c) { return c < L' '; }), "a fault is one line");
  }
  return faults.size();
}

}  // namespace

void TryView(std::string_view bytes) {
  MistakesIn(bytes);
  const WrittenView view = WriteView(Choices(bytes), kItems, kIcons);
  Require(MistakesIn(view.json) == view.mistakes, "each mistake is found, and nothing else");
}

}  // namespace fuzz
