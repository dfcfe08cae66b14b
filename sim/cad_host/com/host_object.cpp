#include "host_object.h"

#include <algorithm>
#include <utility>

#include "host/application.h"
#include "host/application_events.h"
#include "host/assembly.h"
#include "host/command_manager.h"
#include "host/custom_properties.h"
#include "host/drawing.h"
#include "host/model_doc.h"
#include "host/selection.h"

namespace cad_host {
namespace {

struct KnownInterface {
  const IID& id;
  const wchar_t* name;
};

const KnownInterface kKnownInterfaces[] = {
    {__uuidof(IUnknown), L"IUnknown"},
    {__uuidof(IDispatch), L"IDispatch"},
    {__uuidof(IConnectionPointContainer), L"IConnectionPointContainer"},
    {__uuidof(IConnectionPoint), L"IConnectionPoint"},
    {__uuidof(ISldWorks), L"ISldWorks"},
    {__uuidof(IModelDoc2), L"IModelDoc2"},
    {__uuidof(IModelDocExtension), L"IModelDocExtension"},
    {__uuidof(ICustomPropertyManager), L"ICustomPropertyManager"},
    {__uuidof(IAssemblyDoc), L"IAssemblyDoc"},
    {__uuidof(IDrawingDoc), L"IDrawingDoc"},
    {__uuidof(ISelectionMgr), L"ISelectionMgr"},
    {__uuidof(IComponent2), L"IComponent2"},
    {__uuidof(ICommandManager), L"ICommandManager"},
    {__uuidof(ICommandGroup), L"ICommandGroup"},
    {__uuidof(ICommandTab), L"ICommandTab"},
    {__uuidof(ICommandTabBox), L"ICommandTabBox"},
    {host::kApplicationEventsId, L"the application events"},
};

}  // namespace

const GUID HostObject::kId = {0x2f0d8a54, 0x7b1e, 0x4c39, {0x9a, 0x66, 0x1d, 0x0e, 0x53, 0xc8, 0x71, 0xbe}};

HostObject::HostObject(std::shared_ptr<Services> services) : m_services(std::move(services)) {
  m_services->objects.push_back(this);
}

HostObject::~HostObject() { std::erase(m_services->objects, this); }

HostObject* HostObject::From(IUnknown* pointer) {
  void* object = nullptr;
  if (!pointer || FAILED(pointer->QueryInterface(kId, &object))) return nullptr;
  return static_cast<HostObject*>(object);
}

ULONG HostObject::DropReference() {
  const ULONG left = --m_references;
  if (left > 0) return left;
  if (m_services->on_last_release) m_services->on_last_release(Describe());
  delete this;
  return 0;
}

std::wstring InterfaceName(REFIID iid) {
  for (const KnownInterface& known : kKnownInterfaces) {
    if (iid == known.id) return known.name;
  }
  wchar_t text[40] = {};
  StringFromGUID2(iid, text, static_cast<int>(std::size(text)));
  return text;
}

}  // namespace cad_host
