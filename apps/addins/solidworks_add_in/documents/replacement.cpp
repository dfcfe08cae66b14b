#include "replacement.h"

#include "CStringHelper.h"
#include "host/constants.h"
#include "resources/resource_ids.h"

bool FailReplacement(const LogSite& site, HRESULT code, std::wstring_view detail) {
  ShowMessage(IDS_REPLACEMENT_FAILED);
  LogFailure(site, code, detail);
  return false;
}

ActiveAssembly GetActiveAssembly(const ISldWorksPtr& application, const ActiveAssemblySites& sites) {
  IModelDoc2Ptr document;
  const HRESULT result = application->get_IActiveDoc2(&document);
  if (FAILED(result)) {
    FailReplacement(sites.document, result);
    return {};
  }
  long type = -1;
  document->GetType(&type);
  if (type != swDocASSEMBLY) {
    ShowMessage(IDS_REPLACEMENT_NOT_SUPPORTED);
    LogFailureText(sites.type);
    return {};
  }
  IAssemblyDocPtr assembly;
  const HRESULT queried = document->QueryInterface(IID_PPV_ARGS(&assembly));
  if (FAILED(queried) && queried != E_NOINTERFACE) _com_issue_error(queried);
  if (!assembly) {
    FailReplacement(sites.assembly, result);
    return {};
  }
  return {document, assembly};
}

bool ReplaceSelectedComponent(const ISldWorksPtr& application, long host_major,
                              const IAssemblyDocPtr& assembly, const std::wstring& path,
                              const std::wstring& downloaded, const LogSite& site) {
  constexpr long kConfigurationByName = 0;
  constexpr long kFirstMajorWithReplacement = 26;  // release 2018
  VARIANT_BOOL replaced = VARIANT_FALSE;
  // The slot of an older host may lie behind the end of its vtable.
  const bool is_too_old = host_major > 0 && host_major < kFirstMajorWithReplacement;
  const HRESULT result =
      is_too_old ? E_NOTIMPL
                 : assembly->ReplaceComponents2(CStringHelper::String2CComBSTR(path), CComBSTR(L""),
                                                VARIANT_TRUE, kConfigurationByName, VARIANT_TRUE, &replaced);
  // Only the result counts: hosts may return false in `replaced` although they replaced the component.
  if (SUCCEEDED(result) && result != S_FALSE) return true;
  FailReplacement(site, result);
  application->CloseDoc(CStringHelper::String2CComBSTR(downloaded));
  return false;
}
