// Members that are unknown but resemble a known one. Only the diagnosis looks for them.
#include "CZALException.h"
#include "configuration/client_configuration.h"
#include "configuration/view_faults.h"
#include "similar_name.h"
#include "view_place.h"

namespace {

constexpr std::wstring_view kViewKeys[] = {L"name", L"Menu", L"$schema"};
constexpr std::wstring_view kItemKeys[] = {L"name",         L"ToolTip",       L"Hint", L"CallbackFunction",
                                           L"EnableMethod", L"ImageListIndex"};

}  // namespace

std::vector<std::wstring> FindViewSlips(const CJsonObject& view) {
  std::vector<std::wstring> slips;
  AddSimilarNames(slips, {}, view, kViewKeys);
  try {
    const std::vector<CJsonObject::Pointer> items = view.GetObjectArray(L"Menu");
    for (std::size_t index = 0; index < items.size(); ++index) {
      AddSimilarNames(slips, PlaceOf(index, *items[index]), *items[index], kItemKeys);
    }
  } catch (const CZALException&) {  // a fault, and no slip
  }
  return slips;
}

std::vector<std::wstring> FindClientSlips(const CJsonObject& file) {
  constexpr std::wstring_view kKnown[] = {L"pipe", L"client", L"startTimeoutMs", L"$schema"};
  std::vector<std::wstring> slips;
  AddSimilarNames(slips, {}, file, kKnown);
  return slips;
}
