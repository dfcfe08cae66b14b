/// @file An object that add-ins hold pointers to, whatever interfaces it serves.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <memory>
#include <string>

#include "services.h"

namespace cad_host {

/// Lives as long as somebody holds a reference: the host itself keeps none, so every object that lives is
/// held from outside.
class HostObject {
 public:
  explicit HostObject(std::shared_ptr<Services> services);
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;
  virtual ~HostObject();

  /// The object behind a pointer that came from outside; null for another program's object.
  static HostObject* From(IUnknown* pointer);

  /// Such as `IModelDoc2 of part "bolt.sldprt"`.
  virtual std::wstring Describe() const = 0;

  ULONG References() const { return m_references; }

 protected:
  /// The answer to the query by which From() recognises an object; not counted.
  static const GUID kId;

  ULONG AddReference() { return ++m_references; }
  ULONG DropReference();

  const std::shared_ptr<Services>& SharedServices() const { return m_services; }

 private:
  std::shared_ptr<Services> m_services;
  ULONG m_references = 0;
};

/// The name of an interface, such as "IModelDoc2"; its id as text where the host does not know it.
std::wstring InterfaceName(REFIID iid);

}  // namespace cad_host
