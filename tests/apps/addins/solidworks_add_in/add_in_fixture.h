/// @file The add-in in the simulated host, connected to the simulated PLM client.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cad_host/host.h"
#include "message_boxes.h"
#include "module/add_in_dll.h"
#include "platform_home.h"
#include "plm_client/client.h"
#include "plm_client/script.h"
#include "solidworks_add_in_h.h"

_COM_SMARTPTR_TYPEDEF(ISolidWorksAddIn, __uuidof(ISolidWorksAddIn));

using Texts = std::vector<std::wstring>;
using Requests = std::vector<std::string>;

/// A command as a method of the add-in's own interface.
struct DirectCommand {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE ISolidWorksAddIn::*method)();
};

inline constexpr DirectCommand kAllCommands[] = {
    {L"PlmLogin", &ISolidWorksAddIn::PlmLogin},
    {L"PlmLogOut", &ISolidWorksAddIn::PlmLogOut},
    {L"OpenDataSelector", &ISolidWorksAddIn::OpenDataSelector},
    {L"PlmMyCheckOutList", &ISolidWorksAddIn::PlmMyCheckOutList},
    {L"PlmWf", &ISolidWorksAddIn::PlmWf},
    {L"PlmCode", &ISolidWorksAddIn::PlmCode},
    {L"PlmQuery", &ISolidWorksAddIn::PlmQuery},
    {L"PlmImportCurrent", &ISolidWorksAddIn::PlmImportCurrent},
    {L"PlmLotimport", &ISolidWorksAddIn::PlmLotimport},
    {L"PlmCreateMaterial", &ISolidWorksAddIn::PlmCreateMaterial},
    {L"PlmMyTempMaterial", &ISolidWorksAddIn::PlmMyTempMaterial},
    {L"PlmTaskManage", &ISolidWorksAddIn::PlmTaskManage},
    {L"PlmMaterialBackFill", &ISolidWorksAddIn::PlmMaterialBackFill},
    {L"PlmImportChangeItem", &ISolidWorksAddIn::PlmImportChangeItem},
};

/// The commands that send the answer to the login.
inline constexpr DirectCommand kCommandsWithLogin[] = {
    {L"OpenDataSelector", &ISolidWorksAddIn::OpenDataSelector},
    {L"PlmQuery", &ISolidWorksAddIn::PlmQuery},
    {L"PlmTaskManage", &ISolidWorksAddIn::PlmTaskManage},
    {L"PlmMaterialBackFill", &ISolidWorksAddIn::PlmMaterialBackFill},
    {L"PlmWf", &ISolidWorksAddIn::PlmWf},
    {L"PlmCode", &ISolidWorksAddIn::PlmCode},
};

/// The DLL is loaded and registered, the PLM client serves its pipe, the host runs. A test connects the
/// add-in itself. At the end the add-in is disconnected, and the test fails if a reference to the host is
/// still held or a temporary file still exists.
class AddInFixture : public testing::Test {
 protected:
  /// The PLM client's answer to a login, unless a test sets another one.
  static constexpr const char* kLoginAnswer = R"({"__InvokeResult__":true,"user":"Müller 王","id":7})";

  AddInFixture();
  ~AddInFixture() override;
  void TearDown() override;

  /// Connects the registered add-in.
  void Connect();

  /// Connects the registered add-in, which may fail.
  /// @return S_OK, or the failing result of ConnectToSW, which reported that it is not connected.
  HRESULT TryToConnect();

  /// Connects and logs in, then clears the journal and the requests that Asked returns.
  void ConnectAndLogIn();

  /// Disconnects and releases the add-in. @return whether it reported that it is disconnected.
  bool Disconnect();

  /// Disconnects the add-in's object, which the host does not release. @return whether it reported that it is
  /// disconnected.
  bool DisconnectObject() const;

  /// Connects the same object again. @return whether it reported that it is connected.
  bool ReconnectObject() const;

  /// Removes the add-in's command group, because the host refuses two groups with one id: the object can then
  /// connect again without disconnecting.
  void RemoveCommandGroup() const;

  /// Starts a new host, with the same state folder, in place of the running one.
  void RestartHost(const std::wstring& revision = L"31.0.0");

  /// Starts a PLM client that answers with `handler`, in place of the running one.
  void ServeWith(plm_client::Client::Handler handler);

  /// Stops the PLM client.
  void StopClient() { m_client.reset(); }

  /// The user picks the menu item with this callback. The test fails if the item is greyed out.
  cad_host::PickResult Pick(const std::wstring& callback);

  /// The add-in's own interface, for calls that do not go through the host.
  ISolidWorksAddInPtr Object() const;

  /// Calls `command` of `object`, not through the host. Its exception ends there: it returns `code`, and one
  /// error line of the platform names the method and the code.
  void ExpectEndedException(const ISolidWorksAddInPtr& object, const DirectCommand& command,
                            HRESULT code) const;

  /// The status that an enable method returns, called by its name.
  long Enabled(const std::wstring& enable_method) const;

  /// The PLM client answers every call of `command` with `text`.
  void Answer(const std::string& command, std::string_view text);

  /// The requests since ConnectAndLogIn, as "COMMAND TEXT".
  Requests Asked() const;

  /// The add-in's calls of the host since the journal was cleared, as "Interface::Method(arguments)".
  Texts HostCalls() const;

  /// The same calls as "Interface::Method".
  Texts CalledMethods() const;

  /// Writes a model file into m_folder. @return its path.
  std::wstring MakeModel(const std::wstring& name, const cad_host::ModelFile& model = {}) const;

  Texts AddInLog() const { return m_home.AddInLogLines(); }
  Texts PlatformLog() const { return m_home.PlatformLogLines(); }

  /// The only line of PlatformLog, which is an error; empty after a test failure.
  std::wstring PlatformError() const;

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

/// `text` as UTF-8.
std::string Utf8(std::wstring_view text);

/// `text` as JSON writes it within quotes, for texts without control characters.
std::string JsonEscaped(std::wstring_view text);

/// A member of an answer, and the files that it names.
using NamedFiles = std::pair<const char*, Texts>;

/// An answer of the PLM client that names files; its members are in the given order.
std::string FilesAnswer(const std::vector<NamedFiles>& members);
