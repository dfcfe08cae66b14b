#include "CStringHelper.h"

#include "base/utf8.h"

std::string CStringHelper::UnicodeToUTF8(std::wstring_view text) { return utf8::Encode(text); }

std::wstring CStringHelper::UTF8ToUnicode(std::string_view text) { return utf8::Decode<wchar_t>(text); }
