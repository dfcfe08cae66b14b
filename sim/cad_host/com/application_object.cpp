#include "application_object.h"

#include "command_manager_object.h"
#include "document_object.h"

namespace cad_host {

STDMETHODIMP ApplicationObject::ActivateDoc(BSTR Name, IDispatch** retval) {
  return Call(L"ISldWorks::ActivateDoc", {In(Name), Out(retval)}, [&](HostState& host) {
    const auto document = host.documents.Find(Text(Name));
    if (!document) return S_OK;
    host.documents.Activate(document);
    *retval = ServeDocument(host.services, document);
    return S_OK;
  });
}

STDMETHODIMP ApplicationObject::CloseDoc(BSTR Name) {
  return Call(L"ISldWorks::CloseDoc", {In(Name)}, [&](HostState& host) {
    if (const auto document = host.documents.Find(Text(Name))) host.documents.Close(document);
    return S_OK;
  });
}

STDMETHODIMP ApplicationObject::RevisionNumber(BSTR* retval) {
  return Call(L"ISldWorks::RevisionNumber", {Out(retval)}, [&](HostState& host) {
    Give(retval, host.revision);
    return S_OK;
  });
}

STDMETHODIMP ApplicationObject::GetOpenDocumentByName(BSTR DocumentName, IDispatch** retval) {
  return Call(L"ISldWorks::GetOpenDocumentByName", {In(DocumentName), Out(retval)}, [&](HostState& host) {
    if (const auto document = host.documents.Find(Text(DocumentName))) {
      *retval = ServeDocument(host.services, document);
    }
    return S_OK;
  });
}

STDMETHODIMP ApplicationObject::SetAddinCallbackInfo(long ModuleHandle, IDispatch* AddinCallbacks,
                                                     long Cookie, VARIANT_BOOL* retval) {
  return Call(L"ISldWorks::SetAddinCallbackInfo",
              {In(ModuleHandle), In(AddinCallbacks), In(Cookie), Out(retval)}, [&](HostState& host) {
                AddIn* const add_in = host.add_ins.Find(Cookie);
                if (!add_in || !AddinCallbacks) return S_OK;
                add_in->callbacks = AddinCallbacks;
                add_in->module_handle = ModuleHandle;
                Give(retval, true);
                return S_OK;
              });
}

STDMETHODIMP ApplicationObject::get_IActiveDoc2(IModelDoc2** retval) {
  return Call(L"ISldWorks::get_IActiveDoc2", {Out(retval)}, [&](HostState& host) {
    if (const auto document = host.documents.Active()) *retval = ServeDocument(host.services, document);
    return S_OK;
  });
}

STDMETHODIMP ApplicationObject::OpenDoc6(BSTR FileName, long Type, long Options, BSTR Configuration,
                                         long* Errors, long* Warnings, IModelDoc2** retval) {
  return Call(
      L"ISldWorks::OpenDoc6",
      {In(FileName), In(Type), In(Options), In(Configuration), Out(Errors), Out(Warnings), Out(retval)},
      [&](HostState& host) {
        const OpenResult opened = host.documents.Open({Text(FileName), Type, Options, Text(Configuration)});
        *Errors = opened.errors;
        if (!opened.document) {
          host.services->journal.Note(L"not opened: " + opened.reason);
          return host.services->quirks.HappensNow(Quirk::kSilentOpenFailure) ? S_OK : E_FAIL;
        }
        *retval = ServeDocument(host.services, opened.document);
        return S_OK;
      });
}

STDMETHODIMP ApplicationObject::GetCommandManager(long Cookie, ICommandManager** retval) {
  return Call(L"ISldWorks::GetCommandManager", {In(Cookie), Out(retval)}, [&](HostState& host) {
    if (const AddIn* const add_in = host.add_ins.Find(Cookie)) {
      *retval = ObjectFor<CommandManagerObject>(host.services, add_in->commands);
    }
    return S_OK;
  });
}

STDMETHODIMP ApplicationObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
  return Call(L"IConnectionPointContainer::EnumConnectionPoints", {Out(points)},
              [](HostState&) { return E_NOTIMPL; });
}

STDMETHODIMP ApplicationObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  return Call(L"IConnectionPointContainer::FindConnectionPoint", {In(iid), Out(point)}, [&](HostState& host) {
    if (iid != host::kApplicationEventsId) return CONNECT_E_NOCONNECTION;
    *point = ObjectFor<ConnectionPointObject>(host.services, host.shared_from_this());
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointObject::GetConnectionInterface(IID* iid) {
  return Call(L"IConnectionPoint::GetConnectionInterface", {Out(iid)}, [&](HostState&) {
    *iid = host::kApplicationEventsId;
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointObject::GetConnectionPointContainer(IConnectionPointContainer** container) {
  return Call(L"IConnectionPoint::GetConnectionPointContainer", {Out(container)}, [&](HostState& host) {
    *container = ObjectFor<ApplicationObject>(host.services, host.shared_from_this());
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointObject::Advise(IUnknown* sink, DWORD* cookie) {
  return Call(L"IConnectionPoint::Advise", {In(sink), Out(cookie)}, [&](HostState& host) {
    if (!sink) return E_POINTER;
    IDispatchPtr events;
    const HRESULT answers =
        sink->QueryInterface(host::kApplicationEventsId, reinterpret_cast<void**>(&events));
    if (FAILED(answers)) return CONNECT_E_CANNOTCONNECT;
    *cookie = host.events.Advise(events);
    return S_OK;
  });
}

STDMETHODIMP ConnectionPointObject::Unadvise(DWORD cookie) {
  return Call(L"IConnectionPoint::Unadvise", {In(cookie)},
              [&](HostState& host) { return host.events.Unadvise(cookie) ? S_OK : CONNECT_E_NOCONNECTION; });
}

STDMETHODIMP ConnectionPointObject::EnumConnections(IEnumConnections** connections) {
  return Call(L"IConnectionPoint::EnumConnections", {Out(connections)}, [](HostState&) { return E_NOTIMPL; });
}

}  // namespace cad_host
