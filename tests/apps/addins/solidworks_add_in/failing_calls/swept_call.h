/// @file A call that a sweep makes fail.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

/// A call that fails in one run.
struct SweptCall {
  std::string name;  ///< for reports, such as "call 2 of CreateFileW"; for the host's, how it fails follows
  std::optional<HRESULT> code;  ///< what a call of the host returns
  std::function<void()> arm;
  std::function<bool()> has_failed;  ///< whether the call came
};
