#include "platform_home.h"

#include <windows.h>

#include <algorithm>
#include <functional>
#include <sstream>

namespace {

constexpr const wchar_t* kConfiguration = L"config\\New TAVO SolidWorks AddOn";

// Two files: one with the fields that tests compare, one with the source file, whose path differs between
// machines.
constexpr std::string_view kLogProperties =
    "log4cplus.rootLogger=TRACE, events, files\n"
    "log4cplus.appender.events=log4cplus::FileAppender\n"
    "log4cplus.appender.events.File=${LogFolder}/events.log\n"
    "log4cplus.appender.events.layout=log4cplus::PatternLayout\n"
    "log4cplus.appender.events.layout.ConversionPattern=%c|%p|%L|%M|%m%n\n"
    "log4cplus.appender.files=log4cplus::FileAppender\n"
    "log4cplus.appender.files.File=${LogFolder}/files.log\n"
    "log4cplus.appender.files.layout=log4cplus::PatternLayout\n"
    "log4cplus.appender.files.layout.ConversionPattern=%F%n\n";

std::vector<std::wstring> ReadLines(const TempFolder& folder, const wchar_t* name) {
  std::vector<std::wstring> lines;
  if (!folder.Exists(name)) return lines;
  std::wistringstream text(folder.ReadText(name));
  for (std::wstring line; std::getline(text, line); lines.push_back(line)) {
    if (line.ends_with(L'\r')) line.pop_back();
  }
  return lines;
}

bool IsPlatform(const std::wstring& line) { return line.starts_with(L"platform|"); }

bool IsPlatformInformation(const std::wstring& line) { return line.starts_with(L"platform|INFO|"); }

}  // namespace

PlatformHome& PlatformHome::Instance() {
  static PlatformHome home;
  return home;
}

PlatformHome::PlatformHome()
    : m_home(L"TAVO_HOME", m_folder.Path()),
      m_tmp(L"TMP", m_folder.MakeFolder(L"tmp")),
      m_temp(L"TEMP", m_folder.Path(L"tmp")) {
  m_folder.Write(L"log\\Log4cplus.properties", kLogProperties);
}

void PlatformHome::Reset() {
  m_folder.MakeFolder(kConfiguration);
  for (const std::wstring& name : m_folder.List(kConfiguration)) {
    DeleteFileW(ConfigurationPath(name).c_str());
  }
  m_seenLines = AllLogLines().size();
}

std::wstring PlatformHome::WriteConfiguration(std::wstring_view name, std::string_view bytes) const {
  return m_folder.Write(std::wstring(kConfiguration) + L"\\" + std::wstring(name), bytes);
}

std::wstring PlatformHome::ConfigurationPath(std::wstring_view name) const {
  return m_folder.Path(std::wstring(kConfiguration) + L"\\" + std::wstring(name));
}

std::vector<std::wstring> PlatformHome::LogLines() const {
  std::vector<std::wstring> lines = NewLogLines();
  std::erase_if(lines, IsPlatformInformation);
  return lines;
}

std::vector<std::wstring> PlatformHome::AddInLogLines() const {
  std::vector<std::wstring> lines = LogLines();
  std::erase_if(lines, IsPlatform);
  return lines;
}

std::vector<std::wstring> PlatformHome::PlatformLogLines() const {
  std::vector<std::wstring> lines = LogLines();
  std::erase_if(lines, std::not_fn(IsPlatform));
  return lines;
}

std::vector<std::wstring> PlatformHome::PlatformInformation() const {
  std::vector<std::wstring> lines = NewLogLines();
  std::erase_if(lines, std::not_fn(IsPlatformInformation));
  return lines;
}

std::vector<std::wstring> PlatformHome::LoggedSourceFiles() const {
  std::vector<std::wstring> files = ReadLines(m_folder, L"log\\files.log");
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

std::vector<std::wstring> PlatformHome::IconFiles() const {
  std::vector<std::wstring> files = m_folder.List(L"tmp");
  std::erase_if(files, [](const std::wstring& name) { return !name.starts_with(L"swt"); });
  return files;
}

std::vector<std::wstring> PlatformHome::AllLogLines() const {
  return ReadLines(m_folder, L"log\\events.log");
}

std::vector<std::wstring> PlatformHome::NewLogLines() const {
  std::vector<std::wstring> lines = AllLogLines();
  lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(m_seenLines));
  return lines;
}
