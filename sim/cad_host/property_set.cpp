#include "property_set.h"

#include <cwchar>
#include <optional>
#include <stdexcept>

#include "cad_host/host_error.h"
#include "paths.h"
#include "property_set_reader.h"

namespace cad_host {
namespace {

// Beside the property set: name and type of each property. The system's property sets know text, whole
// numbers and dates everywhere, but not every system writes fractions and booleans; those stand as text.
constexpr const wchar_t* kTypesStream = L"PropertyTypes";

std::optional<long> WholeNumber(const std::wstring& text) {
  wchar_t* end = nullptr;
  const long number = std::wcstol(text.c_str(), &end, 10);
  if (text.empty() || *end || std::to_wstring(number) != text) return std::nullopt;
  return number;
}

bool IsNumber(const std::wstring& text) {
  wchar_t* end = nullptr;
  std::wcstod(text.c_str(), &end);
  return !text.empty() && !*end;
}

/// The date that "2024-05-31" names.
std::optional<FILETIME> ParseDate(const std::wstring& text) {
  SYSTEMTIME time{};
  wchar_t rest = 0;
  if (std::swscanf(text.c_str(), L"%4hu-%2hu-%2hu%c", &time.wYear, &time.wMonth, &time.wDay, &rest) != 3) {
    return std::nullopt;
  }
  FILETIME file_time{};
  if (!SystemTimeToFileTime(&time, &file_time)) return std::nullopt;
  return file_time;
}

PROPSPEC WithName(const std::wstring& name) {
  PROPSPEC spec{};
  spec.ulKind = PRSPEC_LPWSTR;
  spec.lpwstr = const_cast<wchar_t*>(name.c_str());
  return spec;
}

void WriteProperty(const CompoundFile& file, const IPropertyStoragePtr& set, const CustomProperty& property) {
  const PROPSPEC name = WithName(property.name);
  PROPVARIANT value{};  // borrows the text, so nothing is to be freed
  const auto number = property.type == swCustomInfoNumber ? WholeNumber(property.text) : std::nullopt;
  const auto date = property.type == swCustomInfoDate ? ParseDate(property.text) : std::nullopt;
  if (number) {
    value.vt = VT_I4;
    value.lVal = *number;
  } else if (date) {
    value.vt = VT_FILETIME;
    value.filetime = *date;
  } else {
    value.vt = VT_LPWSTR;
    value.pwszVal = const_cast<wchar_t*>(property.text.c_str());
  }
  file.Check(set->WriteMultiple(1, &name, &value, PID_FIRST_USABLE), property.name.c_str());
}

void WriteSet(const CompoundFile& file, const CustomProperties& properties) {
  const IPropertyStoragePtr set = file.CreateProperties();
  for (const CustomProperty& property : properties) WriteProperty(file, set, property);
  file.Check(set->Commit(STGC_DEFAULT), L"custom properties");
}

void ApplyTypes(const Records& types, CustomProperties& properties) {
  for (const Record& record : types) {
    for (CustomProperty& property : properties) {
      if (property.name != FieldOf(record, 0)) continue;
      property.type = static_cast<swCustomInfoType_e>(NumberOf(record, 1));
    }
  }
}

}  // namespace

CustomProperties ReadProperties(const CompoundFile& file) {
  try {
    CustomProperties properties = ReadUserDefinedSection(file.ReadPropertySet());
    ApplyTypes(file.ReadTable(kTypesStream), properties);
    return properties;
  } catch (const std::out_of_range&) {
    file.Check(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), L"custom properties");
    throw;
  }
}

void WriteProperties(const CompoundFile& file, const CustomProperties& properties) {
  if (properties.empty()) return;
  WriteSet(file, properties);
  file.CompleteProperties();
  Records types;
  for (const CustomProperty& property : properties) {
    types.push_back({property.name, std::to_wstring(property.type)});
  }
  file.WriteTable(kTypesStream, types);
}

bool FitsType(const std::wstring& text, swCustomInfoType_e type) {
  if (text.find(L'"') != std::wstring::npos) return true;
  switch (type) {
    case swCustomInfoNumber:
      return text.empty() || IsNumber(text);
    case swCustomInfoYesOrNo:
      return text.empty() || SameName(text, kYes) || SameName(text, kNo);
    case swCustomInfoDate:
      return text.empty() || ParseDate(text).has_value();
    case swCustomInfoText:
      return true;
  }
  return true;
}

}  // namespace cad_host
