// The language of registration scripts.
#include <gtest/gtest.h>

#include <string>

#include "base/utf8.h"
#include "registry_script/registry_script.h"

namespace {

using registry_script::Key;
using registry_script::Parse;
using registry_script::Root;

const registry_script::Replacements kReplacements = {{L"CLSID", L"{1234}"},
                                                     {L"MODULE", L"C:\\it's { here } = s\\a.dll"}};

/// A parsed key as one line: "ForceRemove name(value=1 child())".
std::wstring TextOf(const Key& key) {
  static const wchar_t* const removal[] = {L"", L"NoRemove ", L"ForceRemove "};
  std::wstring text = removal[static_cast<int>(key.removal)] + key.name + L"(";
  for (const registry_script::Value& value : key.values) {
    const std::uint32_t* number = std::get_if<std::uint32_t>(&value.data);
    text +=
        value.name + L"=" + (number ? std::to_wstring(*number) : std::get<std::wstring>(value.data)) + L" ";
  }
  for (const Key& child : key.keys) text += TextOf(child);
  return text + L")";
}

/// A parsed script as one line: "HKCR:a()b()".
std::wstring TextOf(std::wstring_view script) {
  std::wstring text;
  for (const Root& root : Parse(script, kReplacements)) {
    text += root.root == registry_script::RootKey::kClassesRoot ? L"HKCR:" : L"HKLM:";
    for (const Key& key : root.keys) text += TextOf(key);
  }
  return text;
}

std::string ErrorOf(std::wstring_view script) {
  try {
    Parse(script, kReplacements);
  } catch (const registry_script::Error& error) {
    return utf8::Encode<wchar_t>(error.Message());
  }
  return "no error";
}

}  // namespace

TEST(RegistryScript, IsParsed) {
  const struct {
    const wchar_t* script;
    const wchar_t* text;
  } cases[] = {
      {L"", L""},
      {L"HKCR { }", L"HKCR:"},
      {L"HKCR { a }", L"HKCR:a()"},
      {L"HKCR { a b }", L"HKCR:a()b()"},
      {L"HKLM { NoRemove a { ForceRemove b { c } } }", L"HKLM:NoRemove a(ForceRemove b(c()))"},
      {L"HKCR { a = s 'text' }", L"HKCR:a(=text )"},
      {L"HKCR { a = d '0' { val n = d '4294967295' val t = s '' } }", L"HKCR:a(=0 n=4294967295 t= )"},
      {L"HKCR { a = s 'don''t' }", L"HKCR:a(=don't )"},
      {L"HKCR { 'a key' { val 'a value' = s 'x' } }", L"HKCR:a key(a value=x )"},
      {L"HKCR { 'NoRemove' }", L"HKCR:NoRemove()"},
      {L"HKCR { a } HKLM { b } HKCR { c }", L"HKCR:a()HKLM:b()HKCR:c()"},
      {L"HKCR { %CLSID% = s '%CLSID%' }", L"HKCR:{1234}(={1234} )"},
      {L"HKCR { a = s 'x%CLSID%y' }", L"HKCR:a(=x{1234}y )"},
      {L"HKCR { a = s '50%%' }", L"HKCR:a(=50% )"},
      {L"HKCR { a = s '%MODULE%' b }", L"HKCR:a(=C:\\it's { here } = s\\a.dll )b()"},
      {L"HKCR\r\n{\r\n\ta\r\n}\r\n", L"HKCR:a()"},
  };
  for (const auto& c : cases) EXPECT_EQ(TextOf(c.script), c.text) << utf8::Encode<wchar_t>(c.script);
}

TEST(RegistryScript, ReportsTheLineAndTokenOfAnError) {
  const struct {
    const wchar_t* script;
    const char* error;
  } cases[] = {
      {L"HKCU { }", "line 1: HKCR or HKLM expected: \"HKCU\""},
      {L"'HKCR' { }", "line 1: HKCR or HKLM expected: \"HKCR\""},
      {L"HKCR\n a { }", "line 2: { expected: \"a\""},
      {L"HKCR", "line 1: unexpected end of the script; expected: \"{\""},
      {L"HKCR {\n a", "line 2: unexpected end of the script; expected: \"}\""},
      {L"HKCR {\n a {\n }\n", "line 3: unexpected end of the script; expected: \"}\""},
      {L"HKCR {\n { } }", "line 2: the name of a key expected: \"{\""},
      {L"HKCR {\n NoRemove\n}", "line 3: the name of a key expected: \"}\""},
      {L"HKCR { '' }", "line 1: the name of a key expected: \"\""},
      {L"HKCR { a = x '1' }", "line 1: the type s or d expected: \"x\""},
      {L"HKCR { a = s text }", "line 1: data in quotes expected: \"text\""},
      {L"HKCR { a =", "line 1: unexpected end of the script; expected: \"the type of a value\""},
      {L"HKCR { a = d '1x' }", "line 1: a decimal number expected: \"1x\""},
      {L"HKCR { a = d '' }", "line 1: a decimal number expected: \"\""},
      {L"HKCR { a = d '4294967296' }", "line 1: the number does not fit into 32 bits: \"4294967296\""},
      {L"HKCR { a {\n val n s 'x' } }", "line 2: '=' expected after the value: \"n\""},
      {L"HKCR { a { val = s 'x' } }", "line 1: the name of a value expected: \"=\""},
      {L"HKCR { val n = s 'x' }", "line 1: the value is not inside a key: \"n\""},
      {L"HKCR {\n\n a = s 'open\n}", "line 3: the closing quote is missing: \"'open\""},
      {L"HKCR { %OTHER% }", "line 1: unknown replacement: \"OTHER\""},
      {L"HKCR { a = s '50%' }", "line 1: the closing percent sign is missing: \"50%\""},
      {L"HKCR { a } }", "line 1: HKCR or HKLM expected: \"}\""},
  };
  for (const auto& c : cases) EXPECT_EQ(ErrorOf(c.script), c.error);
}
