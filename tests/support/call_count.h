/// @file How often a module calls a function of the system.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "import_patch.h"

/// Counts the calls during the lifetime of the object; the function is called all the same.
///
///     CallCount<0, decltype(CreateEventW)> events("CreateEventW");
///
/// @tparam kIndex another one for each function of the same type that is counted at the same time.
template <int kIndex, class Function>
class CallCount;

template <int kIndex, class Result, class... Arguments>
class CallCount<kIndex, Result(Arguments...)> {
 public:
  /// @param module imports `function` by name.
  /// @throws std::logic_error if another function of the type is counted with the same index.
  explicit CallCount(const char* function, HMODULE module = GetModuleHandleW(nullptr))
      : m_patch(module, Prepare(module, function), &Call) {
    count = 0;
    is_counting = true;
  }
  CallCount(const CallCount&) = delete;
  CallCount& operator=(const CallCount&) = delete;
  ~CallCount() { is_counting = false; }

  int Count() const { return count; }

 private:
  /// Other threads may call at any moment, so the function is known before it is replaced, and stays known.
  /// @return `function`
  static const char* Prepare(HMODULE module, const char* function) {
    if (is_counting) throw std::logic_error(std::string("needs an index of its own: ") + function);
    original = reinterpret_cast<Result (*)(Arguments...)>(ImportPatch::AddressOf(module, function));
    return function;
  }

  static Result Call(Arguments... arguments) {
    ++count;
    return original(arguments...);
  }

  static inline bool is_counting = false;
  static inline Result (*original)(Arguments...) = nullptr;
  static inline thread_local int count = 0;
  const ImportPatch m_patch;
};
