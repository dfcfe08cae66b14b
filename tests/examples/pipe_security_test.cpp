// Who may open the pipe of the example client that sets an access list.
#include <windows.h>

#include <aclapi.h>
#include <gtest/gtest.h>
#include <sddl.h>

#include <string>

#include "CStringHelper.h"
#include "base/local_memory.h"
#include "example_client.h"
#include "host.h"
#include "plm_client/client.h"

namespace {

/// The security of a pipe as the system reports it.
class PipeSecurity {
 public:
  explicit PipeSecurity(HANDLE pipe) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(GetSecurityInfo(pipe, SE_KERNEL_OBJECT, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                              &m_owner, nullptr, &m_list, nullptr, &descriptor),
              DWORD{ERROR_SUCCESS});
    m_descriptor.reset(descriptor);
  }

  std::wstring Owner() const { return TextOf(m_owner); }

  /// The entries, each as "allow MASK SID"; other kinds of entries by the number of their kind.
  std::vector<std::string> Entries() const {
    std::vector<std::string> entries;
    for (DWORD place = 0; m_list && place < m_list->AceCount; ++place) {
      void* entry = nullptr;
      GetAce(m_list, place, &entry);
      entries.push_back(TextOf(*static_cast<ACCESS_ALLOWED_ACE*>(entry)));
    }
    return entries;
  }

  /// Whether nothing can be inherited into the list.
  bool IsProtected() const {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(m_descriptor.get(), &control, &revision);
    return (control & SE_DACL_PROTECTED) != 0;
  }

 private:
  static std::wstring TextOf(PSID sid) {
    wchar_t* text = nullptr;
    if (!sid || !ConvertSidToStringSidW(sid, &text)) return L"none";
    const LocalMemory<wchar_t> owned(text);
    return text;
  }

  static std::string TextOf(const ACCESS_ALLOWED_ACE& entry) {
    if (entry.Header.AceType != ACCESS_ALLOWED_ACE_TYPE) return std::to_string(entry.Header.AceType);
    auto* const sid = reinterpret_cast<const DWORD*>(&entry.SidStart);
    return "allow " + std::to_string(entry.Mask) + " " +
           CStringHelper::UnicodeToUTF8(TextOf(const_cast<DWORD*>(sid)));
  }

  PSID m_owner = nullptr;  // these two lie in m_descriptor
  PACL m_list = nullptr;
  LocalMemory<void> m_descriptor;
};

/// The SID in the name of the pipe on which the add-in looks for the client of this user.
std::wstring UserSid() {
  const std::wstring name = plm_client::DefaultPipeName();
  return name.substr(name.find(L"S-1-"));
}

TEST(GoExamplePipe, BelongsToTheUserAndAdmitsNobodyElse) {
  const ExampleClient client(GoExample());
  const Host first = ConnectWhenServed(client.Pipe()), second = ConnectWhenServed(client.Pipe());
  for (const Host* instance : {&first, &second}) {
    const PipeSecurity security(instance->Pipe());
    EXPECT_EQ(security.Owner(), UserSid());
    EXPECT_EQ(security.Entries(), std::vector{"allow " + std::to_string(FILE_ALL_ACCESS) + " " +
                                              CStringHelper::UnicodeToUTF8(UserSid())});
    EXPECT_TRUE(security.IsProtected());
  }
}

}  // namespace
