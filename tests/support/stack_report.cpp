#include "stack_report.h"

#include <cxxabi.h>
// After windows.h, which they need.
#include <dbghelp.h>
#include <tlhelp32.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string>

#include "base/unique_handle.h"

namespace {

constexpr std::size_t kMostFrames = 64;
constexpr std::size_t kMostThreads = 64;

struct Stack {
  DWORD thread = 0;
  std::size_t count = 0;
  DWORD64 addresses[kMostFrames];
};

Stack stacks[kMostThreads];
std::atomic<std::size_t> stack_count = 0;
std::atomic<std::size_t> written_count = 0;

DWORD64 CALLBACK ModuleBase(HANDLE, DWORD64 address) {
  DWORD64 module = 0;
  RtlLookupFunctionEntry(address, &module, nullptr);
  return module;
}

void* CALLBACK FunctionEntry(HANDLE, DWORD64 address) {
  DWORD64 module = 0;
  return RtlLookupFunctionEntry(address, &module, nullptr);
}

// StackWalk64 stops at an address without code, such as a null function pointer that was called. There the
// return address is on top of the stack, as in a function without an entry.
void LeaveFunctionWithoutEntry(CONTEXT& context, Stack& stack) {
  if (FunctionEntry({}, context.Rip)) return;
  stack.addresses[stack.count++] = context.Rip;
  ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<void*>(context.Rsp), &context.Rip,
                    sizeof context.Rip, nullptr);
  context.Rsp += sizeof context.Rip;
}

void Collect(HANDLE thread, DWORD id, CONTEXT context) {
  if (stack_count == kMostThreads) return;
  Stack& stack = stacks[stack_count];
  stack.thread = id;
  ++stack_count;
  LeaveFunctionWithoutEntry(context, stack);
  STACKFRAME64 frame{};
  frame.AddrPC = {context.Rip, 0, AddrModeFlat};
  frame.AddrFrame = {context.Rbp, 0, AddrModeFlat};
  frame.AddrStack = {context.Rsp, 0, AddrModeFlat};
  while (stack.count < kMostFrames &&
         StackWalk64(IMAGE_FILE_MACHINE_AMD64, GetCurrentProcess(), thread, &frame, &context, nullptr,
                     FunctionEntry, ModuleBase, nullptr) &&
         frame.AddrPC.Offset != 0) {
    // All but the first are return addresses, which may belong to the next line already.
    stack.addresses[stack.count] = frame.AddrPC.Offset - (stack.count > 0 ? 1 : 0);
    ++stack.count;
  }
}

bool IsCollected(DWORD id) {
  return std::any_of(stacks, stacks + stack_count, [id](const Stack& stack) { return stack.thread == id; });
}

struct Freer {
  void operator()(char* text) const { std::free(text); }
};

std::string Demangled(const char* name) {
  int status = 0;
  // The debug library removes the first underscore of each name.
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
  if (SymFromAddr(GetCurrentProcess(), address, nullptr, &symbol)) return Demangled(symbol.Name);
  std::snprintf(buffer, sizeof buffer, "0x%llx", address);
  return buffer;
}

std::string LineAt(DWORD64 address) {
  IMAGEHLP_LINE64 line{};
  line.SizeOfStruct = sizeof line;
  DWORD offset = 0;
  if (!SymGetLineFromAddr64(GetCurrentProcess(), address, &offset, &line)) return {};
  std::string file = line.FileName;
  // The debug library puts Wine's drive for the root folder in front of the compiler's path.
  if (file.starts_with("Z:\\")) {
    file.erase(0, 2);
    std::replace(file.begin(), file.end(), '\\', '/');
  }
  // The compiler calls the folder of the sources so: see cmake/mingw-w64.cmake.
  if (file.starts_with("/tavo/")) file.erase(0, std::strlen("/tavo/"));
  return "  " + file + ":" + std::to_string(line.LineNumber);
}

