#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "promise.h"
#include "registry_script/registry_script.h"
#include "script_writer.h"
#include "targets.h"

namespace fuzz {
namespace {

using registry_script::Key;
using registry_script::Removal;
using registry_script::Root;
using registry_script::RootKey;
using registry_script::Value;

/// `text` as a token that reads as this text.
std::wstring Quoted(const std::wstring& text) {
  std::wstring token = L"'";
  for (const wchar_t character : text) {
    token += character;
    if (character == L'\'' || character == L'%') token += character;
  }
  return token + L"'";
}

std::wstring DataText(const Value& value) {
  const auto* const number = std::get_if<std::uint32_t>(&value.data);
  if (number) return L" = d " + Quoted(std::to_wstring(*number));
  return L" = s " + Quoted(std::get<std::wstring>(value.data));
}

std::wstring KeyText(const Key& key) {
  std::wstring text;
  if (key.removal == Removal::kNever) text += L"NoRemove ";
  if (key.removal == Removal::kWithContents) text += L"ForceRemove ";
  text += Quoted(key.name);
  std::wstring named;
  for (const Value& value : key.values) {
    if (value.name.empty()) {
      text += DataText(value);
    } else {
      named += L"val " + Quoted(value.name) + DataText(value) + L"\n";
    }
  }
  text += L"\n{\n" + named;
  for (const Key& child : key.keys) text += KeyText(child);
  return text + L"}\n";
}

/// The same script with every name in quotes.
std::wstring ScriptText(const std::vector<Root>& roots) {
  std::wstring text;
  for (const Root& root : roots) {
    text += root.root == RootKey::kClassesRoot ? L"HKCR\n{\n" : L"HKLM\n{\n";
    for (const Key& key : root.keys) text += KeyText(key);
    text += L"}\n";
  }
  return text;
}

/// The number of the line that the message of an error names; 0 if it names none.
std::size_t LineIn(const std::wstring& message) {
  constexpr std::wstring_view kBegin = L"line ";
  if (!message.starts_with(kBegin)) return 0;
  return static_cast<std::size_t>(std::wcstoul(message.c_str() + kBegin.size(), nullptr, 10));
}

void TryAnyScript(std::wstring_view script) {
  std::vector<Root> roots;
  try {
    roots = registry_script::Parse(script, ScriptReplacements());
  } catch (const registry_script::Error& error) {
    const auto lines = 1 + static_cast<std::size_t>(std::ranges::count(script, L'\n'));
    const std::size_t line = LineIn(error.Message());
    Require(line >= 1 && line <= lines, "an error names a line of the script");
    return;
  }
  const std::wstring text = ScriptText(roots);
  Require(ScriptText(registry_script::Parse(text, ScriptReplacements())) == text,
          "a script written from what was read says the same");
}

void TryWrittenScript(const WrittenScript& script) {
  try {
    const std::vector<Root> roots = registry_script::Parse(script.text, ScriptReplacements());
    Require(script.wrong_line == 0, "a mistake is found");
    Require(ScriptText(roots) == ScriptText(script.roots), "what is read is what was written");
  } catch (const registry_script::Error& error) {
    Require(LineIn(error.Message()) == script.wrong_line, "an error names the line of the mistake");
  }
}

}  // namespace

void TryRegistryScript(std::string_view bytes) {
  TryAnyScript(utf8::Decode<wchar_t>(bytes));
  TryWrittenScript(WriteScript(Choices(bytes)));
}

}  // namespace fuzz
