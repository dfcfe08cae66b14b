#include "diagnostics.h"

#include <cwchar>
#include <iterator>

#include "CLog.h"
#include "module/application.h"
#include "module/string_table.h"

namespace {

constexpr int kErrorLevel = 40000;
constexpr int kInformationLevel = 20000;

void PrintError(const LogSite& site, const std::wstring& message) {
  CLog::Print(site.file, site.line, site.function, L"errormsg", kErrorLevel, message);
}

}  // namespace

std::wstring CodeSuffix(HRESULT code) {
  wchar_t suffix[sizeof "<hr=0x01234567>"] = {};
  std::swprintf(suffix, std::size(suffix), L"<hr=0x%lx>", static_cast<unsigned long>(code));
  return suffix;
}

void LogFailure(const LogSite& site, HRESULT code, std::wstring_view detail) {
  PrintError(site, site.text + std::wstring(detail) + CodeSuffix(code));
}

void LogFailureText(const LogSite& site) { PrintError(site, site.text); }

void LogSystemFailure(const LogSite& site, HRESULT code, DWORD system_error, std::wstring_view detail) {
  LogFailure(site, code, std::wstring(detail) + std::to_wstring(system_error));
}

void LogInformation(const LogSite& site, std::wstring_view detail) {
  CLog::Print(site.file, site.line, site.function, L"infomsg", kInformationLevel,
              site.text + std::wstring(detail));
}

void ShowMessage(const std::wstring& text) { CSolidWorksAddInApp::Instance().ShowMessageBox(text); }

void ShowMessage(unsigned text_id) { ShowMessage(LoadResourceString(text_id)); }

int ShowCaptionedMessage(unsigned text_id, unsigned caption_id, unsigned style) {
  return MessageBoxW(nullptr, LoadResourceString(text_id).c_str(), LoadResourceString(caption_id).c_str(),
                     style);
}

void ReportFailedOpen(const LogSite& site, const std::wstring& path, HRESULT code) {
  LogFailure(site, code, path);
  ShowMessage(L"打开文件" + path + L"失败");
}
