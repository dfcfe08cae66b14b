/// @file Texts that the user sees in message boxes.
#pragma once

#include <string>

/// Those that are in the string table stand here in English.
namespace shown {
inline constexpr const wchar_t* kReplacementFailed = L"Model replacement failed.";
inline constexpr const wchar_t* kNotSupported = L"The Current Model does not Support Replacement";
inline constexpr const wchar_t* kFileIsOpening = L"File is opening!";
inline constexpr const wchar_t* kWrongFileType = L"请检查当前选择插入的文件类型，添加部件失败";
inline constexpr const wchar_t* kNotAdded = L"添加部件失败";

/// "打开文件", the path, "失败".
inline std::wstring OpenFailed(const std::wstring& path) { return L"打开文件" + path + L"失败"; }
}  // namespace shown
