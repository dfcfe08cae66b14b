/// @file Registers an add-in object of the test.
#pragma once

#include <windows.h>

#include <string>

#include "host/application.h"

/// Registers an add-in during the lifetime of the object. The class factory is in this process and always
/// returns the given object.
class RegisteredAddIn {
 public:
  static constexpr const wchar_t* kClsid = L"{5B3A9A0E-7C1D-4E0B-8A53-0C6C2D9A4F11}";
  static constexpr const wchar_t* kDescription = L"for a test";

  /// @throws std::runtime_error if the registry has the add-in's key already, such as after a run that was
  /// killed.
  RegisteredAddIn(const std::wstring& title, ISwAddin* object);
  RegisteredAddIn(const RegisteredAddIn&) = delete;
  RegisteredAddIn& operator=(const RegisteredAddIn&) = delete;
  ~RegisteredAddIn();

 private:
  /// A class factory that always returns the one object.
  class Factory : public IClassFactory {
   public:
    explicit Factory(ISwAddin* object) : m_object(object) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
      return m_object->QueryInterface(iid, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

   private:
    ISwAddin* m_object;
  };

  Factory m_factory;
  DWORD m_cookie = 0;
};
