#include "raw_server.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kChunkBytes = 64 * 1024;

std::wstring PathOf(const std::wstring& pipe) { return LR"(\\.\pipe\)" + pipe; }

}  // namespace

RawServer::RawServer(const std::wstring& pipe, std::function<void(HANDLE)> serve)
    : m_path(PathOf(pipe)),
      m_pipe(OwnHandle(CreateNamedPipeW(m_path.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_FIRST_PIPE_INSTANCE,
                                        PIPE_TYPE_BYTE, 1, kChunkBytes, kChunkBytes, 0, nullptr))) {
  EXPECT_TRUE(m_pipe);
  m_thread = std::jthread([this, serve = std::move(serve)] {
    const bool connected = ConnectNamedPipe(m_pipe.get(), nullptr) || GetLastError() == ERROR_PIPE_CONNECTED;
    if (connected) serve(m_pipe.get());
    FlushFileBuffers(m_pipe.get());  // the other side must read everything before the connection ends
    m_pipe.reset();
  });
}

RawServer::~RawServer() {
  // Ends the wait of the server thread if nothing has connected.
  OwnHandle(CreateFileW(m_path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

void WriteAll(HANDLE pipe, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kChunkBytes));
    if (!WriteFile(pipe, bytes.data(), size, &written, nullptr)) return;
    bytes.remove_prefix(written);
  }
}

std::string ReadBytes(HANDLE pipe, std::size_t count) {
  std::string bytes(count, '\0');
  std::size_t had = 0;
  while (had < count) {
    DWORD read = 0;
    const auto size = static_cast<DWORD>(std::min(count - had, kChunkBytes));
    if (!ReadFile(pipe, bytes.data() + had, size, &read, nullptr)) break;
    had += read;
  }
  bytes.resize(had);
  return bytes;
}

UniqueHandle OpenPipe(const std::wstring& pipe) {
  return OwnHandle(
      CreateFileW(PathOf(pipe).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}
