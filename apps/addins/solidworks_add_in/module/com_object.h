/// @file COM objects: reference counting, queries, guards and creation for plain classes.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <atomic>
#include <tuple>
#include <type_traits>
#include <utility>

#include "com_boundary.h"
#include "com_module.h"
#include "guard.h"

/// The interfaces of a class, its identity first.
template <class... Interfaces>
struct InterfaceList {};

template <class T, class Interfaces = typename T::Interfaces>
class ComObject;

/// The class T as a COM object. T names its interfaces, from which it derives:
///
///     using Interfaces = InterfaceList<IFirst, ISecond>;
///
/// and may have a static method `REFIID Canonical(REFIID)` that says for which of them another id stands. The
/// first also answers IUnknown and, if it is a dispatch interface, IDispatch. What a query returns is the
/// interface's guard, behind which T's methods may throw; a pointer to T itself has no guard.
///
/// Objects live on the heap, start with one reference and keep the module locked until they are gone.
/// Counting is safe between threads. Use CreateComObject.
template <class T, class Identity, class... Others>
class ComObject<T, InterfaceList<Identity, Others...>> final : public T {
 public:
  template <class... Arguments>
  explicit ComObject(Arguments&&... arguments)
      : T(std::forward<Arguments>(arguments)...),
        m_identity(*this),
        m_others(static_cast<Others&>(*this)...) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = Find(iid);
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

  void* Find(REFIID asked) noexcept {
    const IID* iid = &asked;
    if constexpr (requires { T::Canonical(asked); }) iid = &T::Canonical(asked);
    if (*iid == __uuidof(Identity) || *iid == __uuidof(IUnknown)) return static_cast<Identity*>(&m_identity);
    if constexpr (std::is_base_of_v<IDispatch, Identity>) {
      if (*iid == __uuidof(IDispatch)) return static_cast<Identity*>(&m_identity);
    }
    void* found = nullptr;
    ((*iid == __uuidof(Others) && (found = static_cast<Others*>(&std::get<Guard<Others>>(m_others)))), ...);
    return found;
  }

  std::atomic<ULONG> m_references = 1;
  ModuleLock m_lock;
  Guard<Identity> m_identity;
  std::tuple<Guard<Others>...> m_others;
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
    return LogEscapedException(L"creating an object");
  }
}
