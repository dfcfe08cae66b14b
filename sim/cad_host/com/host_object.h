/// @file The base of all objects that add-ins hold pointers to.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <memory>
#include <string>

#include "services.h"

namespace cad_host {

/// Exists as long as somebody holds a reference. The host itself holds no references, so every existing
/// object is held from outside.
class HostObject {
 public:
  explicit HostObject(std::shared_ptr<Services> services);
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;
  virtual ~HostObject();

  /// The host's object for a pointer that came from outside; null if it is not an object of the host.
  static HostObject* From(IUnknown* pointer);

  /// Such as `part "bolt.sldprt"`.
  virtual std::wstring Describe() const = 0;

  ULONG References() const { return m_references; }

 protected:
  /// From() queries for this id to recognise an object of the host; the query adds no reference.
  static const GUID kId;

  ULONG AddReference() { return ++m_references; }
  ULONG DropReference();

  const std::shared_ptr<Services>& SharedServices() const { return m_services; }

 private:
  std::shared_ptr<Services> m_services;
  ULONG m_references = 0;
};

/// The name of an interface, such as "IModelDoc2"; its id as text if the host does not know it.
std::wstring InterfaceName(REFIID iid);

}  // namespace cad_host
