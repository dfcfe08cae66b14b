/// @file The record of all calls and events between the host and its add-ins.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

/// One line of the journal.
struct JournalEntry {
  enum class Kind {
    kCall,    ///< an add-in called the host
    kCallee,  ///< the host called an add-in
    kEvent,   ///< the host raised an event
    kNote,    ///< a remark of the host
  };

  Kind kind = Kind::kNote;
  int depth = 0;           ///< the number of entries that contain this one
  std::wstring method;     ///< such as "ISldWorks::OpenDoc6"; for a note, its text
  std::wstring arguments;  ///< the input arguments, such as `"C:\bolt.sldprt", 1, 1, ""`
  HRESULT result = S_OK;   ///< for an event, the first failure of a sink
  std::wstring results;    ///< the output arguments, such as `0, 0, part "bolt.sldprt"`
  bool fault = false;      ///< the result comes from a fault

  /// The entry as a line, such as `ISldWorks::ActivateDoc("bolt.sldprt") = S_OK, part "bolt.sldprt"`.
  std::wstring Text() const;

  /// The interface of `method`, such as "ISldWorks".
  std::wstring Interface() const;
};

/// Entries are in the order in which they began.
class Journal {
 public:
  const std::vector<JournalEntry>& Entries() const { return m_entries; }

  /// The calls of add-ins, or those of one method such as "ISldWorks::OpenDoc6".
  std::vector<JournalEntry> Calls(std::wstring_view method = {}) const;

  /// Entries of any kind with the method `method`, such as "ISwAddin::ConnectToSW" or "FileOpenPostNotify".
  std::vector<JournalEntry> Of(std::wstring_view method) const;

  /// Whether a line from entry `from` on contains `text`.
  bool Contains(std::wstring_view text, std::size_t from = 0) const;

  /// All lines, indented by depth.
  std::wstring Text(std::size_t from = 0) const;

  void Clear() { m_entries.clear(); }

  /// Adds a remark of the host.
  void Note(std::wstring text);

  /// Begins an entry; entries that begin before its end are nested in it. @return its index, for End.
  std::size_t Begin(JournalEntry::Kind kind, std::wstring method, std::wstring arguments);

  /// Ends the entry with the index `entry`.
  void End(std::size_t entry, HRESULT result, std::wstring results, bool fault = false);

 private:
  std::vector<JournalEntry> m_entries;
  int m_depth = 0;
};

}  // namespace cad_host
