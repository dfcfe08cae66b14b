#include "journal_filter.h"

#include "CStringHelper.h"

namespace cad_host {
namespace {

using Entry = JournalEntry::Kind;

bool HasKind(const JournalEntry& entry, const JournalFilter& filter) {
  switch (filter.kind) {
    case JournalFilter::Kind::kMain:
      return entry.kind != Entry::kCallee || IsFailure(entry) ||
             !filter.enable_methods.contains(entry.method);
    case JournalFilter::Kind::kAll:
      return true;
    case JournalFilter::Kind::kAddIn:
      return entry.kind == Entry::kCall;
    case JournalFilter::Kind::kHost:
      return entry.kind == Entry::kCallee;
    case JournalFilter::Kind::kEvents:
      return entry.kind == Entry::kEvent;
    case JournalFilter::Kind::kNotes:
      return entry.kind == Entry::kNote;
    case JournalFilter::Kind::kFailures:
      return IsFailure(entry);
  }
  return true;
}

}  // namespace

bool IsFailure(const JournalEntry& entry) { return entry.fault || FAILED(entry.result); }

bool JournalFilter::Accepts(const JournalEntry& entry) const {
  if (!HasKind(entry, *this)) return false;
  return text.empty() ||
         CStringHelper::ToLower(entry.Text()).find(CStringHelper::ToLower(text)) != std::wstring::npos;
}

}  // namespace cad_host
