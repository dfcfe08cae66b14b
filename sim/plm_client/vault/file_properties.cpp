#include "vault/file_properties.h"

#include <windows.h>
// After windows.h, which they need.
#include <comdef.h>
#include <objbase.h>
#include <oleauto.h>
#include <propidl.h>

#include "base/system_text.h"
#include "vault/vault_error.h"

_COM_SMARTPTR_TYPEDEF(IPropertySetStorage, __uuidof(IPropertySetStorage));
_COM_SMARTPTR_TYPEDEF(IPropertyStorage, __uuidof(IPropertyStorage));
_COM_SMARTPTR_TYPEDEF(IEnumSTATPROPSTG, __uuidof(IEnumSTATPROPSTG));

namespace plm_vault {
namespace {

/// The name and the id of a property.
class PropertyEntry {
 public:
  PropertyEntry() = default;
  PropertyEntry(const PropertyEntry&) = delete;
  PropertyEntry& operator=(const PropertyEntry&) = delete;
  ~PropertyEntry() { CoTaskMemFree(m_entry.lpwstrName); }

  STATPROPSTG* Receive() { return &m_entry; }
  std::wstring Name() const { return m_entry.lpwstrName ? m_entry.lpwstrName : L""; }
  PROPID Id() const { return m_entry.propid; }

 private:
  STATPROPSTG m_entry{};
};

class PropertyValue {
 public:
  PropertyValue() { PropVariantInit(&m_value); }
  PropertyValue(const PropertyValue&) = delete;
  PropertyValue& operator=(const PropertyValue&) = delete;
  ~PropertyValue() { PropVariantClear(&m_value); }

  PROPVARIANT* Receive() { return &m_value; }

  std::wstring Text() const {
    switch (m_value.vt) {
      case VT_LPWSTR: return m_value.pwszVal;
      case VT_LPSTR: return FromAnsi(m_value.pszVal);
      case VT_FILETIME: return DateText(m_value.filetime);
      default: return OtherText();
    }
  }

 private:
  static std::wstring FromAnsi(const char* text) {
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
    if (!wide.empty()) wide.pop_back();  // the end of the text
    return wide;
  }

  static std::wstring DateText(const FILETIME& time) {
    SYSTEMTIME parts{};
    DATE date = 0;
    if (!FileTimeToSystemTime(&time, &parts) || !SystemTimeToVariantTime(&parts, &date)) return {};
    return _variant_t(date, VT_DATE).operator _bstr_t().GetBSTR();
  }

  std::wstring OtherText() const {
    // The simple types of both kinds of variants have the same layout.
    VARIANT value{};
    value.vt = m_value.vt;
    value.llVal = m_value.hVal.QuadPart;
    VARIANT text{};
    if (FAILED(VariantChangeType(&text, &value, VARIANT_ALPHABOOL, VT_BSTR))) return {};
    const _bstr_t owned(text.bstrVal, false);
    return owned.length() > 0 ? std::wstring(owned) : std::wstring();
  }

  PROPVARIANT m_value;
};

Properties ReadAll(IPropertyStorage& storage) {
  Properties properties;
  IEnumSTATPROPSTGPtr entries;
  if (FAILED(storage.Enum(&entries))) return properties;
  for (;;) {
    PropertyEntry entry;
    if (entries->Next(1, entry.Receive(), nullptr) != S_OK) return properties;
    const PROPSPEC wanted{.ulKind = PRSPEC_PROPID, .propid = entry.Id()};
    PropertyValue value;
    if (SUCCEEDED(storage.ReadMultiple(1, &wanted, value.Receive()))) {
      properties.emplace_back(entry.Name(), value.Text());
    }
  }
}

}  // namespace

Properties ReadFileProperties(const std::filesystem::path& file) {
  IPropertySetStoragePtr sets;
  const HRESULT opened =
      StgOpenStorageEx(file.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, STGFMT_ANY, 0, nullptr, nullptr,
                       __uuidof(IPropertySetStorage), reinterpret_cast<void**>(&sets));
  if (FAILED(opened)) throw VaultError(file.wstring() + L": " + SystemText(static_cast<DWORD>(opened)));
  IPropertyStoragePtr properties;
  const HRESULT found =
      sets->Open(FMTID_UserDefinedProperties, STGM_READ | STGM_SHARE_EXCLUSIVE, &properties);
  return SUCCEEDED(found) ? ReadAll(*properties) : Properties{};
}

}  // namespace plm_vault
