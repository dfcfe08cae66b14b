#include <algorithm>

#include "base/utf8.h"
#include "configuration/view_faults.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {

void TryView(std::string_view bytes) {
  constexpr int kIcons = 14;
  const ViewRules rules{.maximum_items = 16,
                        .icons = kIcons,
                        .is_command = [](const std::wstring& name) { return name == L"Login"; },
                        .is_enable_method = [](const std::wstring& name) { return name == L"LoginEnable"; }};
  CJsonObject view;
  view.CreateFrom(utf8::Decode<wchar_t>(bytes));
  std::vector<CJsonObject::Pointer> items;
  try {
    items = view.GetObjectArray(L"Menu");
  } catch (const CZALException&) {
    return;  // without a menu nothing is built
  }
  for (const std::wstring& fault : FindViewFaults(view, items, rules)) {
    Require(!fault.empty(), "a fault has a text");
    Require(std::ranges::none_of(fault, [](wchar_t c) { return c < L' '; }), "a fault is one line");
  }
}

}  // namespace fuzz
