// The module as a COM server: class objects, and the registration of classes.
#include <algorithm>

#include "class_factory.h"
#include "com_module.h"
#include "registrar.h"
#include "type_library.h"

namespace {

/// Gives the thread the system's locale during its lifetime: what registration writes must not depend on the
/// user who runs it.
class SystemLocale {
 public:
  SystemLocale() noexcept : m_saved(GetThreadLocale()) { SetThreadLocale(LOCALE_SYSTEM_DEFAULT); }
  SystemLocale(const SystemLocale&) = delete;
  SystemLocale& operator=(const SystemLocale&) = delete;
  ~SystemLocale() { SetThreadLocale(m_saved); }

 private:
  LCID m_saved;
};

}  // namespace

HRESULT CSolidWorksAddInModule::GetClassObject(REFCLSID id, REFIID iid, void** object) const {
  if (!object) return E_POINTER;
  *object = nullptr;
  const auto found = std::ranges::find_if(m_classes, [&id](const auto& known) { return known.id == id; });
  if (found == m_classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
  return CreateComObject<ClassFactory>(iid, object, *found);
}

HRESULT CSolidWorksAddInModule::Register() const {
  const SystemLocale locale;
  for (const CreatableClass& registered : m_classes) {
    const HRESULT result = registrar::Register(registered);
    if (FAILED(result)) return result;
  }
  return type_library::Register();
}

HRESULT CSolidWorksAddInModule::Unregister() const {
  const SystemLocale locale;
  HRESULT first = S_OK;
  for (const CreatableClass& registered : m_classes) {
    const HRESULT result = registrar::Unregister(registered);
    if (SUCCEEDED(first)) first = result;
  }
  const HRESULT result = type_library::Unregister();
  return FAILED(first) ? first : result;
}
