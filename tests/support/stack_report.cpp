#include "stack_report.h"

#include <cxxabi.h>
// After windows.h, which they need.
#include <dbghelp.h>
#include <tlhelp32.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string>

#include "base/unique_handle.h"

namespace {

constexpr int kMostFrames = 64;

struct Freer {
  void operator()(char* text) const { std::free(text); }
};

std::string Demangled(const char* name) {
  int status = 0;
  // The library takes away the underscore in front that it expects of every name.
  const std::unique_ptr<char, Freer> full(abi::__cxa_demangle(
      (name[0] == 'Z' ? std::string("_") + name : name).c_str(), nullptr, nullptr, &status));
  return full ? full.get() : name;
}

std::string FunctionAt(DWORD64 address) {
  constexpr ULONG kLongestName = 1024;
  alignas(SYMBOL_INFO) char buffer[sizeof(SYMBOL_INFO) + kLongestName] = {};
  auto& symbol = *reinterpret_cast<SYMBOL_INFO*>(buffer);
  symbol.SizeOfStruct = sizeof symbol;
  symbol.MaxNameLen = kLongestName;
  if (!SymFromAddr(GetCurrentProcess(), address, nullptr, &symbol)) return "?";
  return Demangled(symbol.Name);
}

std::string LineAt(DWORD64 address) {
  IMAGEHLP_LINE64 line{};
  line.SizeOfStruct = sizeof line;
  DWORD offset = 0;
  if (!SymGetLineFromAddr64(GetCurrentProcess(), address, &offset, &line)) return {};
  return std::string(line.FileName) + ":" + std::to_string(line.LineNumber);
}

std::string ModuleAt(DWORD64 address) {
  IMAGEHLP_MODULE64 module{};
  module.SizeOfStruct = sizeof module;
  return SymGetModuleInfo64(GetCurrentProcess(), address, &module) ? module.ModuleName : "?";
}

void LoadSymbols() {
  static std::once_flag loaded;
  std::call_once(loaded, [] {
    SymSetOptions(SYMOPT_LOAD_LINES | SYMOPT_UNDNAME);
    SymInitialize(GetCurrentProcess(), nullptr, TRUE);
  });
}

void WriteStackOf(HANDLE thread, CONTEXT context) {
  LoadSymbols();
  STACKFRAME64 frame{};
  frame.AddrPC = {context.Rip, 0, AddrModeFlat};
  frame.AddrFrame = {context.Rbp, 0, AddrModeFlat};
  frame.AddrStack = {context.Rsp, 0, AddrModeFlat};
  for (int depth = 0; depth < kMostFrames; ++depth) {
    if (!StackWalk64(IMAGE_FILE_MACHINE_AMD64, GetCurrentProcess(), thread, &frame, &context, nullptr,
                     SymFunctionTableAccess64, SymGetModuleBase64, nullptr) ||
        frame.AddrPC.Offset == 0) {
      break;
    }
    // All but the first are addresses behind a call, which may belong to the next line already.
    const DWORD64 address = frame.AddrPC.Offset - (depth > 0 ? 1 : 0);
    std::fprintf(stderr, "  %s!%s  %s\n", ModuleAt(address).c_str(), FunctionAt(address).c_str(),
                 LineAt(address).c_str());
  }
}

}  // namespace

void WriteStack(const CONTEXT& context) { WriteStackOf(GetCurrentThread(), context); }

void WriteOwnStack() {
  CONTEXT context;
  RtlCaptureContext(&context);
  WriteStack(context);
}

void WriteStacksOfOtherThreads() {
  LoadSymbols();
  const UniqueHandle list = OwnHandle(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL found = Thread32First(list.get(), &entry); found; found = Thread32Next(list.get(), &entry)) {
    if (entry.th32OwnerProcessID != GetCurrentProcessId() || entry.th32ThreadID == GetCurrentThreadId())
      continue;
    const UniqueHandle thread = OwnHandle(OpenThread(
        THREAD_SUSPEND_RESUME | THREAD_GET_CONTEXT | THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID));
    CONTEXT context{};
    context.ContextFlags = CONTEXT_FULL;
    if (!thread || SuspendThread(thread.get()) == static_cast<DWORD>(-1)) continue;
    std::fprintf(stderr, "thread %lu\n", entry.th32ThreadID);
    if (GetThreadContext(thread.get(), &context)) WriteStackOf(thread.get(), context);
  }
}
