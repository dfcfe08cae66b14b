#include "component_object.h"

#include "cad_host/host_error.h"
#include "host_state.h"
#include "host_values.h"

namespace cad_host {

std::wstring ComponentObject::Describe() const {
  const auto component = GetState();
  return component ? L"component \"" + component->record.name + L"\"" : L"a removed component";
}

STDMETHODIMP ComponentObject::GetSuppression(long* retval) {
  return Call(L"IComponent2::GetSuppression", {Out(retval)}, [&](Component& component) {
    *retval = component.record.suppression;
    return S_OK;
  });
}

STDMETHODIMP ComponentObject::GetPathName(BSTR* retval) {
  return Call(L"IComponent2::GetPathName", {Out(retval)}, [&](Component& component) {
    Give(retval, component.record.path);
    return S_OK;
  });
}

STDMETHODIMP ComponentObject::get_Name2(BSTR* retval) {
  return Call(L"IComponent2::get_Name2", {Out(retval)}, [&](Component& component) {
    Give(retval, component.record.name);
    return S_OK;
  });
}

STDMETHODIMP ComponentObject::SetSuppression2(long State, long* retval) {
  return Call(L"IComponent2::SetSuppression2", {In(State), Out(retval)}, [&](Component& component) {
    if (State < swComponentSuppressed || State > swComponentResolved) {
      *retval = swSuppressionBadState;
      return S_OK;
    }
    try {
      if (State == swComponentSuppressed) {
        Documents::Suppress(component);
      } else if (component.IsSuppressed()) {
        Session()->documents.Resolve(component);
      }
      *retval = swSuppressionChangeOk;
    } catch (const HostError& error) {
      SharedServices()->journal.Note(component.record.name + L" stays suppressed: " + error.Message());
      *retval = swSuppressionChangeFailed;
    }
    return S_OK;
  });
}

}  // namespace cad_host
