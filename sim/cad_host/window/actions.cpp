#include "actions.h"

#include <utility>

namespace cad_host {
namespace {

/// Sets a flag for the life of the object.
class Raised {
 public:
  explicit Raised(bool& flag) : m_flag(flag) { m_flag = true; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;
  ~Raised() { m_flag = false; }

 private:
  bool& m_flag;
};

}  // namespace

Actions::Actions(Host& host, std::ostream& transcript)
    : m_host(host), m_session(host, transcript, Output::kFolded) {
  m_session.OnAnswer([this](const std::wstring& button) { m_recorder.Answer(button); });
}

void Actions::Present(unsigned milliseconds, std::function<void(const std::wstring& name)> take_picture) {
  m_session.AnswerAfter(milliseconds);
  m_session.OnPicture(std::move(take_picture));
}

bool Actions::Do(const std::vector<std::wstring>& words) { return DoLine(ScriptLine(words)); }

bool Actions::DoRest(const std::wstring& verb, const std::wstring& rest) {
  return DoLine(verb + L" " + rest);
}

bool Actions::DoLine(const std::wstring& line) {
  Command command(L"", 0, line);
  try {
    return Run(command);
  } catch (const HostError& error) {
    const std::wstring place = command.Place() + L": ";
    const std::wstring& message = error.Message();
    throw HostError(message.starts_with(place) ? message.substr(place.size()) : message, error.Result());
  }
}

bool Actions::Run(Command& command) {
  if (m_busy) return false;
  try {
    const Raised busy(m_busy);
    m_session.Run(command);
  } catch (...) {
    m_recorder.Forget();
    m_onDone();
    throw;
  }
  m_recorder.Write(command.Text());
  m_onDone();
  return true;
}

void Actions::End() {
  const Raised busy(m_busy);
  m_session.End();
}

}  // namespace cad_host
