#include "folded_journal.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "cad_host/host_error.h"

namespace cad_host {
namespace {

using Kind = JournalEntry::Kind;

constexpr std::wstring_view kIndent = L"  ";
constexpr std::size_t kFewestToFold = 3;
constexpr std::array<std::wstring_view, 8> kMinorPrefixes = {
    L"get_", L"Get", L"IGet", L"Is", L"Find", L"QueryInterface", L"RevisionNumber", L"put_"};

/// Whether the call only asks for something or sets one property of an object, judged by its name.
bool IsMinor(const JournalEntry& entry) {
  const std::size_t end = entry.method.find(L"::");
  if (end == std::wstring::npos) return false;
  const std::wstring_view name = std::wstring_view(entry.method).substr(end + 2);
  return std::any_of(kMinorPrefixes.begin(), kMinorPrefixes.end(),
                     [&](std::wstring_view prefix) { return name.starts_with(prefix); });
}

class Folder {
 public:
  Folder(const std::vector<JournalEntry>& entries, const std::set<std::wstring>& enable_methods)
      : m_entries(entries), m_enableMethods(enable_methods) {}

  /// Writes the entries from `from` on that no other of them contains, with what they contain.
  FoldedJournal Fold(std::size_t from) {
    std::size_t shown = 0;
    for (std::size_t place = from; place < m_entries.size(); place = End(place)) {
      shown += WriteEntry(place);
    }
    m_folded.left_out = m_entries.size() - from - shown;
    return m_folded;
  }

 private:
  using Key = std::pair<std::wstring, std::wstring>;  // method and result

  /// The first entry behind those that the entry contains.
  std::size_t End(std::size_t place) const {
    std::size_t end = place + 1;
    while (end < m_entries.size() && m_entries[end].depth > m_entries[place].depth) ++end;
    return end;
  }

  bool IsShown(const JournalEntry& entry) const {
    if (entry.kind == Kind::kNote || entry.fault || FAILED(entry.result)) return true;
    if (entry.kind == Kind::kEvent) return false;
    if (entry.kind == Kind::kCallee) return !m_enableMethods.contains(entry.method);
    return !IsMinor(entry);
  }

  bool ContainsShown(std::size_t place) const {
    return std::any_of(m_entries.begin() + static_cast<std::ptrdiff_t>(place) + 1,
                       m_entries.begin() + static_cast<std::ptrdiff_t>(End(place)),
                       [&](const JournalEntry& entry) { return IsShown(entry); });
  }

  bool CanFold(std::size_t place) const {
    const JournalEntry& entry = m_entries[place];
    return entry.kind == Kind::kCall && IsShown(entry) && !ContainsShown(place);
  }

  static Key KeyOf(const JournalEntry& entry) {
    return {entry.method, ResultText(entry.result) + (entry.fault ? L" [fault]" : L"")};
  }

  void WriteLine(int depth, const std::wstring& text) {
    for (; depth > 0; --depth) m_folded.text += kIndent;
    m_folded.text += text + L"\n";
  }

  /// @return how many lines were written.
  std::size_t WriteEntry(std::size_t place) {
    std::size_t shown = 0;
    if (IsShown(m_entries[place]) || ContainsShown(place)) {
      WriteLine(m_entries[place].depth, m_entries[place].Text());
      ++shown;
    }
    return shown + WriteContent(place);
  }

  /// Writes what the entry contains. @return how many lines were written.
  std::size_t WriteContent(std::size_t parent) {
    std::map<Key, std::size_t> counts;
    for (std::size_t place = parent + 1; place < End(parent); place = End(place)) {
      if (CanFold(place)) ++counts[KeyOf(m_entries[place])];
    }
    std::size_t shown = 0;
    for (std::size_t place = parent + 1; place < End(parent); place = End(place)) {
      const auto count = counts.find(KeyOf(m_entries[place]));
      if (!CanFold(place) || count->second < kFewestToFold) {
        const bool written = CanFold(place) && count->second == 0;
        if (!written) shown += WriteEntry(place);
        continue;
      }
      const auto& [method, result] = count->first;
      WriteLine(m_entries[place].depth, method + L" " + std::to_wstring(count->second) + L" times" +
                                            (result == L"S_OK" ? L"" : L" = " + result));
      ++shown;
      count->second = 0;
    }
    return shown;
  }

  const std::vector<JournalEntry>& m_entries;
  const std::set<std::wstring>& m_enableMethods;
  FoldedJournal m_folded;
};

}  // namespace

FoldedJournal FoldJournal(const std::vector<JournalEntry>& entries, std::size_t from,
                          const std::set<std::wstring>& enable_methods) {
  return Folder(entries, enable_methods).Fold(from);
}

}  // namespace cad_host
