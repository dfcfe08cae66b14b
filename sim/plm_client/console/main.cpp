// A PLM client without a person, for demonstrations and for trying a host out by hand.
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <memory>
#include <mutex>
#include <stdexcept>

#include "CStringHelper.h"
#include "base/unique_handle.h"
#include "options.h"
#include "plm_client/answer_folder.h"
#include "plm_client/client.h"
#include "plm_client/json_text.h"

namespace {

constexpr DWORD kCheckInterval = 100;  // milliseconds

HANDLE StopEvent() {
  static const UniqueHandle event = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  return event.get();
}

BOOL WINAPI Stop(DWORD) { return SetEvent(StopEvent()); }

std::vector<std::wstring> Arguments() {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
      CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  return {arguments.get() + 1, arguments.get() + count};
}

/// `text` on one line, without the blanks that begin its lines, shortened if it is long.
std::string Excerpt(const std::string& text) {
  constexpr std::size_t kLongest = 400;
  if (text.empty()) return "nothing";
  std::string line;
  bool at_begin = false;
  for (const char character : text.substr(0, kLongest)) {
    const bool breaks = character == '\n' || character == '\r';
    at_begin = breaks || (at_begin && character == ' ');
    if (!at_begin) line += character;
  }
  return text.size() > kLongest ? line + "... (" + std::to_string(text.size()) + " bytes)" : line;
}

/// Answers from the folder; prints and records the requests.
class FolderHandler {
 public:
  explicit FolderHandler(const Options& options) : m_answers(options.answers), m_quiet(options.quiet) {
    if (options.record.empty()) return;
    m_record.open(options.record, std::ios::binary | std::ios::app);
    if (!m_record) throw std::runtime_error(options.record.string() + " cannot be written");
  }

  /// Requests wait while the lock exists.
  std::unique_lock<std::mutex> HoldRequests() { return std::unique_lock(m_mutex); }

  plm_client::Reply Handle(const plm_client::Request& request) {
    const plm_client::FiledAnswer answer = m_answers.Next(request.command, request.connection);
    const std::lock_guard lock(m_mutex);
    Record(request);
    if (!m_quiet) Print(request, answer);
    return plm_client::Reply::Text(answer.text);
  }

 private:
  void Record(const plm_client::Request& request) {
    if (!m_record.is_open()) return;
    m_record << "{\"command\":" << plm_client::JsonString(request.command)
             << ",\"request\":" << plm_client::JsonString(request.text) << "}\n"
             << std::flush;
  }

  void Print(const plm_client::Request& request, const plm_client::FiledAnswer& answer) const {
    const std::string source = answer.file.empty() ? "" : ", from " + answer.file;
    std::printf("    PLM client asked: %s with %s\n    PLM client answers%s: %s\n", request.command.c_str(),
                Excerpt(request.text).c_str(), source.c_str(), Excerpt(answer.text).c_str());
    std::fflush(stdout);
  }

  plm_client::AnswerFolder m_answers;
  const bool m_quiet;
  std::mutex m_mutex;
  std::ofstream m_record;
};

/// Returns at Ctrl-C, or when no host has been connected for as long as the options say.
void WaitForEnd(const plm_client::Client& client, const Options& options) {
  auto last_seen = std::chrono::steady_clock::now();
  while (WaitForSingleObject(StopEvent(), kCheckInterval) == WAIT_TIMEOUT) {
    const auto now = std::chrono::steady_clock::now();
    if (client.OpenConnectionCount() > 0) last_seen = now;
    if (options.until_idle && now - last_seen >= *options.until_idle) return;
  }
}

void Run(const Options& options) {
  FolderHandler handler(options);
  SetConsoleCtrlHandler(&Stop, TRUE);
  // A request may come before the pipe's name has been printed.
  std::unique_lock waiting = handler.HoldRequests();
  const plm_client::Client client(
      {.pipe = options.pipe},
      [&handler](const plm_client::Request& request, std::stop_token) { return handler.Handle(request); });
  if (!options.quiet) {
    std::printf("serving %s\n", CStringHelper::UnicodeToUTF8(client.PipePath()).c_str());
    std::fflush(stdout);
  }
  waiting.unlock();
  WaitForEnd(client, options);
}

}  // namespace

int main() {
  SetConsoleOutputCP(CP_UTF8);
  try {
    const Options options = ParseOptions(Arguments());
    if (options.help) {
      std::fputs(kHelp, stdout);
    } else {
      Run(options);
    }
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "plm_client: %s\n", failure.what());
    return 2;
  }
}
