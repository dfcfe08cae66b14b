/// @file The commands that the PLM client knows, and how their answers report success.
#pragma once

#include <memory>
#include <string>

#include "CJsonObject.h"

/// Command names, as the PLM client expects them.
namespace plm_command {
inline constexpr const wchar_t* kLogin = L"QD_PLMLogin";
inline constexpr const wchar_t* kLogout = L"QD_PLMLogout";
inline constexpr const wchar_t* kDataSelector = L"QD_PLMDataSelector";
inline constexpr const wchar_t* kMyCheckOutList = L"QD_PLMMyCheckOutList";
inline constexpr const wchar_t* kStartWorkflow = L"QD_PLMStartWF";
inline constexpr const wchar_t* kGetCode = L"QD_PLMGetcode";
inline constexpr const wchar_t* kQuery = L"QD_PLMQuery";
inline constexpr const wchar_t* kImportCurrent = L"QD_PLMImportCurrent";
inline constexpr const wchar_t* kLotImport = L"QD_PLMLotimport";
inline constexpr const wchar_t* kCreateChangeItems = L"QD_PLMCreateChangeItems";
inline constexpr const wchar_t* kCreateMaterial = L"QD_PLMCreateMaterial";
inline constexpr const wchar_t* kMyTempMaterial = L"QD_PLMMyTempMaterial";
inline constexpr const wchar_t* kTaskManage = L"QD_PLMTaskManage";
inline constexpr const wchar_t* kMaterialBackFill = L"QD_PLMMaterialBackFill";
}  // namespace plm_command

/// What the PLM client answered: the text, and what it says. An empty or malformed text says nothing: the
/// object is then empty.
struct PlmAnswer {
  std::wstring text;
  std::shared_ptr<CJsonObject> object;

  /// Whether it has "__InvokeResult__" true.
  bool ReportsSuccess() const { return object->GetPropertyBoolValue(L"__InvokeResult__").second; }
};
