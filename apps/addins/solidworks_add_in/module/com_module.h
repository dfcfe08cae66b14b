/// @file The DLL as a COM server: its locks, its classes and their registration.
#pragma once

#include <windows.h>

#include <atomic>
#include <span>
#include <string>

/// A class that clients create through COM.
struct CreatableClass {
  const CLSID& id;
  unsigned registration_script;  ///< resource id of its script
  HRESULT (*create)(REFIID iid, void** object);
};

/// The COM module, one per process.
class CSolidWorksAddInModule {
 public:
  static CSolidWorksAddInModule& Instance() noexcept;

  /// Called once, when the DLL is loaded. `classes` must live as long as the DLL.
  void Attach(HINSTANCE handle, std::span<const CreatableClass> classes) noexcept;

  /// The DLL itself, which holds the add-in's resources.
  HINSTANCE ModuleHandle() const noexcept { return m_handle; }

  /// The full path of the DLL. @throws _com_error.
  std::wstring Path() const;

  /// A lock keeps the DLL loaded: one for each existing object and each LockServer(TRUE).
  void Lock() noexcept { ++m_locks; }
  void Unlock() noexcept { --m_locks; }
  long LockCount() const noexcept { return m_locks; }

  /// The class object of the class `id`.
  /// @return CLASS_E_CLASSNOTAVAILABLE for a class that is not among the creatable ones.
  HRESULT GetClassObject(REFCLSID id, REFIID iid, void** object) const;

  /// Registers all classes and the type library for the whole machine.
  /// @return the first failure, at which it stops, or S_OK.
  HRESULT Register() const;

  /// Removes what Register wrote; ignores missing entries.
  /// @return the first failure or S_OK; a failure does not stop the rest.
  HRESULT Unregister() const;

 private:
  HINSTANCE m_handle = nullptr;
  std::span<const CreatableClass> m_classes;
  std::atomic<long> m_locks = 0;
};

/// Holds one lock of the module during its lifetime.
class ModuleLock {
 public:
  ModuleLock() noexcept { CSolidWorksAddInModule::Instance().Lock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock() { CSolidWorksAddInModule::Instance().Unlock(); }
};
