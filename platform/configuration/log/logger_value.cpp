#include "logger_value.h"

#include <algorithm>

LoggerValue LoggerValue::Parse(std::wstring text) {
  std::erase(text, L' ');
  LoggerValue value;
  std::size_t begin = std::min(text.find(L','), text.size());
  value.level = text.substr(0, begin);
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find(L',', begin + 1), text.size());
    if (end > begin + 1) value.appenders.push_back(text.substr(begin + 1, end - begin - 1));
    begin = end;
  }
  return value;
}

std::wstring LoggerValue::Text() const {
  std::wstring text = level;
  for (const std::wstring& name : appenders) text += L", " + name;
  return text;
}
