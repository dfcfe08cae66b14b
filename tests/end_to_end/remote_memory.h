/// @file Asking controls of another process.
#pragma once

#include <windows.h>

#include <cstddef>
#include <stdexcept>

#include "base/unique_handle.h"

/// Memory in the process of a window, for messages whose argument is an address there.
class RemoteMemory {
 public:
  /// @throws std::runtime_error if the process cannot be opened or has no memory.
  RemoteMemory(HWND window, std::size_t size) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    m_process =
        OwnHandle(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process));
    if (m_process) {
      m_address = VirtualAllocEx(m_process.get(), nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    if (!m_address) throw std::runtime_error("no memory in the process of a window");
  }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;
  ~RemoteMemory() { VirtualFreeEx(m_process.get(), m_address, 0, MEM_RELEASE); }

  /// The address there, `offset` bytes behind the first.
  void* At(std::size_t offset = 0) const { return static_cast<char*>(m_address) + offset; }

  void Put(const void* bytes, std::size_t size, std::size_t offset = 0) const {
    WriteProcessMemory(m_process.get(), At(offset), bytes, size, nullptr);
  }

  void Get(void* bytes, std::size_t size, std::size_t offset = 0) const {
    ReadProcessMemory(m_process.get(), At(offset), bytes, size, nullptr);
  }

 private:
  UniqueHandle m_process;
  void* m_address = nullptr;
};
