#include "add_in_library.h"

#include <objbase.h>

#include "CStringHelper.h"
#include "base/file_attributes.h"
#include "module/registration_scripts.h"
#include "registry.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in_h.h"

namespace doctor {
namespace {

constexpr wchar_t kFileName[] = L"\\solidworks_add_in.dll";

std::wstring ServerIn(HKEY root, View view, const RegisteredClass& registered) {
  const std::wstring path = L"SOFTWARE\\Classes\\CLSID\\" + GuidText(registered.id) + L"\\InprocServer32";
  return RegistryKey(root, path, view).Text(L"").value_or(L"");
}

}  // namespace

const std::array<RegisteredClass, 2>& Classes() {
  static const std::array<RegisteredClass, 2> classes = {{
      {"add_in", L"The add-in's class", CLSID_SwAddin, IDR_SOLIDWORKS_ADD_IN},
      {"bitmap_handler", L"The bitmap handler's class", CLSID_BitmapHandler, IDR_BITMAP_HANDLER},
  }};
  return classes;
}

std::wstring GuidText(REFGUID id) {
  wchar_t text[39];
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

std::wstring RegisteredPath(const RegisteredClass& registered) {
  std::wstring path = ServerIn(HKEY_LOCAL_MACHINE, View::k64Bit, registered);
  if (path.empty()) path = ServerIn(HKEY_CURRENT_USER, View::k64Bit, registered);
  if (path.empty()) path = ServerIn(HKEY_LOCAL_MACHINE, View::k32Bit, registered);
  return path;
}

AddInLibrary::AddInLibrary(const std::wstring& own_folder) : m_path(RegisteredPath(Classes().front())) {
  m_isRegistered = !m_path.empty();
  if (const std::wstring copy = own_folder + kFileName; IsFile(copy)) {
    if (!m_isRegistered) m_path = copy;
    if (CStringHelper::StringCompare(m_path, copy, false) != 0) m_unusedCopy = copy;
  }
  if (m_path.empty()) return;
  m_module.reset(
      LoadLibraryExW(m_path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
}

std::vector<registry_script::Root> AddInLibrary::Script(const RegisteredClass& registered) const {
  return ReadRegistrationScript(m_module.get(), m_path, registered.script, registered.id);
}

}  // namespace doctor