std::string ModuleAt(DWORD64 address) {
  IMAGEHLP_MODULE64 module{};
  module.SizeOfStruct = sizeof module;
  return SymGetModuleInfo64(GetCurrentProcess(), address, &module) ? module.ModuleName : "?";
}

// The debug library does not follow the link from a binary to its debug file, which lies beside it.
BOOL CALLBACK UseDebugFile(PCSTR, DWORD64 base, ULONG size, PVOID) {
  IMAGEHLP_MODULE64 module{};
  module.SizeOfStruct = sizeof module;
  if (!SymGetModuleInfo64(GetCurrentProcess(), base, &module)) return TRUE;
  const std::string debug_file = std::string(module.LoadedImageName) + ".debug";
  if (GetFileAttributesA(debug_file.c_str()) == INVALID_FILE_ATTRIBUTES) return TRUE;
  SymUnloadModule64(GetCurrentProcess(), base);
  SymLoadModuleEx(GetCurrentProcess(), nullptr, debug_file.c_str(), module.ModuleName, base, size, nullptr,
                  0);
  return TRUE;
}

void WriteThread(const Stack& stack) {
  WriteToErrors("thread ");
  WriteToErrors(stack.thread, 10);
  WriteToErrors("\n");
}

}  // namespace

void WriteToErrors(std::string_view text) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void WriteToErrors(DWORD64 number, int base) {
  char digits[64];
  WriteToErrors({digits, std::to_chars(digits, std::end(digits), number, base).ptr});
}

void CollectStack(const CONTEXT& context) { Collect(GetCurrentThread(), GetCurrentThreadId(), context); }

void CollectOwnStack() {
  CONTEXT context;
  RtlCaptureContext(&context);
  CollectStack(context);
}

void CollectStackOf(HANDLE thread, DWORD id) {
  CONTEXT context{};
  context.ContextFlags = CONTEXT_FULL;
  if (SuspendThread(thread) == static_cast<DWORD>(-1)) return;
  if (GetThreadContext(thread, &context)) Collect(thread, id, context);
  ResumeThread(thread);
}

void CollectOtherStacks(DWORD ignored) {
  const UniqueHandle list = OwnHandle(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL found = Thread32First(list.get(), &entry); found; found = Thread32Next(list.get(), &entry)) {
    const DWORD id = entry.th32ThreadID;
    if (entry.th32OwnerProcessID != GetCurrentProcessId() || id == GetCurrentThreadId() || id == ignored ||
        IsCollected(id)) {
      continue;
    }
    const UniqueHandle thread = OwnHandle(
        OpenThread(THREAD_SUSPEND_RESUME | THREAD_GET_CONTEXT | THREAD_QUERY_INFORMATION, FALSE, id));
    if (thread) CollectStackOf(thread.get(), id);
  }
}

void WriteStacks() {
  SymSetOptions(SYMOPT_LOAD_LINES | SYMOPT_UNDNAME | SYMOPT_DEFERRED_LOADS);
  SymInitialize(GetCurrentProcess(), nullptr, TRUE);
  EnumerateLoadedModules64(GetCurrentProcess(), UseDebugFile, nullptr);
  for (; written_count < stack_count; ++written_count) {
    const Stack& stack = stacks[written_count];
    WriteThread(stack);
    for (const DWORD64 address : std::span(stack.addresses, stack.count)) {
      WriteToErrors("  " + ModuleAt(address) + "!" + FunctionAt(address) + LineAt(address) + "\n");
    }
  }
}

void WriteAddresses() {
  for (std::size_t index = written_count; index < stack_count; ++index) {
    const Stack& stack = stacks[index];
    WriteThread(stack);
    for (const DWORD64 address : std::span(stack.addresses, stack.count)) {
      WriteToErrors("  0x");
      WriteToErrors(address, 16);
      WriteToErrors("\n");
    }
  }
}
