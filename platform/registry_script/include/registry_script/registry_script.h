/// @file The parser of registration scripts.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace registry_script {

/// A value; the default value of a key has an empty name.
struct Value {
  std::wstring name;
  std::variant<std::wstring, std::uint32_t> data;
};

/// What happens to a key on unregistration.
enum class Removal {
  kIfWithoutSubkeys,  ///< removed if it has no subkeys left, which would belong to others
  kNever,             ///< NoRemove: other programs use it as well
  kWithContents,      ///< ForceRemove: removed with all its contents, also before it is written again
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

/// A fault in a script, with the line and the token.
class Error {
 public:
  Error(unsigned line, std::wstring_view problem, std::wstring_view token);
  const std::wstring& Message() const noexcept { return m_message; }

 private:
  std::wstring m_message;
};

/// The texts that replace %NAME% in a script, by NAME.
using Replacements = std::map<std::wstring, std::wstring, std::less<>>;

/// Reads a script:
///
///     HKCR                                       or HKLM
///     {
///       NoRemove CLSID                           a key that is not removed
///       {
///         ForceRemove %CLASS% = s 'A class'      a key that is removed with its contents; its default value
///         {
///           'Key with blanks'                    a name with blanks is quoted; '' is a quote
///           val Title = s 'a text'               a named value
///           val Count = d '1'                    a DWORD in decimal
///         }
///       }
///     }
///
/// %NAME% is replaced inside tokens, so that a replacement is never read as syntax; %% is a percent sign.
/// @throws Error.
std::vector<Root> Parse(std::wstring_view text, const Replacements& replacements);

}  // namespace registry_script
