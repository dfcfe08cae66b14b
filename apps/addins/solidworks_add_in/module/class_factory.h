/// @file The class object of a creatable class.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include "com_module.h"
#include "com_object.h"
#include "guards.h"

/// A standard COM class object: every CreateInstance creates a new object of its class.
class ClassFactory : public IClassFactory {
 public:
  using Interfaces = InterfaceList<IClassFactory>;

  explicit ClassFactory(const CreatableClass& creatable) : m_class(creatable) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;
  virtual ~ClassFactory() = default;

  /// @return CLASS_E_NOAGGREGATION if there is an `outer` object; else the result of the creation.
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;

  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  const CreatableClass& m_class;
};
