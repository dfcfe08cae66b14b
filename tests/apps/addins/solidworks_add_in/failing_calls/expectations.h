/// @file What is prescribed for certain failing calls, and what the sweeps find and accept.
#pragma once

#include <windows.h>

#include <span>
#include <string_view>
#include <vector>

#include "holdings.h"
#include "swept_call.h"

/// The ways of failing that a row is about.
enum class Ways {
  kAll,
  kCodes,      ///< a failing HRESULT
  kSFalse,     ///< S_FALSE, and no result
  kSuccesses,  ///< S_OK or S_FALSE, and no result
};

/// In a row of PrescribedOutcomes: the code with which the call fails.
inline constexpr HRESULT kItsCode = MAKE_HRESULT(SEVERITY_SUCCESS, FACILITY_NULL, 0x7FFF);

/// What a failing call must lead to.
struct Prescribed {
  std::string_view scenarios;  ///< their names, between blanks
  std::string_view call;       ///< such as "call 1 of CopyFileW"
  Ways ways;
  HRESULT result;  ///< of the command
  // Each within one text; "{}" is the call's code in hexadecimal.
  std::wstring_view logged;      ///< empty: no error
  std::wstring_view shown = {};  ///< empty: no box but those of a good run
};

std::vector<Prescribed> PrescribedOutcomes();

/// Whether `row` is about `call` of `scenario`.
bool IsAbout(const Prescribed& row, std::string_view scenario, const SweptCall& call);

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

/// A call whose failure ends the process, in code that is not ours and cannot answer in another way. No sweep
/// makes it fail.
struct FatalCall {
  std::string_view scenario;
  std::string_view call;
  const char* stack;  ///< the functions, the innermost first
  const char* reason;
};

std::span<const FatalCall> FatalCalls();

bool IsFatal(std::string_view scenario, std::string_view call);

/// Whether it is accepted that `call` of `scenario` is told nowhere, or that something stays after it.
bool IsSilenceAccepted(std::string_view scenario, std::string_view call);
bool IsLeakAccepted(Held held, std::string_view scenario, std::string_view call);
