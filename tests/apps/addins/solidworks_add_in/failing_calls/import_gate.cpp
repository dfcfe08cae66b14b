#include "import_gate.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace {

template <class T>
T* At(HMODULE module, ULONGLONG offset) {
  return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

void Put(ULONGLONG* slot, ULONGLONG function) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = function;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

// Saves the registers that hold arguments, asks Choose for what to run, restores them and goes there. The two
// addresses are filled in. While the chosen function runs, nothing of this is on the stack, so that
// exceptions pass as they do without it.
constexpr unsigned char kCode[] = {
    0x48, 0x81, 0xEC, 0x88, 0x00, 0x00, 0x00,           // sub rsp, 0x88
    0x48, 0x89, 0x4C, 0x24, 0x20,                       // mov [rsp+0x20], rcx
    0x48, 0x89, 0x54, 0x24, 0x28,                       // mov [rsp+0x28], rdx
    0x4C, 0x89, 0x44, 0x24, 0x30,                       // mov [rsp+0x30], r8
    0x4C, 0x89, 0x4C, 0x24, 0x38,                       // mov [rsp+0x38], r9
    0x0F, 0x11, 0x44, 0x24, 0x40,                       // movups [rsp+0x40], xmm0
    0x0F, 0x11, 0x4C, 0x24, 0x50,                       // movups [rsp+0x50], xmm1
    0x0F, 0x11, 0x54, 0x24, 0x60,                       // movups [rsp+0x60], xmm2
    0x0F, 0x11, 0x5C, 0x24, 0x70,                       // movups [rsp+0x70], xmm3
    0x48, 0xB9, 0,    0,    0,    0,    0,    0, 0, 0,  // mov rcx, the function
    0x48, 0xB8, 0,    0,    0,    0,    0,    0, 0, 0,  // mov rax, Choose
    0xFF, 0xD0,                                         // call rax
    0x48, 0x8B, 0x4C, 0x24, 0x20,                       // mov rcx, [rsp+0x20]
    0x48, 0x8B, 0x54, 0x24, 0x28,                       // mov rdx, [rsp+0x28]
    0x4C, 0x8B, 0x44, 0x24, 0x30,                       // mov r8, [rsp+0x30]
    0x4C, 0x8B, 0x4C, 0x24, 0x38,                       // mov r9, [rsp+0x38]
    0x0F, 0x10, 0x44, 0x24, 0x40,                       // movups xmm0, [rsp+0x40]
    0x0F, 0x10, 0x4C, 0x24, 0x50,                       // movups xmm1, [rsp+0x50]
    0x0F, 0x10, 0x54, 0x24, 0x60,                       // movups xmm2, [rsp+0x60]
    0x0F, 0x10, 0x5C, 0x24, 0x70,                       // movups xmm3, [rsp+0x70]
    0x48, 0x81, 0xC4, 0x88, 0x00, 0x00, 0x00,           // add rsp, 0x88
    0xFF, 0xE0,                                         // jmp rax
};
constexpr std::size_t kFunctionPlace = 49;
constexpr std::size_t kChoosePlace = 59;
constexpr std::size_t kStride = 144;
static_assert(sizeof kCode <= kStride);

}  // namespace

ImportGate::ImportGate(HMODULE module) {
  const auto* headers =
      At<IMAGE_NT_HEADERS>(module, static_cast<ULONGLONG>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
       library->FirstThunk; ++library) {
    const auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
    auto* entry = At<IMAGE_THUNK_DATA>(module, library->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++entry) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) throw std::runtime_error("an import has no name");
      Add(At<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData)->Name, &entry->u1.Function);
    }
  }
  m_code = static_cast<unsigned char*>(
      VirtualAlloc(nullptr, kStride * m_functions.size(), MEM_RESERVE | MEM_COMMIT, PAGE_EXECUTE_READWRITE));
  if (!m_code) throw std::runtime_error("no memory for code");
  unsigned char* code = m_code;
  for (const auto& function : m_functions) {
    Write(code, *function);
    for (ULONGLONG* slot : function->slots) Put(slot, reinterpret_cast<ULONGLONG>(code));
    code += kStride;
  }
}

ImportGate::~ImportGate() {
  for (const auto& function : m_functions) {
    for (ULONGLONG* slot : function->slots) Put(slot, function->original);
  }
  VirtualFree(m_code, 0, MEM_RELEASE);
}

void ImportGate::Add(const char* name, ULONGLONG* slot) {
  for (const auto& function : m_functions) {
    if (function->name == name) return function->slots.push_back(slot);
  }
  m_functions.push_back(std::make_unique<Function>(
      Function{name, this, *slot, reinterpret_cast<const void*>(*slot), 0, {slot}}));
}

void ImportGate::Write(unsigned char* code, const Function& function) const {
  const auto place = reinterpret_cast<std::uintptr_t>(&function);
  const void* (*const choose)(Function&) noexcept = &Choose;
  std::memcpy(code, kCode, sizeof kCode);
  std::memcpy(code + kFunctionPlace, &place, sizeof place);
  std::memcpy(code + kChoosePlace, &choose, sizeof choose);
}

std::vector<std::string> ImportGate::Functions() const {
  std::vector<std::string> names;
  for (const auto& function : m_functions) names.push_back(function->name);
  return names;
}

void ImportGate::Open() {
  for (const auto& function : m_functions) function->calls = 0;
  m_failed = nullptr;
  m_hasFailed = false;
  m_thread = GetCurrentThreadId();
}

void ImportGate::Open(std::string_view function, int nth, const void* failing) {
  Open();
  m_failed = &Find(function);
  m_nth = nth;
  m_failing = failing;
}

void ImportGate::Close() { m_thread = 0; }

// Neither changes the last error nor errno.
const void* ImportGate::Choose(Function& called) noexcept {
  ImportGate& gate = *called.gate;
  if (GetCurrentThreadId() != gate.m_thread) return called.target;
  ++called.calls;
  if (&called != gate.m_failed || called.calls != gate.m_nth) return called.target;
  gate.m_hasFailed = true;
  return gate.m_failing;
}

ImportGate::Function& ImportGate::Find(std::string_view name) const {
  const auto found = std::ranges::find_if(m_functions, [&](const auto& f) { return f->name == name; });
  if (found == m_functions.end()) throw std::runtime_error("not imported: " + std::string(name));
  return **found;
}
