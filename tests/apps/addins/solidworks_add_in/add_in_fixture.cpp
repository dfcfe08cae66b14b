#include "add_in_fixture.h"

#include "CStringHelper.h"
#include "base/hex_code.h"
#include "host/command_manager.h"

namespace {

// The DLL stays loaded for the whole program, as it does in the host.
const AddInDll& RegisteredDll() {
  static const AddInDll dll;
  static const HRESULT registered = dll.RegisterServer();
  EXPECT_EQ(registered, S_OK);
  return dll;
}

std::wstring PipeName() { return L"tavo-add-in-test-" + std::to_wstring(GetCurrentProcessId()); }

}  // namespace

std::string Utf8(std::wstring_view text) { return CStringHelper::UnicodeToUTF8(text); }

std::string JsonEscaped(std::wstring_view text) {
  std::string escaped;
  for (const char character : Utf8(text)) {
    if (character == '\\' || character == '"') escaped += '\\';
    escaped += character;
  }
  return escaped;
}

std::string FilesAnswer(const std::vector<NamedFiles>& members) {
  std::string answer;
  for (const auto& [member, paths] : members) {
    std::string list;
    for (const std::wstring& path : paths) list += (list.empty() ? "\"" : ",\"") + JsonEscaped(path) + "\"";
    answer += (answer.empty() ? "\"" : ",\"") + std::string(member) + "\":[" + list + "]";
  }
  return "{" + answer + "}";
}

AddInFixture::AddInFixture() : m_home(PlatformHome::Instance()) {
  RegisteredDll();
  m_home.Reset();
  m_home.WriteConfiguration(L"PlmClient.json", R"({"pipe":")" + Utf8(PipeName()) + R"("})");
  m_script.Always("QD_PLMLogin", plm_client::Reply::Text(kLoginAnswer));
  m_script.Always("QD_PLMLogout", plm_client::Reply::Text(R"({"__InvokeResult__":true})"));
  ServeWith(std::ref(m_script));
  RestartHost();
  m_boxes.emplace();
}

AddInFixture::~AddInFixture() = default;

void AddInFixture::TearDown() {
  if (m_addIn) Disconnect();
  for (const auto& held : m_host->HeldReferences()) {
    ADD_FAILURE() << "still held " << held.count << " times: " << Utf8(held.object);
  }
  EXPECT_EQ(m_host->AdvisedSinks(), 0u);
  for (const std::wstring& fault : m_host->GetFaults().Unused()) {
    ADD_FAILURE() << "a fault that did not happen: " << Utf8(fault);
  }
  EXPECT_EQ(m_home.IconFiles(), Texts{});
}

void AddInFixture::Connect() { m_addIn = &m_host->Connect(L"TAVO SolidWorks Integration"); }

HRESULT AddInFixture::TryToConnect() {
  try {
    Connect();
    return S_OK;
  } catch (const cad_host::HostError& error) {
    const auto connects = m_host->GetJournal().Of(L"ISwAddin::ConnectToSW");
    if (connects.size() != 1) {
      ADD_FAILURE() << error.what();
      return error.Result();
    }
    EXPECT_EQ(connects[0].result, error.Result());
    EXPECT_TRUE(FAILED(error.Result())) << error.what();
    EXPECT_EQ(connects[0].results, L"false");
    return error.Result();
  }
}

void AddInFixture::ConnectAndLogIn() {
  Connect();
  ASSERT_TRUE(Pick(L"PlmLogin").Succeeded());
  m_host->GetJournal().Clear();
  m_seenRequests = m_client->Requests().size();
}

bool AddInFixture::Disconnect() { return m_host->Disconnect(*std::exchange(m_addIn, nullptr)); }

bool AddInFixture::DisconnectObject() const {
  VARIANT_BOOL disconnected = VARIANT_FALSE;
  EXPECT_EQ(m_addIn->object->DisconnectFromSW(&disconnected), S_OK);
  return disconnected != VARIANT_FALSE;
}

bool AddInFixture::ReconnectObject() const {
  VARIANT_BOOL connected = VARIANT_FALSE;
  EXPECT_EQ(m_addIn->object->ConnectToSW(m_host->Application(), m_addIn->cookie, &connected), S_OK);
  return connected != VARIANT_FALSE;
}

