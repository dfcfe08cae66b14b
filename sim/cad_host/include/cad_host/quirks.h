/// @file Quirks: manners of real hosts that an add-in has to live with. The simulated host has them too, and
/// each can be switched off by its name.
#pragma once

#include <set>
#include <span>
#include <string_view>

namespace cad_host {

enum class Quirk {
  kCallerArrays,
  kEnableArgument,
  kEqualTabNames,
  kFalseTabRemoval,
  kHeldFiles,
  kSameNameRefused,
  kSilentOpenFailure,
};

struct NamedQuirk {
  Quirk quirk;
  const wchar_t* name;
  const wchar_t* description;  ///< one sentence
};

/// Which quirks a host has: all, unless some are switched off. A change counts from the next call on.
class Quirks {
 public:
  /// All that there are, in the order of their names.
  static std::span<const NamedQuirk> All();

  /// The quirk called `name`.
  /// @throws HostError with the name and all known names if there is no such quirk.
  static Quirk Named(std::wstring_view name);

  bool IsOn(Quirk quirk) const { return !m_off.contains(quirk); }
  void Set(Quirk quirk, bool on);

  /// For what real hosts do about half of the time: true for the first occasion and for every second one
  /// after it; always false if the quirk is off.
  bool HappensNow(Quirk quirk);

 private:
  std::set<Quirk> m_off;
  std::set<Quirk> m_happened;  // at their last occasion
};

}  // namespace cad_host
