/// @file The DLL under test.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string>

/// The DLL, loaded as COM loads it, and its exports.
class AddInDll {
 public:
  /// @param path the DLL in the build folder, or a copy. @throws std::runtime_error if it cannot be loaded.
  explicit AddInDll(const std::wstring& path = BuiltPath());
  AddInDll(const AddInDll&) = delete;
  AddInDll& operator=(const AddInDll&) = delete;
  ~AddInDll();

  /// The full path of the DLL in the build folder.
  static std::wstring BuiltPath();

  HINSTANCE Handle() const { return m_handle; }
  const std::wstring& Path() const { return m_path; }

  HRESULT CanUnloadNow() const;
  HRESULT GetClassObject(REFCLSID id, REFIID iid, void** object) const;
  HRESULT RegisterServer() const;
  HRESULT UnregisterServer() const;

 private:
  template <class Function>
  Function* Export(const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(m_handle, name)));
  }

  std::wstring m_path;
  HINSTANCE m_handle;
};

/// Initialises COM on this thread as the host does: a single-threaded apartment.
class ComApartment {
 public:
  ComApartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() { CoUninitialize(); }
};
