#include "records.h"

#include <cwchar>

#include "CStringHelper.h"

namespace cad_host {
namespace {

constexpr std::wstring_view kEscaped = L"\t\n\r\\";
constexpr std::wstring_view kLetters = L"tnr\\";

std::wstring Escape(const std::wstring& field) {
  std::wstring text;
  for (const wchar_t character : field) {
    const std::size_t place = kEscaped.find(character);
    if (place == std::wstring_view::npos) {
      text += character;
    } else {
      text += {L'\\', kLetters[place]};
    }
  }
  return text;
}

}  // namespace

std::string EncodeRecords(const Records& records) {
  std::wstring text;
  for (const Record& record : records) {
    for (std::size_t index = 0; index < record.size(); ++index) {
      text += (index == 0 ? L"" : L"\t") + Escape(record[index]);
    }
    text += L'\n';
  }
  return CStringHelper::UnicodeToUTF8(text);
}

Records DecodeRecords(std::string_view bytes) {
  const std::wstring text = CStringHelper::UTF8ToUnicode(bytes);
  Records records;
  Record record(1);
  for (std::size_t place = 0; place < text.size(); ++place) {
    const wchar_t character = text[place];
    if (character == L'\n') {
      records.push_back(record);
      record.assign(1, L"");
    } else if (character == L'\t') {
      record.emplace_back();
    } else if (character == L'\\' && place + 1 < text.size()) {
      const std::size_t letter = kLetters.find(text[++place]);
      record.back() += letter == std::wstring_view::npos ? text[place] : kEscaped[letter];
    } else {
      record.back() += character;
    }
  }
  return records;
}

std::wstring FieldOf(const Record& record, std::size_t index) {
  return index < record.size() ? record[index] : L"";
}

long NumberOf(const Record& record, std::size_t index) {
  return std::wcstol(FieldOf(record, index).c_str(), nullptr, 10);
}

double DoubleOf(const Record& record, std::size_t index) {
  return std::wcstod(FieldOf(record, index).c_str(), nullptr);
}

std::wstring DoubleText(double value) {
  constexpr int kDigits = 17;  // enough for any double
  wchar_t text[40];
  for (int digits = 6; digits <= kDigits; ++digits) {
    std::swprintf(text, std::size(text), L"%.*g", digits, value);
    if (std::wcstod(text, nullptr) == value) break;
  }
  return text;
}

}  // namespace cad_host
