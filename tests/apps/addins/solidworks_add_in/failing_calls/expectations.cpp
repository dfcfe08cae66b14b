#include "expectations.h"

#include <algorithm>

namespace {

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
};

constexpr AcceptedLeak kLeaks[] = {
    {Held::kHandles, "FirstLogLine", "",
     "the compiler's thread library keeps four each time the DLL is loaded"},
    {Held::kBlocks, "", "CoRegisterMessageFilter", "the system keeps the filter that it did not replace"},
    {Held::kTemporaryFiles, "Connect", "", "an icon file that could not be made whole stays"},
    {Held::kTemporaryFiles, "MakeBitmapByName", "", "an icon file that could not be made whole stays"},
    {Held::kTemporaryFiles, "Disconnect", "DeleteFileW", "what the system does not delete stays"},
};

constexpr const char* kThreadLocal =
    "abort, __emutls_get_address, std::uncaught_exceptions, PrepareForExceptions, DllGetClassObject";
constexpr const char* kOnce =
    "enterOnceObject, pthread_once, __emutls_get_address, std::uncaught_exceptions, PrepareForExceptions, "
    "DllGetClassObject";
constexpr const char* kFirstThreadLocal =
    "abort, emutls_init, pthread_once, __emutls_get_address, std::uncaught_exceptions, PrepareForExceptions, "
    "DllGetClassObject";
constexpr const char* kTriedBefore =
    "the compiler's runtime makes what a thread's exceptions need, without a way to fail; that more memory "
    "than "
    "this is free was tried a moment before";

constexpr FatalCall kFatal[] = {
    {"FirstLogLine", "call 6 of malloc", kThreadLocal, kTriedBefore},
    {"FirstLogLine", "call 1 of calloc", kOnce, kTriedBefore},
    {"FirstLogLine", "call 4 of calloc", kThreadLocal, kTriedBefore},
    {"FirstLogLine", "call 1 of realloc", kFirstThreadLocal, kTriedBefore},
};

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}  // namespace

std::span<const AcceptedSilence> AcceptedSilences() { return kSilences; }

std::span<const AcceptedLeak> AcceptedLeaks() { return kLeaks; }

std::span<const FatalCall> FatalCalls() { return kFatal; }

bool IsFatal(std::string_view scenario, std::string_view call) {
  return std::ranges::any_of(
      kFatal, [&](const FatalCall& fatal) { return fatal.scenario == scenario && fatal.call == call; });
}

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
