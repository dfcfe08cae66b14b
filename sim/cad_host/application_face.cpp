#include "application_face.h"

#include "command_manager_face.h"
#include "connection_point_face.h"
#include "document_face.h"

namespace cad_host {

STDMETHODIMP ApplicationFace::ActivateDoc(BSTR Name, IDispatch** retval) {
  return Call(L"ISldWorks::ActivateDoc", {In(Name), Out(retval)}, [&](HostState& host) {
    const auto document = host.documents.Find(Text(Name));
    if (!document) return S_OK;
    host.documents.Activate(document);
    *retval = ServeDocument(host.services, document);
    return S_OK;
  });
}

STDMETHODIMP ApplicationFace::CloseDoc(BSTR Name) {
  return Call(L"ISldWorks::CloseDoc", {In(Name)}, [&](HostState& host) {
    if (const auto document = host.documents.Find(Text(Name))) host.documents.Close(document);
    return S_OK;
  });
}

STDMETHODIMP ApplicationFace::RevisionNumber(BSTR* retval) {
  return Call(L"ISldWorks::RevisionNumber", {Out(retval)}, [&](HostState& host) {
    Give(retval, host.revision);
    return S_OK;
  });
}

STDMETHODIMP ApplicationFace::GetOpenDocumentByName(BSTR DocumentName, IDispatch** retval) {
  return Call(L"ISldWorks::GetOpenDocumentByName", {In(DocumentName), Out(retval)}, [&](HostState& host) {
    if (const auto document = host.documents.Find(Text(DocumentName))) {
      *retval = ServeDocument(host.services, document);
    }
    return S_OK;
  });
}

STDMETHODIMP ApplicationFace::SetAddinCallbackInfo(long ModuleHandle, IDispatch* AddinCallbacks, long Cookie,
                                                   VARIANT_BOOL* retval) {
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

STDMETHODIMP ApplicationFace::get_IActiveDoc2(IModelDoc2** retval) {
  return Call(L"ISldWorks::get_IActiveDoc2", {Out(retval)}, [&](HostState& host) {
    if (const auto document = host.documents.Active()) *retval = ServeDocument(host.services, document);
    return S_OK;
  });
}

STDMETHODIMP ApplicationFace::OpenDoc6(BSTR FileName, long Type, long Options, BSTR Configuration,
                                       long* Errors, long* Warnings, IModelDoc2** retval) {
  return Call(
      L"ISldWorks::OpenDoc6",
      {In(FileName), In(Type), In(Options), In(Configuration), Out(Errors), Out(Warnings), Out(retval)},
      [&](HostState& host) {
        const OpenResult opened = host.documents.Open({Text(FileName), Type, Options, Text(Configuration)});
        *Errors = opened.errors;
        if (!opened.document) {
          host.services->journal.Note(L"not opened: " + opened.reason);
          return S_OK;
        }
        *retval = ServeDocument(host.services, opened.document);
        return S_OK;
      });
}

STDMETHODIMP ApplicationFace::GetCommandManager(long Cookie, ICommandManager** retval) {
  return Call(L"ISldWorks::GetCommandManager", {In(Cookie), Out(retval)}, [&](HostState& host) {
    if (const AddIn* const add_in = host.add_ins.Find(Cookie)) {
      *retval = FaceOf<CommandManagerFace>(host.services, add_in->commands);
    }
    return S_OK;
  });
}

STDMETHODIMP ApplicationFace::EnumConnectionPoints(IEnumConnectionPoints** points) {
  return Call(L"IConnectionPointContainer::EnumConnectionPoints", {Out(points)},
              [](HostState&) { return E_NOTIMPL; });
}

STDMETHODIMP ApplicationFace::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  return Call(L"IConnectionPointContainer::FindConnectionPoint", {In(iid), Out(point)}, [&](HostState& host) {
    if (iid != host::kApplicationEventsId) return CONNECT_E_NOCONNECTION;
    *point = FaceOf<ConnectionPointFace>(host.services, host.shared_from_this());
    return S_OK;
  });
}

}  // namespace cad_host
