#include "class_factory.h"

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  return m_class.create(iid, object);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) {
  CSolidWorksAddInModule& module = CSolidWorksAddInModule::Instance();
  lock ? module.Lock() : module.Unlock();
  return S_OK;
}
