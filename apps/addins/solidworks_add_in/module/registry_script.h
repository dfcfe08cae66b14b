/// @file The language of registration scripts.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace registry_script {

/// A value; the default value of a key has no name.
struct Value {
  std::wstring name;
  std::variant<std::wstring, std::uint32_t> data;
};

/// What becomes of a key on unregistration.
enum class Removal {
  kWhenWithoutSubkeys,  ///< removed if no keys of others are under it
  kNever,               ///< NoRemove: it belongs to others as well
  kWhole,               ///< ForceRemove: removed with all its contents, and before it is written anew
};

struct Key {
  std::wstring name;
  Removal removal;
  std::vector<Value> values;
  std::vector<Key> keys;
};

/// A root of the registry.
enum class RootKey { kClassesRoot, kLocalMachine };

/// The keys of a script under one root.
struct Root {
  RootKey root;
  std::vector<Key> keys;
};

/// What is wrong with a script, with the line and the token.
class Error {
 public:
  Error(unsigned line, std::wstring_view problem, std::wstring_view token);
  const std::wstring& Message() const noexcept { return m_message; }

 private:
  std::wstring m_message;
};

/// The texts that stand for %NAME% in a script, by NAME.
using Replacements = std::map<std::wstring, std::wstring, std::less<>>;

/// Reads a script:
///
///     HKCR                                       or HKLM
///     {
///       NoRemove CLSID                           a key that is never removed
///       {
///         ForceRemove %CLASS% = s 'A class'      a key that is removed whole, its default value
///         {
///           'Key with blanks'                    quoted where a name has blanks; '' stands for a quote
///           val Title = s 'a text'               a named value
///           val Count = d '1'                    a DWORD in decimal
///         }
///       }
///     }
///
/// %NAME% is replaced inside tokens, so that nothing in a replacement is taken for syntax; %% is a per cent
/// sign. @throws Error.
std::vector<Root> Parse(std::wstring_view text, const Replacements& replacements);

}  // namespace registry_script
