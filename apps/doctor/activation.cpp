#include "activation.h"

#include <objbase.h>

#include <array>
#include <cstdlib>

#include "base/com_pointers.h"
#include "base/hex_code.h"
#include "base/unique_handle.h"

namespace doctor {
namespace {

constexpr char kCreated[] = "result ";

/// A pipe for the output of a process.
class OutputPipe {
 public:
  OutputPipe() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE read = nullptr, write = nullptr;
    if (!CreatePipe(&read, &write, &inherited, 0)) return;
    m_read.reset(read);
    m_write.reset(write);
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  }

  HANDLE WriteEnd() const { return m_write.get(); }

  /// What the process has written. It must have ended.
  std::string Read() {
    m_write.reset();
    std::string text;
    std::array<char, 256> part{};
    DWORD count = 0;
    while (ReadFile(m_read.get(), part.data(), static_cast<DWORD>(part.size()), &count, nullptr) &&
           count > 0) {
      text.append(part.data(), count);
    }
    return text;
  }

 private:
  UniqueHandle m_read, m_write;
};

/// Null, with the reason as the last error, if it cannot be started.
UniqueHandle Start(const std::wstring& program, REFCLSID id, HANDLE output) {
  wchar_t class_id[39];
  StringFromGUID2(id, class_id, static_cast<int>(std::size(class_id)));
  std::wstring command_line = L"\"" + program + L"\" " + kCreateOption + L" " + class_id;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program.c_str(), command_line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                      nullptr, &startup, &process)) {
    return nullptr;
  }
  OwnHandle(process.hThread);
  return OwnHandle(process.hProcess);
}

}  // namespace

Activation CreateInOwnProcess(const std::wstring& program, REFCLSID id, std::chrono::milliseconds timeout) {
  OutputPipe output;
  const UniqueHandle process = Start(program, id, output.WriteEnd());
  if (!process) return {ActivationEnd::kNotStarted, static_cast<long>(GetLastError())};
  if (WaitForSingleObject(process.get(), static_cast<DWORD>(timeout.count())) != WAIT_OBJECT_0) {
    TerminateProcess(process.get(), 1);
    WaitForSingleObject(process.get(), INFINITE);
    return {ActivationEnd::kHung, 0};
  }
  DWORD exit_code = 0;
  GetExitCodeProcess(process.get(), &exit_code);
  const std::string text = output.Read();
  const std::size_t at = text.find(kCreated);
  if (exit_code != 0 || at == std::string::npos) {
    return {ActivationEnd::kCrashed, static_cast<long>(exit_code)};
  }
  const auto result = static_cast<long>(std::strtoul(text.c_str() + at + sizeof kCreated - 1, nullptr, 16));
  return {SUCCEEDED(result) ? ActivationEnd::kCreated : ActivationEnd::kRefused, result};
}

int CreateAndPrint(const std::wstring& id) {
  // A crash ends the process without a box.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  CLSID class_id{};
  HRESULT result = CLSIDFromString(id.c_str(), &class_id);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  IUnknownPtr created;
  if (SUCCEEDED(result)) {
    result = CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                              reinterpret_cast<void**>(&created));
  }
  std::string line = kCreated;
  for (const wchar_t digit : HexCode(result)) line += static_cast<char>(digit);
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  created = nullptr;  // before COM ends
  CoUninitialize();
  return 0;
}

}  // namespace doctor
