/// @file Removing what cannot be followed from a configuration of the log.
#pragma once

#include <log4cplus/helpers/property.h>

#include <string>
#include <string_view>
#include <vector>

#include "property_table.h"

/// The properties of a configuration, and the faults that were found in them. All keys are without
/// "log4cplus.".
class PropertyCorrection {
 public:
  explicit PropertyCorrection(log4cplus::helpers::Properties& properties) : m_properties(properties) {}

  log4cplus::helpers::Properties& All() { return m_properties; }
  bool Exists(const std::wstring& key) const { return m_properties.exists(key); }
  std::wstring Value(const std::wstring& key) const { return m_properties.getProperty(key); }
  void Set(const std::wstring& key, const std::wstring& value) { m_properties.setProperty(key, value); }
  void Remove(const std::wstring& key) { m_properties.removeProperty(key); }

  /// In alphabetical order, with the prefix.
  std::vector<std::wstring> KeysBelow(std::wstring_view prefix) const;
  void RemoveAllBelow(std::wstring_view prefix);

  void Report(const std::wstring& key, const std::wstring& value, const std::wstring& complaint);
  void ReportAndRemove(const std::wstring& key, const std::wstring& complaint);
  void ReportUnknown(const std::wstring& key);

  /// @return whether the value can be followed; if not, it was reported and removed.
  bool CorrectValue(const std::wstring& key, ValueKind kind);

  /// One text for each fault, in the order of the reports: `log4cplus.KEY: "VALUE" ` and what is wrong.
  const std::vector<std::wstring>& Faults() const { return m_faults; }

 private:
  log4cplus::helpers::Properties& m_properties;
  std::vector<std::wstring> m_faults;
};
