#include "program_folder.h"

#include "base/module_path.h"

namespace {

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.rfind(L'\\')); }

}  // namespace

std::wstring ProgramFolder() { return FolderOf(ModulePath(nullptr)); }

std::wstring BesideTests(std::wstring_view name) { return ProgramFolder() + L'\\' + std::wstring(name); }

std::wstring SourceFile(std::wstring_view name) {
  return FolderOf(FolderOf(FolderOf(ProgramFolder()))) + L'\\' + std::wstring(name);
}

std::wstring InBuild(std::wstring_view name) {
  return FolderOf(ProgramFolder()) + L'\\' + std::wstring(name);
}

std::wstring InBin(std::wstring_view name) { return InBuild(L"bin\\" + std::wstring(name)); }
