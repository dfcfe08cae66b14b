/// @file Which entries of the journal are shown.
#pragma once

#include <set>
#include <string>

#include "cad_host/journal.h"

namespace cad_host {

struct JournalFilter {
  /// In the order of the texts from IDS_KIND_FIRST on.
  enum class Kind { kMain, kAll, kAddIn, kHost, kEvents, kNotes, kFailures };
  static constexpr int kKindCount = 7;

  Kind kind = Kind::kMain;
  std::wstring text;                      ///< that the entry contains, in any case; empty: no matter
  std::set<std::wstring> enable_methods;  ///< left out by kMain

  /// Whether the entry is shown.
  bool Accepts(const JournalEntry& entry) const;
};

/// Whether the entry is a failure, which is shown in its own colour.
bool IsFailure(const JournalEntry& entry);

}  // namespace cad_host
