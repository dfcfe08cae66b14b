// What is prescribed for the calls that fail in a command. The rows of host calls are about the simulated
// host's calls in their order in a good run.
#include <algorithm>

#include "expectations.h"
#include "result_codes.h"

namespace {

constexpr const wchar_t* kFailed = L"Model replacement failed.";
constexpr const wchar_t* kNoAssembly = L"The Current Model does not Support Replacement";
constexpr const wchar_t* kNoModel = L"No model is currently loaded, please load a valid model and try again.";
constexpr const wchar_t* kNotAdded = L"添加部件失败";
constexpr const wchar_t* kNotOpened = L"打开文件";
constexpr const wchar_t* kErrorBox = L"Error code: 0x{}";
constexpr const wchar_t* kNoSelectionObject = L"iSwModel->get_ISelectionManager failed.<hr=0x{}>";
constexpr const wchar_t* kNoPointer = L"raised 0x80004003: ";

constexpr const char* kOpening = " Insert Open PlmMyCheckOutList PlmQuery PlmTaskManage ";
constexpr const char* kReplacing = " CoverByCopy CoverBySwap Replace ";
constexpr const char* kCovering = " CoverByCopy CoverBySwap ";
constexpr const char* kSelecting = " CoverByCopy CoverBySwap Insert ";
constexpr const char* kBackFill = " PlmCreateMaterial PlmMaterialBackFill ";
constexpr const char* kImports = " PlmImportCurrent PlmImportChangeItem PlmLotimport ";
constexpr const char* kAskingOnly =
    " PlmWf PlmCode PlmMyTempMaterial PlmLogOut PlmMaterialBackFill "
    "PlmMyCheckOutList PlmQuery PlmTaskManage Open Insert Replace CoverByCopy CoverBySwap PlmCreateMaterial ";

// A question to the PLM client that gets no answer. The second call is about reading the answer.
constexpr Prescribed kUnanswered[] = {
    {" PlmLogin ", "call 2 of GetOverlappedResult", Ways::kAll, hr::kNoAnswer,
     L"QD_PLMLogin] got no answer: "},
    {kImports, "call 2 of GetOverlappedResult", Ways::kAll, E_FAIL, L"failed<hr=0x80004005>"},
    {kAskingOnly, "call 2 of GetOverlappedResult", Ways::kAll, S_OK, L"] got no answer: "},
};

constexpr Prescribed kOpenFile[] = {
    {kOpening, "call 1 of ISldWorks::OpenDoc6", Ways::kAll, S_OK, L"screw.sldprt<hr=0x{}>", kNotOpened},
    {" PlmCreateMaterial ", "call 1 of ISldWorks::OpenDoc6", Ways::kCodes, kItsCode,
     L"iSwApp->OpenDoc6 failed, opened file path: "},
    {" PlmCreateMaterial ", "call 1 of ISldWorks::OpenDoc6", Ways::kSuccesses, S_OK,
     L"iSwApp->OpenDoc6 failed, opened file path: "},
};

constexpr Prescribed kInsert[] = {
    {" Insert ", "call 1 of ISldWorks::get_IActiveDoc2", Ways::kCodes, S_OK, L"iSwApp->get_IActiveDoc2: "},
    {" Insert ", "call 1 of IModelDoc2::QueryInterface(IAssemblyDoc)", Ways::kCodes, S_OK,
     L"iSwModel->QueryInterface: "},
    {" Insert ", "call 1 of IModelDoc2::get_ISelectionManager", Ways::kCodes, S_OK,
     L"iSwModel->get_ISelectionManager: "},
    {" Insert ", "call 1 of ISelectionMgr::IGetSelectionPoint2", Ways::kCodes, S_OK,
     L"iSelectionMgr->IGetSelectionPoint2: "},
    {" Insert ", "call 1 of IAssemblyDoc::AddComponent5", Ways::kCodes, S_OK, L"pAssmDoc->AddComponent5: "},
    {" Insert ", "call 1 of IAssemblyDoc::AddComponent5", Ways::kSuccesses, S_OK, L"", kNotAdded},
};

constexpr Prescribed kReplace[] = {
    {" Replace ", "call 1 of ISldWorks::get_IActiveDoc2", Ways::kCodes, S_OK,
     L"iSwApp->get_IActiveDoc2<hr=0x{}>", kFailed},
    {kReplacing, "call 1 of ISldWorks::get_IActiveDoc2", Ways::kSuccesses, E_POINTER, kNoPointer},
    {kReplacing, "call 1 of IModelDoc2::GetType", Ways::kAll, S_OK, L"moduleType != swDocASSEMBLY",
     kNoAssembly},
    {kReplacing, "call 1 of IModelDoc2::QueryInterface(IAssemblyDoc)", Ways::kCodes, kItsCode,
     L"raised 0x{}: "},
    {kReplacing, "call 1 of IModelDoc2::QueryInterface(IAssemblyDoc)", Ways::kSuccesses, S_OK,
     L"iSwApp->get_IActiveDoc2<hr=0x0>", kFailed},
    {" CoverByCopy Replace ", "call 1 of IAssemblyDoc::ReplaceComponents2", Ways::kCodes, S_OK,
     L"pAssDoc->ReplaceComponents2<hr=0x{}>", kFailed},
    {" CoverByCopy Replace ", "call 1 of IAssemblyDoc::ReplaceComponents2", Ways::kSFalse, S_OK,
     L"pAssDoc->ReplaceComponents2<hr=0x1>", kFailed},
};

constexpr Prescribed kCover[] = {
    {kCovering, "call 1 of ISldWorks::get_IActiveDoc2", Ways::kCodes, S_OK,
     L"iSwApp->get_IActiveDoc2 failed.<hr=0x{}>", kFailed},
    {kCovering, "call 1 of IModelDoc2::get_ISelectionManager", Ways::kCodes, S_OK, kNoSelectionObject,
     kFailed},
    {kSelecting, "call 1 of IModelDoc2::get_ISelectionManager", Ways::kSuccesses, E_POINTER, kNoPointer},
    {kCovering, "call 1 of ISelectionMgr::GetSelectedObject6", Ways::kAll, S_OK, kNoSelectionObject, kFailed},
    {kCovering, "call 1 of IComponent2::QueryInterface(IComponent2)", Ways::kAll, S_OK,
     L"pComponentDisp->QueryInterface failed.<hr=0x{}>", kFailed},
    {kCovering, "call 1 of IComponent2::GetPathName", Ways::kCodes, S_OK,
     L"swSelectedComponent->GetPathName failed.<hr=0x{}>", kFailed},
    {kCovering, "call 1 of CreateDirectoryW", Ways::kAll, S_OK, L"<hr=0xa3012012>"},
    {" CoverByCopy ", "call 1 of CopyFileW", Ways::kAll, S_OK, L" failed. Get Last Error: 112<hr=0xa3012005>",
     kFailed},
    {" CoverBySwap ", "call 1 of IComponent2::SetSuppression2", Ways::kCodes, S_OK,
     L"swSelectedComponent->SetSuppression2 suppress model failed.<hr=0x{}>", kFailed},
    {" CoverBySwap ", "call 1 of MoveFileExW", Ways::kAll, S_OK,
     L" failed. Get Last Error: 32<hr=0xa3012006>", kFailed},
    {" CoverBySwap ", "call 4 of GetFileAttributesW", Ways::kAll, S_OK,
     L"GetFileAttributes failed. Get Last Error: 5<hr=0xa3012003>", kFailed},
    {" CoverBySwap ", "call 1 of CopyFileW", Ways::kAll, S_OK, L" failed. Get Last Error: 112<hr=0xa3012005>",
     kFailed},
    {" CoverBySwap ", "call 2 of IComponent2::SetSuppression2", Ways::kCodes, S_OK,
     L"swSelectedComponent->SetSuppression2 resolve model failed.<hr=0x{}>", kFailed},
};

constexpr Prescribed kReadProperties[] = {
    {" PlmCreateMaterial ", "call 1 of IModelDoc2::get_Extension", Ways::kCodes, kItsCode,
     L"get_Extension<hr=0x{}>"},
    {" PlmCreateMaterial ", "call 1 of IModelDocExtension::get_CustomPropertyManager", Ways::kCodes, kItsCode,
     L"pDocExten->get_CustomPropertyManager<hr=0x{}>"},
    {" PlmCreateMaterial ", "call 1 of ICustomPropertyManager::GetNames", Ways::kCodes, kItsCode,
     L"pCustomMgr->GetNames<hr=0x{}>"},
    // Only the last property's code is the result.
    {" PlmCreateMaterial ", "call 1 of ICustomPropertyManager::Get3", Ways::kCodes, S_OK,
     L"pCustomMgr->Get3: A<hr=0x{}>"},
    {" PlmCreateMaterial ", "call 2 of ICustomPropertyManager::Get3", Ways::kCodes, S_OK,
     L"pCustomMgr->Get3: B<hr=0x{}>"},
    {" PlmCreateMaterial ", "call 3 of ICustomPropertyManager::Get3", Ways::kCodes, kItsCode,
     L"pCustomMgr->Get3: C<hr=0x{}>"},
};

constexpr Prescribed kWriteProperties[] = {
    {" PlmMaterialBackFill ", "call 1 of ISldWorks::get_IActiveDoc2", Ways::kAll, S_OK, L"", kNoModel},
    {" PlmMaterialBackFill ", "call 1 of IModelDoc2::GetPathName", Ways::kAll, S_OK, L"", kNoModel},
    {kBackFill, "call 2 of ISldWorks::get_IActiveDoc2", Ways::kCodes, kItsCode,
     L"iSwApp->get_IActiveDoc2<hr=0x{}>", kErrorBox},
    {" PlmMaterialBackFill ", "call 1 of IModelDoc2::get_Extension", Ways::kCodes, kItsCode,
     L"pModelDoc2->get_Extension<hr=0x{}>", kErrorBox},
    {" PlmMaterialBackFill ", "call 1 of IModelDoc2::get_Extension", Ways::kSuccesses, E_POINTER, kNoPointer},
    {" PlmMaterialBackFill ", "call 1 of IModelDocExtension::get_CustomPropertyManager", Ways::kCodes,
     kItsCode, L"pModelDocExtension->get_CustomPropertyManager<hr=0x{}>", kErrorBox},
    {" PlmMaterialBackFill ", "call 1 of IModelDocExtension::get_CustomPropertyManager", Ways::kSuccesses,
     E_POINTER, kNoPointer},
    {kBackFill, "call 1 of ICustomPropertyManager::GetAll", Ways::kCodes, kItsCode,
     L"pCustomPropertyManager->GetAll<hr=0x{}>", kErrorBox},
    {kBackFill, "call 1 of ICustomPropertyManager::Set", Ways::kCodes, kItsCode,
     L"pCustomPropertyManager->Set<hr=0x{}>", kErrorBox},
    {kBackFill, "call 2 of ICustomPropertyManager::Set", Ways::kCodes, kItsCode,
     L"pCustomPropertyManager->Set<hr=0x{}>", kErrorBox},
};

bool IsOneOf(Ways ways, std::optional<HRESULT> code) {
  switch (ways) {
    case Ways::kAll:
      return true;
    case Ways::kCodes:
      return code && FAILED(*code);
    case Ways::kSFalse:
      return code == S_FALSE;
    case Ways::kSuccesses:
      return code && SUCCEEDED(*code);
  }
  return false;
}

}  // namespace

std::vector<Prescribed> PrescribedOutcomes() {
  std::vector<Prescribed> all;
  for (const std::span<const Prescribed> some : {std::span<const Prescribed>(kUnanswered),
                                                 {kOpenFile},
                                                 {kInsert},
                                                 {kReplace},
                                                 {kCover},
                                                 {kReadProperties},
                                                 {kWriteProperties}}) {
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

bool IsAbout(const Prescribed& row, std::string_view scenario, const SweptCall& call) {
  const bool is_call = call.name == row.call || call.name.starts_with(std::string(row.call) + " ");
  return is_call && IsOneOf(row.ways, call.code) &&
         row.scenarios.find(" " + std::string(scenario) + " ") != std::string_view::npos;
}
