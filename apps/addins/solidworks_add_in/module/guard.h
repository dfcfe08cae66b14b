/// @file What a host holds in place of an object of the DLL.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include "com_boundary.h"

/// Stands in front of one interface of an object: calls the method behind it and ends every exception
/// (com_boundary.h). Each interface that the DLL hands out has a specialisation, whose methods are all those
/// of the interface: one that is missing leaves it abstract, so it cannot be forgotten.
///
/// Reference counting and queries are those of the object, of which the guard is a part.
template <class Interface>
class Guard;

/// IUnknown of every guard.
template <class Interface>
class GuardBase : public Interface {
 public:
  explicit GuardBase(Interface& target) noexcept : m_target(target) {}
  GuardBase(const GuardBase&) = delete;
  GuardBase& operator=(const GuardBase&) = delete;
  virtual ~GuardBase() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return m_target.QueryInterface(iid, object);
  }
  STDMETHODIMP_(ULONG) AddRef() override { return m_target.AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return m_target.Release(); }

 protected:
  Interface& Target() const noexcept { return m_target; }

 private:
  Interface& m_target;
};

/// IDispatch of every guard of a dual interface.
template <class Dual>
class DispatchGuard : public GuardBase<Dual> {
 public:
  using GuardBase<Dual>::GuardBase;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    return EndExceptions(L"IDispatch::GetTypeInfoCount", [&] { return Target().GetTypeInfoCount(count); });
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    if (info) *info = nullptr;
    return EndExceptions(L"IDispatch::GetTypeInfo",
                         [&] { return Target().GetTypeInfo(index, locale, info); });
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return EndExceptions(L"IDispatch::GetIDsOfNames",
                         [&] { return Target().GetIDsOfNames(iid, names, count, locale, ids); });
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override {
    return EndExceptions(L"IDispatch::Invoke", [&] {
      return Target().Invoke(id, iid, locale, flags, parameters, result, exception, bad_argument);
    });
  }

 protected:
  using GuardBase<Dual>::Target;
};

template <>
class Guard<IDispatch> final : public DispatchGuard<IDispatch> {
 public:
  using DispatchGuard::DispatchGuard;
};
