/// @file The properties that the logging library and this library's own appender know.
#pragma once

#include <span>
#include <string>
#include <string_view>

/// What a property's value must be.
enum class ValueKind {
  kText,
  kBoolean,
  kNumber,
  kSize,
  kLevel,
  kLocale,
  kSchedule,
  kTextMode,
  kFile,      // the path of the log file
  kLockFile,  // the path of a file that is opened beside the log file
  kPath,      // a path that is not opened as it stands
};

struct Property {
  std::wstring_view key;
  ValueKind kind;
};

/// A type of appenders, layouts or filters, with its properties: its own and those of its family.
struct ComponentType {
  std::wstring_view name;
  std::span<const Property> own;
  std::span<const Property> family = {};

  /// The property `key`; null if this type does not have it.
  const Property* Find(std::wstring_view key) const;
  /// Whether this type has a property of this kind.
  bool Has(ValueKind kind) const;
};

/// The type `name`; null if there is no such type.
const ComponentType* FindAppenderType(std::wstring_view name);
const ComponentType* FindLayoutType(std::wstring_view name);
const ComponentType* FindFilterType(std::wstring_view name);

/// The property `key` that every appender has, apart from layout and filters; null if there is no such one.
const Property* FindCommonAppenderProperty(std::wstring_view key);

/// The property `key` of the whole configuration; null if there is no such one.
const Property* FindGeneralProperty(std::wstring_view key);

/// What is wrong with a value of this kind, such as "is not a number"; null if nothing is, and for paths.
const wchar_t* FindComplaint(ValueKind kind, const std::wstring& value);

/// Whether the value of a boolean property is true.
bool IsTrue(const std::wstring& value);