void AddInFixture::RemoveCommandGroup() const {
  ICommandManagerPtr manager;
  m_host->Application()->GetCommandManager(m_addIn->cookie, &manager);
  VARIANT_BOOL removed = VARIANT_FALSE;
  manager->RemoveCommandGroup(0, &removed);
  EXPECT_TRUE(removed);
}

void AddInFixture::ServeWith(plm_client::Client::Handler handler) {
  m_client.reset();  // two cannot serve one pipe
  m_client =
      std::make_unique<plm_client::Client>(plm_client::Settings{.pipe = PipeName()}, std::move(handler));
  m_seenRequests = 0;
}

void AddInFixture::RestartHost(const std::wstring& revision) {
  m_addIn = nullptr;
  m_host.reset();
  m_host = std::make_unique<cad_host::Host>(
      cad_host::HostOptions{.state_folder = m_folder.Path(), .revision = revision});
}

cad_host::PickResult AddInFixture::Pick(const std::wstring& callback) {
  const cad_host::PickResult result = m_host->Pick(*m_addIn, callback);
  EXPECT_TRUE(result.enabled) << Utf8(callback) << " is greyed out";
  return result;
}

ISolidWorksAddInPtr AddInFixture::Object() const { return m_addIn->object; }

void AddInFixture::ExpectEndedException(const ISolidWorksAddInPtr& object, const DirectCommand& command,
                                        HRESULT code) const {
  const std::wstring name = command.name;
  const Texts before = PlatformLog();

  EXPECT_EQ((object.GetInterfacePtr()->*command.method)(), code) << Utf8(name);

  const Texts lines = PlatformLog();
  ASSERT_EQ(lines.size(), before.size() + 1) << Utf8(name);
  EXPECT_TRUE(lines.back().starts_with(L"platform|ERROR|")) << Utf8(lines.back());
  EXPECT_NE(lines.back().find(L"|ISolidWorksAddIn::" + name + L" raised " + HexCode(code)),
            std::wstring::npos)
      << Utf8(lines.back());
}

std::wstring AddInFixture::PlatformError() const {
  const Texts lines = PlatformLog();
  EXPECT_EQ(lines.size(), 1u);
  if (lines.size() != 1) return {};
  EXPECT_TRUE(lines[0].starts_with(L"platform|ERROR|")) << Utf8(lines[0]);
  return lines[0];
}

long AddInFixture::Enabled(const std::wstring& enable_method) const {
  const ISolidWorksAddInPtr object = Object();
  std::wstring name = enable_method;
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id), S_OK) << Utf8(enable_method);
  long status = -1;
  VARIANTARG argument{};
  argument.vt = VT_I4 | VT_BYREF;
  argument.plVal = &status;
  DISPPARAMS parameters{&argument, nullptr, 1, 0};
  EXPECT_EQ(
      object->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
      S_OK);
  return status;
}

void AddInFixture::Answer(const std::string& command, std::string_view text) {
  m_script.Always(command, plm_client::Reply::Text(std::string(text)));
}

Requests AddInFixture::Asked() const {
  Requests asked;
  const auto requests = m_client->Requests();
  for (std::size_t index = m_seenRequests; index < requests.size(); ++index) {
    asked.push_back(requests[index].command + " " + requests[index].text);
  }
  return asked;
}

Texts AddInFixture::HostCalls() const {
  Texts calls;
  for (const auto& call : m_host->GetJournal().Calls()) {
    calls.push_back(call.method + L"(" + call.arguments + L")");
  }
  return calls;
}

Texts AddInFixture::CalledMethods() const {
  Texts methods;
  for (const auto& call : m_host->GetJournal().Calls()) methods.push_back(call.method);
  return methods;
}

std::wstring AddInFixture::MakeModel(const std::wstring& name, const cad_host::ModelFile& model) const {
  const std::wstring path = m_folder.Path(name);
  cad_host::ModelFile typed = model;
  if (const auto type = cad_host::DocumentTypeOfName(name); type != swDocNONE) typed.type = type;
  cad_host::WriteModelFile(path, typed);
  return path;
}
