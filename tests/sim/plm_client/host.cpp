#include "host.h"

#include <gtest/gtest.h>

#include <atomic>

#include "plm_client/json_text.h"

Host::Host(const std::wstring& pipe)
    : m_pipe(OwnHandle(CreateFileW((LR"(\\.\pipe\)" + pipe).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                   OPEN_EXISTING, 0, nullptr))) {}

void Host::Send(std::string_view bytes) const {
  DWORD written = 0;
  WriteFile(m_pipe.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

std::string Host::Receive(std::size_t count) const {
  std::string bytes(count, '\0');
  std::size_t had = 0;
  DWORD read = 0;
  while (had < count &&
         ReadFile(m_pipe.get(), bytes.data() + had, static_cast<DWORD>(count - had), &read, nullptr)) {
    had += read;
  }
  bytes.resize(had);
  return bytes;
}

std::string Host::ReceiveContent() const {
  std::string header;
  while (!header.ends_with("\r\n\r\n")) {
    const std::string next = Receive(1);
    if (next.empty()) return "closed";
    header += next;
  }
  return Receive(std::stoul(header.substr(header.find(':') + 1)));
}

std::string Host::Ask(int id, const std::string& command, const std::string& request) const {
  Send(Frame("{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(id) +
             ",\"method\":\"invoke\",\"params\":{\"command\":" + plm_client::JsonString(command) +
             ",\"request\":" + plm_client::JsonString(request) + "}}"));
  return ReceiveContent();
}

Host ConnectWhenServed(const std::wstring& pipe) {
  Host host(pipe);
  for (int tries = 0; tries < 1000 && !host.IsConnected(); ++tries) {
    Sleep(10);
    host = Host(pipe);
  }
  EXPECT_TRUE(host.IsConnected());
  return host;
}

std::string Frame(std::string_view content) {
  return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + std::string(content);
}

std::wstring NewPipeName() {
  static std::atomic<int> count = 0;
  return L"tavo-client-test-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}
