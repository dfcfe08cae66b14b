#include "expectations.h"

#include <algorithm>

#include "result_codes.h"

namespace {

const Prescribed kPrescribed[] = {
    {"PlmLogin", "call 1 of WriteFile", hr::kNoAnswer, L"QD_PLMLogin] got no answer: "},
    {"CoverByCopy", "call 1 of CreateDirectoryW", S_OK, L"<hr=0xa3012012>"},
    {"CoverByCopy", "call 1 of CopyFileW", S_OK, L" failed. Get Last Error: 112<hr=0xa3012005>"},
    {"CoverBySwap", "call 1 of CreateDirectoryW", S_OK, L"<hr=0xa3012012>"},
    {"CoverBySwap", "call 1 of MoveFileExW", S_OK, L" failed. Get Last Error: 32<hr=0xa3012006>"},
    {"CoverBySwap", "call 1 of CopyFileW", S_OK, L" failed. Get Last Error: 112<hr=0xa3012005>"},
    {"PlmImportCurrent", "call 1 of WriteFile", E_FAIL, L"QD_PLMImportCurrent] got no answer: "},
    {"PlmImportChangeItem", "call 1 of WriteFile", E_FAIL, L"QD_PLMCreateChangeItems] got no answer: "},
    {"PlmLotimport", "call 1 of WriteFile", E_FAIL, L"QD_PLMLotimport] got no answer: "},
};

constexpr const char* kNoPath = "without the path of an existing file the command does less, as it must";
constexpr const char* kSuccess = "a success code without a result counts as success";
constexpr const char* kUnloading = "nothing depends on it while the host unloads the add-in; it is told so";
constexpr const char* kNotLookedAt = "the menu is built as far as the host does it";
constexpr const char* kIcons = "the menu is built without icons";

constexpr AcceptedSilence kSilences[] = {
    {"Connect", "ICommandGroup::", kNotLookedAt},
    {"Connect", "ICommandTab", kNotLookedAt},
    {"Connect", "ICommandManager::", kNotLookedAt},
    {"Connect", "IConnectionPoint", "without events, whose handlers do nothing, the add-in works"},
    {"Connect", "ISldWorks::", "what the connection needs is looked at, the rest is not"},
    {"Connect", "FindResourceW", kIcons},
    {"Connect", "LoadResource", kIcons},
    {"Connect", "LockResource", kIcons},
    {"Connect", "SizeofResource", kIcons},
    {"Connect", "GetTempPathW", kIcons},
    {"Connect", "GetTempFileNameW", kIcons},
    {"Connect", "CreateFileW", kIcons},
    {"Connect", "WriteFile", kIcons},
    {"Disconnect", "ICommandManager::RemoveCommandGroup", kUnloading},
    {"Disconnect", "IConnectionPoint::Unadvise returning nothing", kSuccess},
    {"Insert", "get_IActiveDoc2 returning", "there is nothing into which a file could be inserted"},
    {"Insert", "ISldWorks::CloseDoc", "the inserted file's window stays open"},
    {"Replace", "ReplaceComponents2 returning nothing", kSuccess},
    {"CoverByCopy", "ReplaceComponents2 returning nothing", kSuccess},
    {"CoverBySwap", "call 2 of IComponent2::SetSuppression2 returning", kSuccess},
    {"PlmImportCurrent", "get_IActiveDoc2", kNoPath},
    {"PlmImportCurrent", "IsOpenedViewOnly", kNoPath},
    {"PlmImportCurrent", "GetPathName", kNoPath},
    {"PlmImportCurrent", "PathFileExistsW", kNoPath},
    {"PlmImportChangeItem", "get_IActiveDoc2", kNoPath},
    {"PlmImportChangeItem", "IsOpenedViewOnly", kNoPath},
    {"PlmImportChangeItem", "GetPathName", kNoPath},
    {"PlmImportChangeItem", "PathFileExistsW", kNoPath},
    {"PlmCreateMaterial", "call 1 of ISldWorks::get_IActiveDoc2", kNoPath},
    {"PlmCreateMaterial", "IsOpenedViewOnly", kNoPath},
    {"PlmCreateMaterial", "GetPathName", kNoPath},
    {"PlmCreateMaterial", "PathFileExistsW", kNoPath},
    {"PlmCreateMaterial", " returning ", kSuccess},
    {"PlmMaterialBackFill", " returning ", kSuccess},
    {"PlmCreateMaterial", "MessageBoxW", "a question that cannot be shown counts as declined"},
    {"PlmMaterialBackFill", "MessageBoxW", "only the message that the work is done is missing"},
    {"UnreachableClient", "MessageBoxW", "the box cannot be shown; the log has the reason"},
};

constexpr AcceptedLeak kLeaks[] = {
    {Held::kBlocks, "", "CoRegisterMessageFilter", "the system keeps the filter that it did not replace"},
    {Held::kHandles, "FirstLogLine", "", "the system keeps handles each time the DLL is loaded"},
    {Held::kTemporaryFiles, "Connect", "", "an icon file that could not be made whole stays"},
    {Held::kTemporaryFiles, "MakeBitmapByName", "", "an icon file that could not be made whole stays"},
    {Held::kTemporaryFiles, "Disconnect", "DeleteFileW", "what the system does not delete stays"},
};

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}  // namespace

std::span<const Prescribed> PrescribedOutcomes() { return kPrescribed; }

std::span<const AcceptedSilence> AcceptedSilences() { return kSilences; }

std::span<const AcceptedLeak> AcceptedLeaks() { return kLeaks; }

bool IsSilenceAccepted(std::string_view scenario, std::string_view call) {
  return std::ranges::any_of(kSilences, [&](const AcceptedSilence& accepted) {
    return accepted.scenario == scenario && Contains(call, accepted.call);
  });
}

bool IsLeakAccepted(Held held, std::string_view scenario, std::string_view call) {
  return std::ranges::any_of(kLeaks, [&](const AcceptedLeak& accepted) {
    return accepted.held == held && (accepted.scenario.empty() || accepted.scenario == scenario) &&
           Contains(call, accepted.call);
  });
}
