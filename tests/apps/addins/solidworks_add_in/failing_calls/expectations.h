/// @file What is prescribed for certain failing calls, and what the sweeps find and accept.
#pragma once

#include <windows.h>

#include <span>
#include <string_view>

#include "holdings.h"

/// What a failing call of the system must lead to. The existing tests of the commands pin the same for the
/// calls of the host.
struct Prescribed {
  std::string_view scenario;
  std::string_view call;  ///< such as "call 1 of CopyFileW"
  HRESULT result;
  std::wstring_view logged;  ///< within a line of the log
};

std::span<const Prescribed> PrescribedOutcomes();

/// Something that does not happen because of a failing call although nobody is told, which is accepted.
struct AcceptedSilence {
  std::string_view scenario;
  std::string_view call;  ///< a part of the call's name, such as "CopyFileW"
  const char* reason;
};

std::span<const AcceptedSilence> AcceptedSilences();

/// Something that stays after a failing call, which is accepted.
struct AcceptedLeak {
  Held held;
  std::string_view scenario;  ///< empty: any
  std::string_view call;      ///< a part of the call's name; empty: any
  const char* reason;
};

std::span<const AcceptedLeak> AcceptedLeaks();

/// Whether it is accepted that `call` of `scenario` is told nowhere, or that something stays after it.
bool IsSilenceAccepted(std::string_view scenario, std::string_view call);
bool IsLeakAccepted(Held held, std::string_view scenario, std::string_view call);
