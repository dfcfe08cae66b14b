#include <windows.h>

#include "file_dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <array>

#include "resource_ids.h"

namespace cad_host {
namespace {

constexpr std::wstring_view kModels = L"*.sldprt;*.sldasm;*.slddrw";

struct Question {
  std::wstring filter;       ///< names and patterns, each ended by a null
  const wchar_t* extension;  ///< added to a name without one
  std::wstring proposal = {};
  bool is_new = false;
};

std::wstring Filter(const window::Texts& texts, UINT name, std::wstring_view pattern) {
  std::wstring filter;
  for (const std::wstring& text :
       {texts(name), std::wstring(pattern), texts(IDS_ALL_FILES), std::wstring(L"*.*")}) {
    filter += text;
    filter += L'\0';
  }
  return filter;
}

const wchar_t* ExtensionOf(long type) {
  return type == swDocASSEMBLY ? L"sldasm" : type == swDocDRAWING ? L"slddrw" : L"sldprt";
}

std::optional<std::wstring> Ask(HWND owner, const Question& question) {
  std::array<wchar_t, 4096> path{};
  std::copy_n(question.proposal.begin(), std::min(question.proposal.size(), path.size() - 1), path.begin());
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = question.filter.c_str();
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = static_cast<DWORD>(path.size());
  dialog.lpstrDefExt = question.extension;
  dialog.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST |
                 (question.is_new ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
  const bool chosen = question.is_new ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
  if (!chosen) return std::nullopt;
  return path.data();
}

}  // namespace

std::optional<std::wstring> AskForModelToOpen(HWND owner, const window::Texts& texts) {
  return Ask(owner, {.filter = Filter(texts, IDS_MODEL_FILES, kModels), .extension = nullptr});
}

std::optional<std::wstring> AskForModelToSave(HWND owner, const window::Texts& texts,
                                              const Document& document) {
  const wchar_t* const extension = ExtensionOf(document.Type());
  return Ask(owner, {.filter = Filter(texts, IDS_MODEL_FILES, std::wstring(L"*.") + extension),
                     .extension = extension,
                     .proposal = document.path.empty() ? document.title : document.path,
                     .is_new = true});
}

std::optional<std::wstring> AskForScript(HWND owner, const window::Texts& texts, bool is_new) {
  return Ask(owner,
             {.filter = Filter(texts, IDS_SCRIPT_FILES, L"*.txt"), .extension = L"txt", .is_new = is_new});
}

}  // namespace cad_host
