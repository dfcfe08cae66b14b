/// @file The add-in in the simulated host, with the simulated PLM client at the other end of the pipe.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cad_host/host.h"
#include "message_boxes.h"
#include "module/add_in_dll.h"
#include "platform_home.h"
#include "plm_client/client.h"
#include "plm_client/script.h"
#include "solidworks_add_in_h.h"

_COM_SMARTPTR_TYPEDEF(ISolidWorksAddIn, __uuidof(ISolidWorksAddIn));

/// A session: the DLL is loaded and registered, the PLM client serves its pipe, the host runs. The add-in is
/// connected when a test says so. At the end the add-in is disconnected, and the test fails on a reference
/// to the host that is still held, and on a temporary file that is still there.
class AddInTest : public testing::Test {
 protected:
  /// What the PLM client answers to a login unless a test says otherwise.
  static constexpr const char* kLoginAnswer = R"({"__InvokeResult__":true,"user":"Müller 王","id":7})";

  AddInTest();
  ~AddInTest() override;
  void TearDown() override;

  /// Connects the registered add-in.
  void Connect();

  /// Connects, logs in, and forgets what the journal, the log and the PLM client have seen of that.
  void ConnectAndLogIn();

  /// Disconnects and releases. @return whether the add-in called itself disconnected.
  bool Disconnect();

  /// Makes the host another one, such as one of another revision; the state folder stays.
  void RestartHost(const std::wstring& revision = L"31.0.0");

  /// Starts another PLM client, which answers as `handler` says, in the place of the one that does what the
  /// test has laid down.
  void ServeWith(plm_client::Client::Handler handler);

  /// Stops the PLM client.
  void StopClient() { m_client.reset(); }

  /// The user picks the menu item with this callback. Fails the test where the item is greyed out.
  cad_host::PickResult Pick(const std::wstring& callback);

  /// The add-in's own interface, not through the host.
  ISolidWorksAddInPtr Object() const;

  /// What the enable method of `callback` writes, asked through the add-in's own interface.
  long Enabled(const std::wstring& enable_method) const;

  /// Answers every call of `command` with the text.
  void Answer(const std::string& command, std::string_view text);

  /// The requests since ConnectAndLogIn, as "COMMAND TEXT".
  std::vector<std::string> Asked() const;

  /// What the add-in called of the host since the journal was cleared: "Interface::Method(arguments)".
  std::vector<std::wstring> HostCalls() const;

  /// A model file in the session's folder. @return its path.
  std::wstring MakeModel(const std::wstring& name, const cad_host::ModelFile& model = {}) const;

  std::vector<std::wstring> AddInLog() const { return m_home.AddInLogLines(); }
  std::vector<std::wstring> PlatformLog() const { return m_home.PlatformLogLines(); }

  PlatformHome& m_home;
  TempFolder m_folder;
  plm_client::Script m_script;
  std::unique_ptr<plm_client::Client> m_client;
  std::unique_ptr<cad_host::Host> m_host;
  cad_host::AddIn* m_addIn = nullptr;
  std::optional<MessageBoxRecorder> m_boxes;

 private:
  std::size_t m_seenRequests = 0;
};

/// `text` as UTF-8 for a failure message.
std::string Utf8(std::wstring_view text);
