#include "guards.h"

namespace {

// Not inlined: what is changed below belongs to this function alone.
__declspec(noinline) Result Guarded(const Call& call) {
  try {
    return call.run(call.context);
  } catch (...) {
    return kCaught;
  }
}

/// The compiler of this program marks its functions as ones that catch C++ exceptions only, also for /EHa;
/// the other compiler leaves the mark out. So this takes it away: it is the last member of what the runtime
/// knows of a function.
void MarkAsCatchingEverything(void* function) {
  struct RuntimeFunction {
    Dword begin;
    Dword end;
    Dword unwind;
  };
  struct FunctionInformation {
    Dword magic;
    Dword members[8];
    Dword flags;
  };
  constexpr Dword kReadWrite = 4;
  Size base = 0;
  const auto* entry =
      static_cast<RuntimeFunction*>(RtlLookupFunctionEntry(reinterpret_cast<Size>(function), &base, nullptr));
  auto* const unwind = reinterpret_cast<unsigned char*>(base + entry->unwind);
  const unsigned codes = (unwind[2] + 1u) & ~1u;
  // Behind the codes: the handler, then its data, which says where the information on the function lies.
  const auto* const handler = reinterpret_cast<const Dword*>(unwind + 4 + 2 * codes);
  auto* const information = reinterpret_cast<FunctionInformation*>(base + handler[1]);
  Dword before = 0;
  VirtualProtect(information, sizeof *information, kReadWrite, &before);
  information->flags = 0;
  VirtualProtect(information, sizeof *information, before, &before);
}

}  // namespace

Result CallUnderEha(const Call& call) {
  MarkAsCatchingEverything(reinterpret_cast<void*>(&Guarded));
  return Guarded(call);
}
