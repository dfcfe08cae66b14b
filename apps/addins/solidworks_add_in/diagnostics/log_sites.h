/// @file The function, line and text of every log event of the add-in.
///
/// Support staff and administrators know these lines from the log, so they do not change when the code moves.
#pragma once

/// The source position and the text of a log event.
struct LogSite {
  const char* file;
  const char* function;
  int line;
  const wchar_t* text;
};

/// The full paths, in the build, of the two source files that log events name.
extern const char kAddInSourceFile[];
extern const char kDrawingHelperSourceFile[];

namespace log_site {

constexpr LogSite AddIn(const char* function, int line, const wchar_t* text) {
  return {kAddInSourceFile, function, line, text};
}
constexpr LogSite Drawing(int line, const wchar_t* text) {
  return {kDrawingHelperSourceFile, "CDrawingHelper::InsertChildFile", line, text};
}

namespace login {
inline constexpr const char* kFunction = "CSolidWorksAddIn::PlmLogin";
inline constexpr LogSite kEmptyAnswer = AddIn(kFunction, 368, L"pResult is empty");
inline constexpr LogSite kFailed = AddIn(kFunction, 374, L"m_invok->Invoke command [QD_PLMLogin] failed");
}  // namespace login

namespace import {
inline constexpr LogSite kCurrentFailed =
    AddIn("CSolidWorksAddIn::PlmImportCurrent", 646, L"m_invok->Invoke command [QD_PLMImportCurrent] failed");
// Names the command of kCurrentFailed, not its own: support tools search for this text.
inline constexpr LogSite kChangeItemFailed = AddIn("CSolidWorksAddIn::PlmImportChangeItem", 675,
                                                   L"m_invok->Invoke command [QD_PLMImportCurrent] failed");
inline constexpr LogSite kLotFailed =
    AddIn("CSolidWorksAddIn::PlmLotimport", 704, L"m_invok->Invoke command [QD_PLMLotimport] failed");
}  // namespace import

namespace open {
inline constexpr LogSite kOpenDoc = AddIn("CSolidWorksAddIn::OpenFilePath", 798, L"OpenDoc6 failed at ");
}  // namespace open

namespace insert {
inline constexpr const char* kFunction = "CSolidWorksAddIn::InsertChildFile";
inline constexpr LogSite kActiveDocument = AddIn(kFunction, 822, L"iSwApp->get_IActiveDoc2: ");
inline constexpr LogSite kOpenDoc = AddIn(kFunction, 847, L"OpenDoc6 failed at ");
inline constexpr LogSite kAssembly = AddIn(kFunction, 856, L"iSwModel->QueryInterface: ");
inline constexpr LogSite kSelectionManager = AddIn(kFunction, 864, L"iSwModel->get_ISelectionManager: ");
inline constexpr LogSite kSelectionPoint = AddIn(kFunction, 872, L"iSelectionMgr->IGetSelectionPoint2: ");
inline constexpr LogSite kAddComponent = AddIn(kFunction, 889, L"pAssmDoc->AddComponent5: ");
}  // namespace insert

namespace replace {
inline constexpr const char* kFunction = "CSolidWorksAddIn::ReplaceCurrentFile";
inline constexpr LogSite kActiveDocument = AddIn(kFunction, 917, L"iSwApp->get_IActiveDoc2");
inline constexpr LogSite kNoAssemblyType = AddIn(kFunction, 928, L"moduleType != swDocASSEMBLY");
inline constexpr LogSite kAssembly = AddIn(kFunction, 937, L"iSwApp->get_IActiveDoc2");
inline constexpr LogSite kReplace = AddIn(kFunction, 948, L"pAssDoc->ReplaceComponents2");
}  // namespace replace

namespace cover {
inline constexpr const char* kFunction = "CSolidWorksAddIn::ReplaceCurrentFileByCovering";
inline constexpr LogSite kActiveDocument = AddIn(kFunction, 966, L"iSwApp->get_IActiveDoc2 failed.");
inline constexpr LogSite kNoAssemblyType = AddIn(kFunction, 978, L"moduleType != swDocASSEMBLY");
inline constexpr LogSite kAssembly = AddIn(kFunction, 987, L"iSwApp->get_IActiveDoc2");
inline constexpr LogSite kSelectionManager =
    AddIn(kFunction, 998, L"iSwModel->get_ISelectionManager failed.");
inline constexpr LogSite kSelectedObject = AddIn(kFunction, 1009, L"iSwModel->get_ISelectionManager failed.");
inline constexpr LogSite kComponent = AddIn(kFunction, 1021, L"pComponentDisp->QueryInterface failed.");
inline constexpr LogSite kComponentPath = AddIn(kFunction, 1032, L"swSelectedComponent->GetPathName failed.");
inline constexpr LogSite kBackupFolderNotMade = AddIn(kFunction, 1049, L"CFileHelper::CreateFolder:");
inline constexpr LogSite kBackupFolderInvalid = AddIn(kFunction, 1055, L"CFileHelper::CreateFolder:");
inline constexpr LogSite kCopy = AddIn(kFunction, 1082, L"CopyFile from ");
inline constexpr LogSite kReplace = AddIn(kFunction, 1094, L"pAssDoc->ReplaceComponents2");
inline constexpr LogSite kSuppress =
    AddIn(kFunction, 1109, L"swSelectedComponent->SetSuppression2 suppress model failed.");
inline constexpr LogSite kSwap = AddIn(kFunction, 1120, L"SwapFile failed. Current model file: ");
inline constexpr LogSite kResolve =
    AddIn(kFunction, 1130, L"swSelectedComponent->SetSuppression2 resolve model failed.");
}  // namespace cover

namespace swap {
inline constexpr const char* kFunction = "CSolidWorksAddIn::SwapFile";
inline constexpr LogSite kMove = AddIn(kFunction, 1519, L"MoveFileEx from ");
inline constexpr LogSite kAttributes = AddIn(kFunction, 1526, L"GetFileAttributes failed. Get Last Error: ");
inline constexpr LogSite kCopy = AddIn(kFunction, 1530, L"CopyFile from ");
}  // namespace swap

namespace get_attributes {
inline constexpr const char* kFunction = "CSolidWorksAddIn::GetAttributes";
inline constexpr LogSite kActiveDocument = AddIn(kFunction, 1143, L"iSwApp->get_IActiveDoc2");
inline constexpr LogSite kExtension = AddIn(kFunction, 1149, L"pModelDoc2->get_Extension");
inline constexpr LogSite kManager = AddIn(kFunction, 1153, L"pModelDocExtension->get_CustomPropertyManager");
inline constexpr LogSite kGetAll = AddIn(kFunction, 1158, L"pCustomPropertyManager->GetAll");
inline constexpr LogSite kGet = AddIn(kFunction, 1170, L"pCustomPropertyManager->Get2");
}  // namespace get_attributes

namespace put_attributes {
inline constexpr const char* kFunction = "CSolidWorksAddIn::PutAttributes";
inline constexpr LogSite kActiveDocument = AddIn(kFunction, 1183, L"iSwApp->get_IActiveDoc2");
inline constexpr LogSite kExtension = AddIn(kFunction, 1189, L"pModelDoc2->get_Extension");
inline constexpr LogSite kManager = AddIn(kFunction, 1193, L"pModelDocExtension->get_CustomPropertyManager");
inline constexpr LogSite kGetAll = AddIn(kFunction, 1198, L"pCustomPropertyManager->GetAll");
inline constexpr LogSite kSet = AddIn(kFunction, 1214, L"pCustomPropertyManager->Set");
}  // namespace put_attributes

namespace create_material {
inline constexpr const char* kFunction = "CSolidWorksAddIn::PlmCreateMaterial";
inline constexpr LogSite kOpenDoc = AddIn(kFunction, 1267, L"iSwApp->OpenDoc6 failed, opened file path: ");
inline constexpr LogSite kReadProperties =
    AddIn(kFunction, 1275, L"GetCustomProperty failed, opened file path: ");
inline constexpr LogSite kBackFill = AddIn(kFunction, 1308, L"AttributesBackFill failed");
}  // namespace create_material

namespace material_back_fill {
// With a full stop, unlike create_material::kBackFill.
inline constexpr LogSite kBackFill =
    AddIn("CSolidWorksAddIn::PlmMaterialBackFill", 1417, L"AttributesBackFill failed.");
}  // namespace material_back_fill

namespace get_custom_property {
inline constexpr const char* kFunction = "CSolidWorksAddIn::GetCustomProperty";
inline constexpr LogSite kExtension = AddIn(kFunction, 1460, L"get_Extension");
inline constexpr LogSite kManager = AddIn(kFunction, 1468, L"pDocExten->get_CustomPropertyManager");
inline constexpr LogSite kGetNames = AddIn(kFunction, 1475, L"pCustomMgr->GetNames");
// Names a different class: support tools search for this text.
inline constexpr LogSite kNameList = AddIn(kFunction, 1479, L"CSolidWorksFileAnalyser::Var2StringList");
inline constexpr LogSite kGet = AddIn(kFunction, 1489, L"pCustomMgr->Get3: ");
}  // namespace get_custom_property

/// The sites of CDrawingHelper::InsertChildFile; the first is information, not a failure.
namespace draw {
inline constexpr LogSite kStart = Drawing(69, L"insert into the active drawing: ");
inline constexpr LogSite kActiveDocument = Drawing(85, L"iSwApp->get_IActiveDoc2: ");
inline constexpr LogSite kOpenDoc = Drawing(112, L"OpenDoc6 failed at ");
inline constexpr LogSite kSelectionPoint = Drawing(129, L"iSelectionMgr->IGetSelectionPoint2: ");
inline constexpr LogSite kCreateView = Drawing(162, L"pDrawDoc->CreateDrawViewFromModelView3: ");
}  // namespace draw

}  // namespace log_site
