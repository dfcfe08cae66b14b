/// @file Small tables as text: one record per line, its fields separated by tabs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

using Record = std::vector<std::wstring>;
using Records = std::vector<Record>;

/// The table in UTF-8. Tabs, line ends and backslashes within a field are written as \t, \n, \r and \\.
std::string EncodeRecords(const Records& records);

/// The table of bytes that EncodeRecords returned.
Records DecodeRecords(std::string_view bytes);

/// Field `index` of a record; empty if the record is shorter.
std::wstring FieldOf(const Record& record, std::size_t index);

/// Field `index` as a whole number or a fraction; 0 if it is not a number.
long NumberOf(const Record& record, std::size_t index);
double DoubleOf(const Record& record, std::size_t index);

/// A number as text that reads back as the same number.
std::wstring DoubleText(double value);

}  // namespace cad_host
