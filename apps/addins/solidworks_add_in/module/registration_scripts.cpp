#include "module/registration_scripts.h"

#include <comdef.h>
#include <objbase.h>

#include <iterator>

#include "CStringHelper.h"
#include "solidworks_add_in_h.h"

namespace {

std::wstring GuidText(REFGUID id) {
  wchar_t text[39];
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

std::wstring LoadScript(HMODULE module, unsigned id) {
  HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), L"REGISTRY");
  if (!resource) _com_issue_error(HRESULT_FROM_WIN32(GetLastError()));
  const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
  const DWORD size = SizeofResource(module, resource);
  if (!bytes || size == 0) _com_issue_error(HRESULT_FROM_WIN32(ERROR_RESOURCE_DATA_NOT_FOUND));
  return CStringHelper::UTF8ToUnicode({bytes, size});
}

}  // namespace

std::vector<registry_script::Root> ReadRegistrationScript(HMODULE module, const std::wstring& path,
                                                          unsigned id, REFCLSID class_id) {
  const registry_script::Replacements replacements = {
      {L"MODULE", path},
      {L"APPID", GuidText(APPID_SolidWorksAddIn)},
      {L"LIBID", GuidText(LIBID_SolidWorksAddInLib)},
      {L"CLSID", GuidText(class_id)},
  };
  return registry_script::Parse(LoadScript(module, id), replacements);
}
