/// @file COM objects: reference counting, interface lookup and creation for plain classes.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <atomic>
#include <type_traits>
#include <utility>

#include "com_module.h"
#include "errors/caught_exception.h"

/// Looks `iid` up among interfaces that `Object` derives from; `Identity` also answers IUnknown and, where
/// it is a dispatch interface, IDispatch.
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

/// The class T as a COM object. T has a public method `void* FindInterface(REFIID) noexcept` that answers
/// like FindInterfaceOf, which is all that most classes need:
///
///     void* FindInterface(REFIID iid) noexcept { return FindInterfaceOf<IFirst, ISecond>(this, iid); }
///
/// Objects live on the heap, start with one reference and keep the module locked until they are gone.
/// Counting is safe between threads. Use CreateComObject.
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
      // The object's own lock is released before T's destructor has run.
      const ModuleLock until_gone;
      delete this;
    }
    return left;
  }

 private:
  ~ComObject() override = default;

  std::atomic<ULONG> m_references = 1;
  ModuleLock m_lock;
};

/// Creates a T as a COM object and gives its interface `iid`.
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
