// Creates a material in the PLM system from the active document, and fills the document from a material.
#include "CCADFileHelper.h"
#include "CCADStringHelper.h"
#include "CDisplayErrorMsg.h"
#include "CStringHelper.h"
#include "CZALCIHandlerContextHelper.h"
#include "diagnostics/diagnostics.h"
#include "documents/open_silently.h"
#include "host/constants.h"
#include "module/module_state.h"
#include "plm_commands.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in.h"

namespace {

constexpr const wchar_t* kNothing = L"{}";
constexpr const wchar_t* kCreatedMaterial = L"data";
constexpr const wchar_t* kBackFill = L"material_property_back_fill";

/// The file's extension: the text after the last dot, not counting a version number at the end.
std::wstring FileExtension(const std::wstring& path) {
  std::wstring version;
  std::wstring name;
  const std::wstring& text = CCADFileHelper::IsProeFile(path, version, name) ? name : path;
  const auto point = text.rfind(L'.');
  return point == std::wstring::npos ? std::wstring() : text.substr(point + 1);
}

bool Ask(unsigned text_id, unsigned caption_id) {
  return ShowCaptionedMessage(text_id, caption_id, MB_OKCANCEL) == IDOK;
}

/// Shows the platform's error box for `code`; shows nothing for a success code.
void DisplayError(HRESULT code) {
  CDisplayErrorMsg::Display(CZALCIHandlerContextHelper::Instance().GetErrorMsg(code), MB_ICONERROR);
}

/// An object with one member; `value` is its JSON text, which is inserted unchanged.
std::wstring Wrap(const wchar_t* member, const std::wstring& value) {
  return std::wstring(L"{\"") + member + L"\":" + value + L"}";
}

}  // namespace

STDMETHODIMP CSolidWorksAddIn::PlmCreateMaterial() {
  namespace site = log_site::create_material;
  const ModuleState state;
  RequireInvoker();
  if (!GetCurrentFilePath(m_currentFilePath)) {
    SendCommand(plm_command::kCreateMaterial);
    return S_OK;
  }
  std::wstring request;
  IModelDoc2Ptr document;
  if (Ask(IDS_EXTRACT_PROPERTIES_QUESTION, IDS_EXTRACT_PROPERTIES)) {
    const auto properties = std::make_shared<CJsonObject>();
    const HRESULT result = ExtractProperties(properties, document);
    if (!document) return result;
    request = Wrap(L"extract_info", properties->ToJson());
  }
  const PlmAnswer answer = SendCommand(plm_command::kCreateMaterial, std::move(request));
  document = nullptr;  // kept until the PLM client has answered
  if (answer.text == kNothing) return S_OK;
  if (!Ask(IDS_BACKFILL_PROPERTIES_QUESTION, IDS_BACKFILL_PROPERTIES)) return S_OK;

  if (!answer.object->IsExist(kCreatedMaterial)) return S_OK;
  const std::wstring material = answer.object->GetObjectCopy(kCreatedMaterial)->ToJson();
  const std::shared_ptr<CJsonObject> back_fill =
      SendCommand(plm_command::kMaterialBackFill, Wrap(L"backfill_info_from_create_material", material))
          .object;
  if (!back_fill->IsExist(kBackFill)) return S_OK;
  const HRESULT result = PutAttributes(back_fill->GetObjectShared(kBackFill));
  // Logged after every write, successful or not, unlike in PlmMaterialBackFill.
  LogFailure(site::kBackFill, result);
  DisplayError(result);
  return result;
}

/// Reads the properties of the active document, whose path is m_currentFilePath.
/// @param document the document; null if the properties were not read, which has then been logged.
/// @return the result of the step that failed; a success code also if the host returned no document.
HRESULT CSolidWorksAddIn::ExtractProperties(const std::shared_ptr<CJsonObject>& properties,
                                            IModelDoc2Ptr& document) {
  namespace site = log_site::create_material;
  m_documentTypes = {{L"sldprt", swDocPART}, {L"sldasm", swDocASSEMBLY}, {L"slddrw", swDocDRAWING}};
  const long type = m_documentTypes[CCADStringHelper::ToLower(FileExtension(m_currentFilePath))];
  HRESULT result =
      OpenSilently(iSwApp, CStringHelper::String2CComBSTR(m_currentFilePath), type, nullptr, document);
  if (FAILED(result) || !document) {
    document = nullptr;
    LogFailure(site::kOpenDoc, result, m_currentFilePath);
    return result;
  }
  result = GetCustomProperty(document, properties);
  if (FAILED(result)) {
    document = nullptr;
    LogFailure(site::kReadProperties, result, m_currentFilePath);
  }
  return result;
}

STDMETHODIMP CSolidWorksAddIn::PlmMaterialBackFill() {
  const ModuleState state;
  RequireInvoker();
  if (!GetCurrentFilePath(m_currentFilePath)) {
    ShowCaptionedMessage(IDS_NO_MODEL_LOADED, IDS_LOAD_MODEL, MB_OK);
    return S_OK;
  }
  const PlmAnswer answer = SendCommand(plm_command::kMaterialBackFill, LoginText());
  if (CCADStringHelper::StringCompare(answer.text, kNothing, false) == 0) return S_OK;
  if (!answer.object->IsExist(kBackFill)) return S_OK;
  const HRESULT result = PutAttributes(answer.object->GetObjectShared(kBackFill));
  if (SUCCEEDED(result)) return S_OK;
  LogFailure(log_site::material_back_fill::kBackFill, result);
  DisplayError(result);
  return result;
}
