#include "invoker_fixture.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <sstream>

#include "CStringHelper.h"
#include "plm_client/json_text.h"

namespace {

constexpr wchar_t kConfigurationFile[] = LR"(config\Test\PlmClient.json)";
constexpr wchar_t kLogFile[] = L"test.log";
constexpr std::string_view kLogProperties =
    "log4cplus.rootLogger=INFO, file\n"
    "log4cplus.appender.file=log4cplus::FileAppender\n"
    "log4cplus.appender.file.File=${LogFolder}\\\\test.log\n"
    "log4cplus.appender.file.layout=log4cplus::PatternLayout\n"
    "log4cplus.appender.file.layout.ConversionPattern=%p %c|%m%n\n";
constexpr std::wstring_view kPlatformHead = L"ERROR platform|";

std::wstring NewPipeName() {
  static std::atomic<int> count = 0;
  return L"tavo-test-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}

std::vector<std::wstring> LinesOfPlatform(std::string_view log) {
  std::vector<std::wstring> lines;
  std::wistringstream text(CStringHelper::UTF8ToUnicode(log));
  for (std::wstring line; std::getline(text, line);) {
    if (line.ends_with(L'\r')) line.pop_back();
    if (line.starts_with(kPlatformHead)) lines.push_back(line.substr(kPlatformHead.size()));
  }
  return lines;
}

}  // namespace

InvokerFixture::InvokerFixture() : m_pipe(NewPipeName()), m_home(L"TAVO_HOME", m_folder.Path()) {
  const std::wstring properties = m_folder.Write(L"Log4cplus.properties", kLogProperties);
  EXPECT_TRUE(m_log.Initialize(m_folder.Path(), L"test", properties));
}

void InvokerFixture::Configure(std::string_view json) const { m_folder.Write(kConfigurationFile, json); }

void InvokerFixture::ConfigurePipe(std::string_view further_members) const {
  const std::string name = plm_client::JsonString(CStringHelper::UnicodeToUTF8(m_pipe));
  Configure("{\"pipe\":" + name + std::string(further_members) + "}");
}

void InvokerFixture::StartClient(plm_client::Settings settings) {
  ConfigurePipe();
  settings.pipe = m_pipe;
  m_client.emplace(settings, std::ref(m_script));
}

void InvokerFixture::StartClient(plm_client::Client::Handler handler) {
  ConfigurePipe();
  m_client.emplace(plm_client::Settings{.pipe = m_pipe}, std::move(handler));
}

void InvokerFixture::AwaitOpenConnections(int count) const {
  for (int i = 0; i < 100 && m_client->OpenConnectionCount() != count; ++i) Sleep(10);
  EXPECT_EQ(m_client->OpenConnectionCount(), count);
}

std::vector<std::wstring> InvokerFixture::PlatformLines() const {
  return m_folder.Exists(kLogFile) ? LinesOfPlatform(m_folder.Read(kLogFile)) : std::vector<std::wstring>();
}

std::vector<std::wstring> InvokerFixture::NewPlatformLines() {
  std::ifstream log(m_folder.Path(kLogFile).c_str(), std::ios::binary);
  log.seekg(static_cast<std::streamoff>(m_logRead));
  const std::string bytes{std::istreambuf_iterator<char>(log), {}};
  m_logRead += bytes.size();
  return LinesOfPlatform(bytes);
}

void InvokerFixture::ExpectOneLine(const std::wstring& command, const std::wstring& reason) {
  const std::vector<std::wstring> lines = NewPlatformLines();
  ASSERT_EQ(lines.size(), 1u) << testing::PrintToString(lines);
  EXPECT_TRUE(lines.back().starts_with(L"PLM command [" + command + L"] got no answer: ") &&
              lines.back().find(reason) != std::wstring::npos)
      << testing::PrintToString(lines.back());
}
