/// @file The ways in which a host of the other compiler guards a call of an add-in.
#pragma once

#include "runtime.h"

/// A call of the add-in.
struct Call {
  Result (*run)(void* context);
  void* context;
};

/// What a guard returns if it caught something.
inline constexpr Result kCaught = static_cast<Result>(0xE0000001);

Result CallWithoutGuard(const Call& call);
/// `catch (...)` of a program compiled with /EHsc, which catches C++ exceptions only.
Result CallUnderEhsc(const Call& call);
/// `catch (...)` of a program compiled with /EHa, which catches every exception.
Result CallUnderEha(const Call& call);
/// `__except` with a filter that takes everything.
Result CallUnderSeh(const Call& call);
