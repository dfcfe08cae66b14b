#include "outcomes.h"

#include "documents_fixture.h"
#include "log_line.h"
#include "result_codes.h"
#include "shown_texts.h"

namespace {

using enum Operation;

const Outcome kDone = {.done = true};
const Outcome kNoEffect = {};
const Outcome kThrowsPointer = {.thrown = E_POINTER};
const Outcome kThrowsFailure = {.thrown = E_FAIL};

constexpr const wchar_t* kOpenFunction = L"OpenFilePath";
constexpr const wchar_t* kInsertFunction = L"InsertChildFile";
constexpr const wchar_t* kReplaceFunction = L"ReplaceCurrentFile";
constexpr const wchar_t* kCoverFunction = L"ReplaceCurrentFileByCovering";

Outcome Logged(const std::wstring& line) { return {.lines = {line}}; }

Outcome Shown(const wchar_t* box) { return {.box = box}; }

Outcome ShownAndLogged(const std::wstring& box, const std::wstring& line) {
  return {.box = box, .lines = {line}};
}

Outcome NotReplaced(const std::wstring& line) { return ShownAndLogged(shown::kReplacementFailed, line); }

Outcome NotOpened(int line, const wchar_t* function, HRESULT code) {
  Outcome outcome = ShownAndLogged(shown::OpenFailed(L"{file}"),
                                   ErrorLine(line, function, L"OpenDoc6 failed at {file}", code));
  outcome.lines_at_box = 1;
  return outcome;
}

CallOutcomes Always(Operation operation, const wchar_t* method, const Outcome& outcome,
                    Disk disk = Disk::kUntouched) {
  return {operation, method, 1, outcome, outcome, outcome, disk};
}

// The log has the code of the call itself.
CallOutcomes ReplaceCall(Operation operation, int line, const wchar_t* function,
                         Disk disk = Disk::kUntouched) {
  const auto failed = [&](HRESULT code) {
    return NotReplaced(ErrorLine(line, function, L"pAssDoc->ReplaceComponents2", code));
  };
  return {operation, L"IAssemblyDoc::ReplaceComponents2", 1, failed(E_FAIL), kNoEffect, failed(S_FALSE),
          disk};
}

std::vector<CallOutcomes> OpenCalls() {
  const auto failed = [](HRESULT code) { return NotOpened(798, kOpenFunction, code); };
  return {{kOpen, L"ISldWorks::OpenDoc6", 1, failed(E_FAIL), failed(S_OK), failed(S_FALSE)},
          Always(kOpen, L"ISldWorks::ActivateDoc", kDone)};
}

std::vector<CallOutcomes> InsertCalls() {
  const auto failed = [](int line, const std::wstring& text) {
    return Logged(ErrorLine(line, kInsertFunction, text + L": {file}", E_FAIL));
  };
  const auto not_opened = [](HRESULT code) { return NotOpened(847, kInsertFunction, code); };
  return {{kInsert, L"ISldWorks::get_IActiveDoc2", 1, failed(822, L"iSwApp->get_IActiveDoc2"), kNoEffect,
           kNoEffect},
          Always(kInsert, L"IModelDoc2::GetType", kDone),
          {kInsert, L"ISldWorks::OpenDoc6", 1, not_opened(E_FAIL), not_opened(S_OK), not_opened(S_FALSE)},
          {kInsert, L"IModelDoc2::QueryInterface(IAssemblyDoc)", 1, failed(856, L"iSwModel->QueryInterface"),
           kThrowsPointer, kThrowsPointer},
          {kInsert, L"IModelDoc2::get_ISelectionManager", 1, failed(864, L"iSwModel->get_ISelectionManager"),
           kThrowsPointer, kThrowsPointer},
          {kInsert, L"ISelectionMgr::IGetSelectionPoint2", 1,
           failed(872, L"iSelectionMgr->IGetSelectionPoint2"), kDone, kDone},
          {kInsert, L"IAssemblyDoc::AddComponent5", 1, failed(889, L"pAssmDoc->AddComponent5"),
           Shown(shown::kNotAdded), Shown(shown::kNotAdded)},
          Always(kInsert, L"ISldWorks::CloseDoc", kDone)};
}

/// The log lines of the calls that find the active assembly, which replacing and covering share.
struct AssemblySites {
  const wchar_t* function;
  int document_line;
  const wchar_t* document_text;
  int type_line;
  int assembly_line;
};

std::vector<CallOutcomes> ActiveAssemblyCalls(Operation operation, const AssemblySites& sites) {
  const Outcome no_document =
      NotReplaced(ErrorLine(sites.document_line, sites.function, sites.document_text, E_FAIL));
  const Outcome no_assembly = ShownAndLogged(
      shown::kNotSupported, ErrorLine(sites.type_line, sites.function, L"moduleType != swDocASSEMBLY"));
  const Outcome no_interface =
      NotReplaced(ErrorLine(sites.assembly_line, sites.function, L"iSwApp->get_IActiveDoc2", S_OK));
  return {{operation, L"ISldWorks::get_IActiveDoc2", 1, no_document, kThrowsPointer, kThrowsPointer},
          Always(operation, L"IModelDoc2::GetType", no_assembly),
          {operation, L"IModelDoc2::QueryInterface(IAssemblyDoc)", 1, kThrowsFailure, no_interface,
           no_interface}};
}

std::vector<CallOutcomes> ReplaceCalls() {
  auto calls = ActiveAssemblyCalls(kReplace, {kReplaceFunction, 917, L"iSwApp->get_IActiveDoc2", 928, 937});
  calls.push_back(ReplaceCall(kReplace, 948, kReplaceFunction));
  return calls;
}

std::vector<CallOutcomes> ImportCalls() {
  return {Always(kImport, L"ISldWorks::get_IActiveDoc2", kNoEffect),
          {kImport, L"IModelDoc2::IsOpenedViewOnly", 1, kNoEffect, kDone, kNoEffect},
          Always(kImport, L"IModelDoc2::GetPathName", kNoEffect)};
}

/// The calls that both ways of covering have in common.
std::vector<CallOutcomes> SelectedComponentCalls(Operation operation) {
  auto calls =
      ActiveAssemblyCalls(operation, {kCoverFunction, 966, L"iSwApp->get_IActiveDoc2 failed.", 978, 987});
  const auto failed = [](int line, const wchar_t* text, HRESULT code) {
    return NotReplaced(ErrorLine(line, kCoverFunction, std::wstring(text) + L" failed.", code));
  };
  const wchar_t* const manager = L"iSwModel->get_ISelectionManager";
  const wchar_t* const query = L"pComponentDisp->QueryInterface";
  const wchar_t* const path = L"swSelectedComponent->GetPathName";
  calls.insert(calls.end(),
               {{operation, L"IModelDoc2::get_ISelectionManager", 1, failed(998, manager, E_FAIL),
                 kThrowsPointer, kThrowsPointer},
                {operation, L"ISelectionMgr::GetSelectedObject6", 1, failed(1009, manager, E_FAIL),
                 failed(1009, manager, S_OK), failed(1009, manager, S_FALSE)},
                {operation, L"IComponent2::QueryInterface(IComponent2)", 1, failed(1021, query, E_FAIL),
                 failed(1021, query, S_OK), failed(1021, query, S_FALSE)},
                {operation, L"IComponent2::GetPathName", 1, failed(1032, path, E_FAIL),
                 failed(1032, path, S_OK), failed(1032, path, S_OK)}});
  return calls;
}

std::vector<CallOutcomes> CoverByCopyCalls() {
  auto calls = SelectedComponentCalls(kCoverByCopy);
  calls.push_back(Always(kCoverByCopy, L"ISldWorks::GetOpenDocumentByName", kDone, Disk::kCopied));
  calls.push_back(ReplaceCall(kCoverByCopy, 1094, kCoverFunction, Disk::kCopied));
  return calls;
}

std::vector<CallOutcomes> CoverBySwapCalls() {
  auto calls = SelectedComponentCalls(kCoverBySwap);
  const auto failed = [](int line, const std::wstring& what) {
    return NotReplaced(ErrorLine(
        line, kCoverFunction, L"swSelectedComponent->SetSuppression2 " + what + L" model failed.", E_FAIL));
  };
  // The component was not suppressed: the host still has its file open.
  const Outcome in_use = {
      .box = shown::kReplacementFailed,
      .lines = {ErrorLine(1519, L"SwapFile",
                          L"MoveFileEx from {component} to {backup} failed. Get Last Error: 32",
                          hr::kMoveToBackupFailed),
                ErrorLine(1120, kCoverFunction,
                          L"SwapFile failed. Current model file: {component}, download file: {file}",
                          hr::kMoveToBackupFailed)},
      .lines_at_box = 1};
  const std::wstring method = L"IComponent2::SetSuppression2";
  calls.push_back(
      {kCoverBySwap, method, 1, failed(1109, L"suppress"), in_use, in_use, Disk::kBackupFolderMade});
  calls.push_back(
      {kCoverBySwap, method, 2, failed(1130, L"resolve"), kNoEffect, kNoEffect, Disk::kExchanged});
  return calls;
}

}  // namespace

void PrintTo(const CallOutcomes& call, std::ostream* stream) {
  *stream << "call " << call.nth << " of " << Utf8(call.method) << " in " << NameOf(call.operation);
}

const std::vector<CallOutcomes>& AllCallOutcomes() {
  static const std::vector<CallOutcomes> all = [] {
    std::vector<CallOutcomes> calls;
    for (const auto& some : {OpenCalls(), InsertCalls(), ReplaceCalls(), ImportCalls(), CoverByCopyCalls(),
                             CoverBySwapCalls()}) {
      calls.insert(calls.end(), some.begin(), some.end());
    }
    return calls;
  }();
  return all;
}

std::string NameOf(Operation operation) {
  switch (operation) {
    case kOpen:
      return "Open";
    case kInsert:
      return "Insert";
    case kReplace:
      return "Replace";
    case kImport:
      return "Import";
    case kCoverByCopy:
      return "CoverByCopy";
    case kCoverBySwap:
      return "CoverBySwap";
  }
  return {};
}
