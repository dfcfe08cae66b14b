#include "pipe_instance.h"

#include <sddl.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "CStringHelper.h"
#include "plm_client/client.h"

namespace plm_client {
namespace {

constexpr DWORD kBufferBytes = 64 * 1024;

struct LocalMemory {
  void operator()(void* memory) const noexcept { LocalFree(memory); }
};

[[noreturn]] void Fail(const std::string& what) {
  throw std::runtime_error(what + " (error " + std::to_string(GetLastError()) + ")");
}

std::wstring UserSid() {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) {
    Fail("the current user cannot be determined");
  }
  const UniqueHandle token(opened);
  DWORD size = 0;
  GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
  std::vector<std::byte> user(size);
  wchar_t* text = nullptr;
  if (!GetTokenInformation(token.get(), TokenUser, user.data(), size, &size) ||
      !ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid, &text)) {
    Fail("the current user cannot be determined");
  }
  const std::unique_ptr<wchar_t, LocalMemory> owned(text);
  return text;
}

/// The current user owns the pipe and has full access; nobody else has any access.
std::wstring SecurityForCurrentUser() { return L"O:" + UserSid() + L"D:P(A;;GA;;;" + UserSid() + L")"; }

}  // namespace

std::wstring DefaultPipeName() { return L"tavo-plm-client-" + UserSid(); }

UniqueHandle MakePipeInstance(const std::wstring& path, const std::wstring& security, unsigned instances,
                              bool first) {
  SECURITY_ATTRIBUTES attributes{sizeof(attributes), nullptr, FALSE};
  const std::wstring text = security.empty() ? SecurityForCurrentUser() : security;
  if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1,
                                                            &attributes.lpSecurityDescriptor, nullptr)) {
    Fail("the security descriptor " + CStringHelper::UnicodeToUTF8(text) + " is not valid");
  }
  const std::unique_ptr<void, LocalMemory> owned(attributes.lpSecurityDescriptor);
  const DWORD mode = PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | (first ? FILE_FLAG_FIRST_PIPE_INSTANCE : 0);
  UniqueHandle pipe =
      OwnHandle(CreateNamedPipeW(path.c_str(), mode, PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, instances,
                                 kBufferBytes, kBufferBytes, 0, &attributes));
  if (!pipe) Fail("the pipe " + CStringHelper::UnicodeToUTF8(path) + " cannot be made");
  return pipe;
}

}  // namespace plm_client
