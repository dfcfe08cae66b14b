#include "DrawingHelper.h"

#include "CStringHelper.h"
#include "diagnostics/diagnostics.h"
#include "documents/document_type.h"
#include "documents/open_silently.h"
#include "documents/selection_point.h"
#include "host/drawing.h"
#include "host/model_doc.h"

const char kDrawingHelperSourceFile[] = __FILE__;

void CDrawingHelper::InsertChildFile(const ISldWorksPtr& application, const std::wstring& path) const {
  namespace site = log_site::draw;
  LogInformation(site::kStart, path);
  IModelDoc2Ptr active;
  HRESULT result = application->get_IActiveDoc2(&active);
  IDrawingDocPtr drawing;
  if (SUCCEEDED(result)) result = active->QueryInterface(IID_PPV_ARGS(&drawing));
  if (FAILED(result)) return LogFailure(site::kActiveDocument, result, path);

  const CComBSTR name = CStringHelper::String2CComBSTR(path);
  IModelDoc2Ptr model;
  result = OpenSilently(application, name, GetDocumentType(path), CComBSTR(L""), model);
  if (FAILED(result) || !model) return LogFailure(site::kOpenDoc, result, path);

  // Opening made the model the active document, so views go into the drawing that was active before.
  ISelectionMgrPtr selection;
  result = active->get_ISelectionManager(&selection);
  SelectionPoint point;
  if (SUCCEEDED(result)) result = ReadSelectionPoint(selection, point);
  if (FAILED(result)) return LogFailure(site::kSelectionPoint, result, path);

  IViewPtr view;
  result = drawing->CreateDrawViewFromModelView3(name, CComBSTR(L"*Front"), point.x, point.y, point.z, &view);
  if (FAILED(result) || !view) LogFailure(site::kCreateView, result, path);
}
