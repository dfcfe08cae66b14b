#include "cad_host/quirks.h"

#include <string>

#include "cad_host/host_error.h"

namespace cad_host {

std::span<const NamedQuirk> Quirks::All() {
  static constexpr NamedQuirk kTable[] = {
      {Quirk::kCallerArrays, L"caller-arrays",
       L"IGetSelectionPoint2 and IGetGroupDataFromRegistry only write into an array of the caller, so they "
       L"cannot be called by name"},
      {Quirk::kEnableArgument, L"enable-argument",
       L"an enable method is offered a long by reference for its number; without it, only its result counts"},
      {Quirk::kEqualTabNames, L"equal-tab-names",
       L"AddCommandTab makes another tab even if there is one of that name; GetCommandTab finds the first"},
      {Quirk::kFalseTabRemoval, L"false-tab-removal",
       L"RemoveCommandTab removes the tab, but returns false the first time and every second time after it"},
      {Quirk::kHeldFiles, L"held-files",
       L"the files of open documents and of components that are not suppressed cannot be written, moved or "
       L"deleted"},
      {Quirk::kSameNameRefused, L"same-name-refused",
       L"ReplaceComponents2 refuses a file with the file name of the component, even in another folder"},
      {Quirk::kSilentOpenFailure, L"silent-open-failure",
       L"OpenDoc6 returns S_OK and no document the first time that it fails and every second time after it; "
       L"otherwise E_FAIL"},
  };
  return kTable;
}

Quirk Quirks::Named(std::wstring_view name) {
  std::wstring known;
  for (const NamedQuirk& named : All()) {
    if (name == named.name) return named.quirk;
    known += (known.empty() ? L"" : L", ") + std::wstring(named.name);
  }
  throw HostError(L"no quirk \"" + std::wstring(name) + L"\"; there are " + known);
}

void Quirks::Set(Quirk quirk, bool on) {
  if (on) {
    m_off.erase(quirk);
  } else {
    m_off.insert(quirk);
  }
}

bool Quirks::HappensNow(Quirk quirk) {
  if (!IsOn(quirk)) return false;
  if (m_happened.erase(quirk) > 0) return false;
  m_happened.insert(quirk);
  return true;
}

}  // namespace cad_host
