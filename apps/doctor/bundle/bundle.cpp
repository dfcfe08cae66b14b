#include "bundle.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "CStringHelper.h"
#include "base/file_attributes.h"
#include "base/system_path.h"
#include "configuration/client_configuration.h"
#include "configuration/log_properties.h"
#include "configuration/names.h"
#include "configuration/places.h"
#include "files.h"
#include "output/format.h"
#include "redaction.h"

namespace doctor {
namespace {

/// How much of a log is taken, from its end.
constexpr std::uint64_t kMostBytes = 16ull * 1024 * 1024;

std::wstring WithoutLoginData(const std::wstring& text) {
  return CStringHelper::UTF8ToUnicode(Redact(CStringHelper::UnicodeToUTF8(text)));
}

Report WithoutLoginData(const Report& report) {
  Report redacted;
  for (const Finding& finding : report.Findings()) {
    redacted.Add(
        {finding.id, finding.status, WithoutLoginData(finding.text), WithoutLoginData(finding.advice)});
  }
  redacted.Conclude(report.Conclusion());
  return redacted;
}

/// Makes UTF-8 of `bytes`. @return false if they are no text.
bool MakeText(std::string& bytes) {
  if (!bytes.starts_with("\xFF\xFE")) return bytes.find('\0') == std::string::npos;
  std::wstring wide(bytes.size() / sizeof(wchar_t) - 1, L'\0');
  std::memcpy(wide.data(), bytes.data() + 2, wide.size() * sizeof(wchar_t));
  bytes = CStringHelper::UnicodeToUTF8(wide);
  return true;
}

struct FindCloser {
  using pointer = HANDLE;
  void operator()(HANDLE search) const noexcept { FindClose(search); }
};

/// The log file `path` and what was renamed to make room for it: the paths that begin with it.
std::vector<std::wstring> WithOldFiles(const std::wstring& path) {
  std::vector<std::wstring> found;
  const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
  WIN32_FIND_DATAW data{};
  HANDLE first = FindFirstFileW(SystemPath(path + L"*").c_str(), &data);
  if (first == INVALID_HANDLE_VALUE) return found;
  const std::unique_ptr<HANDLE, FindCloser> search(first);
  do {
    if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) found.push_back(folder + data.cFileName);
  } while (FindNextFileW(search.get(), &data));
  std::ranges::sort(found);
  return found;
}

class Bundle {
 public:
  explicit Bundle(const std::wstring& path) : m_archive(path) {}

  void AddText(const std::string& name, const std::string& text) { m_archive.Add(name, text); }

  /// Adds the file at `path` without login data, or says why it is left out.
  void AddFile(const std::string& name, const std::wstring& path) {
    FileContent content = ReadFileContent(path, kMostBytes);
    if (content.error != ERROR_SUCCESS) {
      Note(WithSystemText(L"left out, because it cannot be read: " + path, content.error));
      return;
    }
    // A name whose beginning is cut off would not be recognised.
    if (content.left_out > 0) content.bytes.erase(0, content.bytes.find('\n'));
    if (!MakeText(content.bytes)) {
      Note(L"left out, because it is not a text: " + path);
      return;
    }
    m_archive.Add(name, Redact(content.bytes));
    Note(CStringHelper::UTF8ToUnicode(name) + L": " + path +
         (content.left_out > 0 ? L" (only its end)" : L""));
  }

  void Close() {
    m_archive.Add("contents.txt", Redact(CStringHelper::UnicodeToUTF8(m_contents)));
    m_archive.Close();
  }

 private:
  void Note(const std::wstring& line) { m_contents += line + L"\n"; }

  ZipArchive m_archive;
  std::wstring m_contents = L"Values of names such as \"password\" are replaced by " +
                            CStringHelper::UTF8ToUnicode(kRedacted) + L".\n";
};

/// Adds each of `places` that exists, numbered by the order in which they are looked at.
void AddPlaces(Bundle& bundle, const std::vector<std::wstring>& places, const wchar_t* file) {
  for (std::size_t index = 0; index < places.size(); ++index) {
    if (!IsFile(places[index])) continue;
    bundle.AddFile("configuration/" + std::to_string(index + 1) + "/" + CStringHelper::UnicodeToUTF8(file),
                   places[index]);
  }
}

/// The files that the log is written to.
std::vector<std::wstring> LogFiles(const std::wstring& folder, const std::wstring& configuration) {
  ExaminedLogFiles files;
  if (!configuration.empty()) FindLogFaults(configuration, {folder, kLogApplication}, files);
  std::vector<std::wstring> paths = files.Usable();
  paths.push_back(folder + L"\\" + kLogApplication + L".log");  // also if the configuration has faults
  std::vector<std::wstring> all;
  for (const std::wstring& path : paths) {
    for (const std::wstring& found : WithOldFiles(path)) {
      if (std::ranges::find(all, found) == all.end()) all.push_back(found);
    }
  }
  return all;
}

void AddLog(Bundle& bundle, const std::wstring& library_folder) {
  const std::wstring folder = LogFolder();
  const std::vector<std::wstring> places = LogConfigurationPlaces(folder, library_folder);
  AddPlaces(bundle, places, kLogPropertiesFile);
  if (folder.empty()) return;
  std::size_t number = 0;
  for (const std::wstring& path : LogFiles(folder, FirstFile(places))) {
    const std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
    bundle.AddFile("log/" + std::to_string(++number) + "/" + CStringHelper::UnicodeToUTF8(name), path);
  }
}

}  // namespace

void WriteBundle(const std::wstring& path, const Report& report, const AddInLibrary& library) {
  Bundle bundle(path);
  const Report redacted = WithoutLoginData(report);
  bundle.AddText("findings.txt", CStringHelper::UnicodeToUTF8(FormatText(redacted)));
  bundle.AddText("findings.json", FormatJson(redacted));
  for (const wchar_t* file : {kViewFile, static_cast<const wchar_t*>(kClientFile)}) {
    AddPlaces(bundle, ConfigurationPlaces(kConfigurationName, file, library.Folder()), file);
  }
  AddLog(bundle, library.Folder());
  bundle.Close();
}

}  // namespace doctor
