#include "program_folder.h"

#include <windows.h>

namespace {

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.rfind(L'\\')); }

}  // namespace

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH];
  return FolderOf({path, GetModuleFileNameW(nullptr, path, MAX_PATH)});
}

std::wstring BesideTests(std::wstring_view name) { return ProgramFolder() + L'\\' + std::wstring(name); }

std::wstring InBin(std::wstring_view name) {
  return FolderOf(ProgramFolder()) + L"\\bin\\" + std::wstring(name);
}
