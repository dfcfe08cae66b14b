#include "cad_host/journal.h"

#include <algorithm>
#include <utility>

#include "cad_host/host_error.h"

namespace cad_host {
namespace {

constexpr std::wstring_view kIndent = L"  ";

std::vector<JournalEntry> Select(const std::vector<JournalEntry>& entries, auto&& wanted) {
  std::vector<JournalEntry> selected;
  std::copy_if(entries.begin(), entries.end(), std::back_inserter(selected), wanted);
  return selected;
}

}  // namespace

std::wstring JournalEntry::Text() const {
  if (kind == Kind::kNote) return L"note: " + method;
  if (kind == Kind::kEvent) return L"event " + method + L"(" + arguments + L")";
  std::wstring text = kind == Kind::kCallee ? L"-> " : L"";
  text += method;
  if (!method.ends_with(L")")) text += L"(" + arguments + L")";  // the name of a query contains the interface
  text += L" = " + ResultText(result);
  if (!results.empty()) text += L", " + results;
  if (fault) text += L" [fault]";
  return text;
}

std::wstring JournalEntry::Interface() const {
  const std::size_t end = method.find(L"::");
  return end == std::wstring::npos ? L"" : method.substr(0, end);
}

std::vector<JournalEntry> Journal::Calls(std::wstring_view method) const {
  return Select(m_entries, [&](const JournalEntry& entry) {
    return entry.kind == JournalEntry::Kind::kCall && (method.empty() || entry.method == method);
  });
}

std::vector<JournalEntry> Journal::Of(std::wstring_view method) const {
  return Select(m_entries, [&](const JournalEntry& entry) { return entry.method == method; });
}

bool Journal::Contains(std::wstring_view text, std::size_t from) const {
  for (std::size_t place = from; place < m_entries.size(); ++place) {
    if (m_entries[place].Text().find(text) != std::wstring::npos) return true;
  }
  return false;
}

std::wstring Journal::Text(std::size_t from) const {
  std::wstring text;
  for (std::size_t place = from; place < m_entries.size(); ++place) {
    for (int depth = 0; depth < m_entries[place].depth; ++depth) text += kIndent;
    text += m_entries[place].Text() + L"\n";
  }
  return text;
}

void Journal::Note(std::wstring text) {
  JournalEntry entry;
  entry.depth = m_depth;
  entry.method = std::move(text);
  m_entries.push_back(std::move(entry));
}

std::size_t Journal::Begin(JournalEntry::Kind kind, std::wstring method, std::wstring arguments) {
  JournalEntry entry;
  entry.kind = kind;
  entry.depth = m_depth++;
  entry.method = std::move(method);
  entry.arguments = std::move(arguments);
  m_entries.push_back(std::move(entry));
  return m_entries.size() - 1;
}

void Journal::End(std::size_t entry, HRESULT result, std::wstring results, bool fault) {
  --m_depth;
  if (entry >= m_entries.size()) return;  // Clear was called during the call
  m_entries[entry].result = result;
  m_entries[entry].results = std::move(results);
  m_entries[entry].fault = fault;
}

}  // namespace cad_host
