/// @file COM objects: reference counting, interface lookup and creation for plain classes.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <atomic>
#include <type_traits>
#include <utility>

#include "com_module.h"
#include "errors/caught_exception.h"

/// Finds `iid` among interfaces that `Object` derives from. `Identity` is also returned for IUnknown and, if
/// it is a dispatch interface, for IDispatch.
/// @return the interface without a reference, or null.
template <class Identity, class... Others, class Object>
void* FindInterfaceOf(Object* object, REFIID iid) noexcept {
  Identity* const identity = object;
  if (iid == __uuidof(Identity) || iid == __uuidof(IUnknown)) return identity;
  if constexpr (std::is_base_of_v<IDispatch, Identity>) {
    if (iid == __uuidof(IDispatch)) return identity;
  }
  void* found = nullptr;
  ((iid == __uuidof(Others) && (found = static_cast<Others*>(object))), ...);
  return found;
}

/// The class T as a COM object. T must have a public method `void* FindInterface(REFIID) noexcept` that
/// returns what FindInterfaceOf would return. Most classes only call it:
///
///     void* FindInterface(REFIID iid) noexcept { return FindInterfaceOf<IFirst, ISecond>(this, iid); }
///
/// Objects are allocated on the heap, start with one reference and lock the module until they are destroyed.
/// Reference counting is thread-safe. Use CreateComObject.
template <class T>
class ComObject final : public T {
 public:
  template <class... Arguments>
  explicit ComObject(Arguments&&... arguments) : T(std::forward<Arguments>(arguments)...) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = this->FindInterface(iid);
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }

  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --m_references;
    if (left == 0) {
      // m_lock is released before T's destructor runs.
      const ModuleLock until_deleted;
      delete this;
    }
    return left;
  }

 private:
  ~ComObject() override = default;

  std::atomic<ULONG> m_references = 1;
  ModuleLock m_lock;
};

/// Creates a T as a COM object and returns its interface `iid` in `object`.
/// @return S_OK; E_NOINTERFACE; the code of an exception that T's constructor throws. `*object` is null
///         after a failure.
template <class T, class... Arguments>
HRESULT CreateComObject(REFIID iid, void** object, Arguments&&... arguments) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  try {
    auto* const created = new ComObject<T>(std::forward<Arguments>(arguments)...);
    const HRESULT result = created->QueryInterface(iid, object);
    created->Release();
    return result;
  } catch (...) {
    return CaughtException::Describe().code;
  }
}
