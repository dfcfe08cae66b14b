/// @file A short form of the journal for people.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "cad_host/journal.h"

namespace cad_host {

/// The journal in a short form, in the order of Journal::Text.
struct FoldedJournal {
  std::wstring text;         ///< indented lines
  std::size_t left_out = 0;  ///< entries that have no line of their own
};

/// Folds the entries from `from` on. Calls that only ask for something, enable methods and events are left
/// out, except those that fail. Calls of one method with the same result that another call contains become
/// one line if there are at least three, such as "ICommandGroup::AddCommandItem 14 times".
/// @param enable_methods of all items.
FoldedJournal FoldJournal(const std::vector<JournalEntry>& entries, std::size_t from,
                          const std::set<std::wstring>& enable_methods);

}  // namespace cad_host
