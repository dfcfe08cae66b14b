#include "property_correction.h"

std::vector<std::wstring> PropertyCorrection::KeysBelow(std::wstring_view prefix) const {
  std::vector<std::wstring> keys = m_properties.propertyNames();
  std::erase_if(keys, [&](const std::wstring& key) { return !key.starts_with(prefix); });
  return keys;
}

void PropertyCorrection::RemoveAllBelow(std::wstring_view prefix) {
  for (const std::wstring& key : KeysBelow(prefix)) m_properties.removeProperty(key);
}

void PropertyCorrection::Report(const std::wstring& key, const std::wstring& value,
                                const std::wstring& complaint) {
  m_faults.push_back(L"log4cplus." + key + L": \"" + value + L"\" " + complaint);
}

void PropertyCorrection::ReportAndRemove(const std::wstring& key, const std::wstring& complaint) {
  Report(key, Value(key), complaint);
  m_properties.removeProperty(key);
}

void PropertyCorrection::ReportUnknown(const std::wstring& key) {
  ReportAndRemove(key, L"is ignored: the key is unknown");
}

bool PropertyCorrection::CorrectValue(const std::wstring& key, ValueKind kind) {
  const wchar_t* const complaint = FindComplaint(kind, Value(key));
  if (complaint) ReportAndRemove(key, complaint);
  return !complaint;
}
