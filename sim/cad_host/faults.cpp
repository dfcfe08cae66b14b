#include "cad_host/faults.h"

#include <algorithm>
#include <regex>
#include <utility>

#include "cad_host/host_error.h"

namespace cad_host {
namespace {

constexpr std::wstring_view kScope = L"::";

/// Whether a fault set for `name` applies to `method`: "OpenDoc6" applies to "ISldWorks::OpenDoc6".
bool AppliesTo(std::wstring_view name, std::wstring_view method) {
  if (name.empty() || name == method) return true;
  return name.find(kScope) == std::wstring_view::npos && method.ends_with(name) &&
         method.substr(0, method.size() - name.size()).ends_with(kScope);
}

std::wstring Ordinal(int nth) {
  return nth == Faults::kEvery ? L"every" : L"call " + std::to_wstring(nth) + L" of";
}

/// 3 for "3", kEvery for "every", 1 for an empty text.
int ParseNth(const std::wstring& text) {
  constexpr std::size_t kMostDigits = 9;  // always fit an int
  if (text.empty()) return 1;
  if (text == L"every") return Faults::kEvery;
  const int nth = text.size() > kMostDigits ? 0 : std::stoi(text);
  if (nth < 1) throw HostError(L"\"" + text + L"\" is not the number of a call; use 1 to 999999999");
  return nth;
}

}  // namespace

void Faults::Fail(std::wstring method, int nth, HRESULT result) {
  Set(std::move(method), nth, {.result = result});
}

void Faults::HideResult(std::wstring method, int nth) { Set(std::move(method), nth, {.runs = true}); }

void Faults::ChangeResults(std::wstring method, int nth, Change change) {
  Set(std::move(method), nth, {.runs = true, .change = std::move(change)});
}

void Faults::FailWithResults(std::wstring method, int nth, HRESULT result) {
  const auto unchanged = [](const std::vector<void*>&) {};
  Set(std::move(method), nth, {.runs = true, .result = result, .change = unchanged});
}

void Faults::Before(std::wstring method, int nth, std::function<void()> action) {
  Set(std::move(method), nth, {.runs = true, .keeps_results = true}, std::move(action));
}

void Faults::Set(std::wstring method, int nth, Effect effect, std::function<void()> action) {
  m_faults.push_back(
      {.method = std::move(method), .nth = nth, .effect = effect, .action = std::move(action)});
}

void Faults::Add(std::wstring_view text) {
  static const std::wregex fail(
      LR"(fail (?:(?:the )?(every|[0-9]+)(?:st|nd|rd|th)? )?(\S+) with (?:0x)?([0-9a-fA-F]{8}))");
  static const std::wregex answer(
      LR"((?:(?:the )?(every|[0-9]+)(?:st|nd|rd|th)? )?(\S+) (returns nothing|returns no \S.*|returns S_FALSE|hides its result))");
  const std::wstring line(text);
  std::wsmatch match;
  if (std::regex_match(line, match, fail)) {
    Fail(match[2], ParseNth(match[1]), static_cast<HRESULT>(std::stoul(match[3], nullptr, 16)));
  } else if (std::regex_match(line, match, answer)) {
    const std::wstring what = match[3];
    if (what.starts_with(L"hides")) return HideResult(match[2], ParseNth(match[1]));
    Fail(match[2], ParseNth(match[1]), what.ends_with(L"S_FALSE") ? S_FALSE : S_OK);
  } else {
    throw HostError(L"not a fault: \"" + line + L"\"; write \"fail the 3rd OpenDoc6 with 80004005\", " +
                    L"\"OpenDoc6 returns nothing\", \"... returns S_FALSE\" or \"... hides its result\"");
  }
}

std::vector<std::wstring> Faults::Unused() const {
  std::vector<std::wstring> lines;
  for (const Fault& fault : m_faults) {
    if (fault.used) continue;
    lines.push_back(L"a fault never happened: " + Ordinal(fault.nth) + L" " +
                    (fault.method.empty() ? L"any method" : fault.method));
  }
  return lines;
}

std::optional<Faults::Effect> Faults::Take(std::wstring_view method) {
  std::optional<Effect> due;
  std::vector<std::function<void()>> actions;
  for (Fault& fault : m_faults) {
    if (!AppliesTo(fault.method, method)) continue;
    ++fault.seen;
    if (fault.nth != kEvery && fault.nth != fault.seen) continue;
    fault.used = true;
    if (fault.action) actions.push_back(fault.action);
    if (!fault.effect.keeps_results) due = fault.effect;
  }
  // An action may add faults, so it runs after the loop over the list.
  for (const auto& action : actions) action();
  return due;
}

}  // namespace cad_host
