#include "recorder.h"

#include "CStringHelper.h"
#include "console/script.h"

namespace cad_host {

void Recorder::Start(const std::wstring& path, const Host& host) {
  m_file.close();
  m_file.clear();
  m_path = path;
  m_answers.clear();
  m_file.open(path.c_str(), std::ios::binary | std::ios::trunc);
  for (const auto& add_in : host.ConnectedAddIns()) WriteLine(ScriptLine({L"connect", add_in->entry.title}));
  for (const auto& document : host.OpenDocuments()) {
    if (!document->path.empty()) WriteLine(ScriptLine({L"open", document->path}));
  }
  m_file.flush();
  if (!m_file) {
    m_file.close();
    throw HostError(L"cannot write the script " + path);
  }
}

void Recorder::Stop() { m_file.close(); }

void Recorder::Write(const std::wstring& line) {
  if (!IsRecording()) return Forget();
  for (const std::wstring& answer : m_answers) WriteLine(ScriptLine({L"answer", answer}));
  m_answers.clear();
  WriteLine(line);
  m_file.flush();
  if (m_file) return;
  m_file.close();
  throw HostError(L"cannot write the script " + m_path);
}

void Recorder::WriteLine(const std::wstring& line) { m_file << CStringHelper::UnicodeToUTF8(line) << "\r\n"; }

}  // namespace cad_host
