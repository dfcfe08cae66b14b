// Inserts a file as a new component of the active assembly, at the point that the user picked.
#include "CStringHelper.h"
#include "diagnostics/diagnostics.h"
#include "document_type.h"
#include "host/assembly.h"
#include "open_silently.h"
#include "selection_point.h"
#include "solidworks_add_in.h"

namespace {

// Option of AddComponent5: the component's current configuration.
constexpr long kCurrentConfiguration = 0;

HRESULT AddComponent(const IAssemblyDocPtr& assembly, const CComBSTR& path, const SelectionPoint& at,
                     IComponent2Ptr& component) {
  return assembly->AddComponent5(path, kCurrentConfiguration, CComBSTR(L""), VARIANT_FALSE, CComBSTR(L""),
                                 at.x, at.y, at.z, &component);
}

}  // namespace

void CSolidWorksAddIn::InsertChildFile(const std::wstring& path) {
  namespace site = log_site::insert;
  if (!NamesPart(path) && !NamesAssembly(path)) {
    return ShowMessage(L"请检查当前选择插入的文件类型，添加部件失败");
  }
  IModelDoc2Ptr active;
  HRESULT result = iSwApp->get_IActiveDoc2(&active);
  if (FAILED(result)) return LogFailure(site::kActiveDocument, result, path);
  if (!active) return;
  long type = swDocNONE;
  active->GetType(&type);  // not used, but keeps the sequence of host calls; the query below decides

  const CComBSTR name = CStringHelper::String2CComBSTR(path);
  IModelDoc2Ptr inserted;
  result =
      OpenSilently(iSwApp, name, NamesAssembly(path) ? swDocASSEMBLY : swDocPART, CComBSTR(L""), inserted);
  if (FAILED(result) || !inserted) return ReportFailedOpen(site::kOpenDoc, path, result);

  IAssemblyDocPtr assembly;
  result = active->QueryInterface(IID_PPV_ARGS(&assembly));
  if (FAILED(result)) return LogFailure(site::kAssembly, result, path);
  ISelectionMgrPtr selection;
  result = active->get_ISelectionManager(&selection);
  if (FAILED(result)) return LogFailure(site::kSelectionManager, result, path);
  SelectionPoint point;
  result = ReadSelectionPoint(selection, point);
  if (FAILED(result)) return LogFailure(site::kSelectionPoint, result, path);
  IComponent2Ptr component;
  result = AddComponent(assembly, name, point, component);
  if (FAILED(result)) return LogFailure(site::kAddComponent, result, path);
  if (!component) return ShowMessage(L"添加部件失败");
  iSwApp->CloseDoc(name);
}
