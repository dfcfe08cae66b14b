#include "pipe_owner.h"

#include <aclapi.h>
#include <sddl.h>

#include <vector>

#include "base/local_memory.h"
#include "base/unique_handle.h"
#include "system_failure.h"

namespace invoker {
namespace {

/// One kind of information about the token of this process.
template <class Information>
class TokenInformation {
 public:
  explicit TokenInformation(TOKEN_INFORMATION_CLASS kind) {
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) throw Failure();
    const UniqueHandle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.get(), kind, nullptr, 0, &size);
    m_buffer.resize(size);
    if (!GetTokenInformation(token.get(), kind, m_buffer.data(), size, &size)) throw Failure();
  }

  const Information* operator->() const { return reinterpret_cast<const Information*>(m_buffer.data()); }

 private:
  static NoAnswer Failure() { return SystemFailure(L"the user of this process cannot be determined"); }

  std::vector<std::byte> m_buffer;
};

using TokenUserInformation = TokenInformation<TOKEN_USER>;
using TokenOwnerInformation = TokenInformation<TOKEN_OWNER>;

/// The owner of a pipe.
class PipeOwner {
 public:
  explicit PipeOwner(HANDLE pipe) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    m_error = GetSecurityInfo(pipe, SE_KERNEL_OBJECT, OWNER_SECURITY_INFORMATION, &m_sid, nullptr, nullptr,
                              nullptr, &descriptor);
    m_descriptor.reset(descriptor);
  }

  /// The system's code if it does not report the owner, else ERROR_SUCCESS.
  DWORD Error() const { return m_error; }

  /// Null if the pipe has no owner.
  PSID Sid() const { return m_sid; }

 private:
  DWORD m_error;
  PSID m_sid = nullptr;  // within m_descriptor
  LocalMemory<void> m_descriptor;
};

/// Whether the system gives this process's new pipes no owner.
///
/// Windows gives every pipe one. Measured with Wine 8: an object that is made without a security descriptor
/// never has an owner, whichever process, thread or token made it; with a descriptor, even an empty one, it
/// always has one. There this says nothing about who made the pipe, but only this user's processes can: Wine
/// shows the objects of one user to no other.
bool NewPipesHaveNoOwner() {
  HANDLE read = nullptr, write = nullptr;
  if (!CreatePipe(&read, &write, nullptr, 0)) return false;
  const UniqueHandle reading(read), writing(write);
  const PipeOwner owner(read);
  return owner.Error() == ERROR_SUCCESS && !owner.Sid();
}

}  // namespace

std::wstring UserSidText() {
  const TokenUserInformation user(TokenUser);
  wchar_t* text = nullptr;
  if (!ConvertSidToStringSidW(user->User.Sid, &text))
    throw SystemFailure(L"the user's SID cannot be converted to text");
  const LocalMemory<wchar_t> owned(text);
  return text;
}

std::wstring DefaultPipe() { return L"tavo-plm-client-" + UserSidText(); }

bool IsTrustedOwner(PSID owner, PSID user, PSID default_owner) {
  return owner && (EqualSid(owner, user) || EqualSid(owner, default_owner));
}

void CheckPipeOwner(HANDLE pipe) {
  const PipeOwner owner(pipe);
  if (owner.Error() != ERROR_SUCCESS) {
    throw PipeFailure(L"the owner of the pipe cannot be determined", owner.Error());
  }
  if (!owner.Sid()) {
    if (NewPipesHaveNoOwner()) return;
    throw ClientNotReached{{L"the pipe has no owner"}};
  }
  const TokenUserInformation user(TokenUser);
  const TokenOwnerInformation default_owner(TokenOwner);
  if (!IsTrustedOwner(owner.Sid(), user->User.Sid, default_owner->Owner)) {
    throw ClientNotReached{{L"the pipe belongs to another user"}};
  }
}

void CheckPipeSession(HANDLE pipe) {
  ULONG of_server = 0;
  DWORD own = 0;
  if (!GetNamedPipeServerSessionId(pipe, &of_server) || !ProcessIdToSessionId(GetCurrentProcessId(), &own)) {
    return;
  }
  if (of_server != own) throw ClientNotReached{{L"the pipe is served in another terminal session"}};
}

}  // namespace invoker
