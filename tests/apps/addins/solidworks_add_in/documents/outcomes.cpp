#include "outcomes.h"

#include "documents_fixture.h"

namespace {

using enum Operation;

const Outcome kDone = {.done = true};
const Outcome kSilent = {};
const Outcome kRaisedPointer = {.raised = E_POINTER};
const Outcome kRaisedFailure = {.raised = E_FAIL};

Outcome Logged(const std::wstring& line) { return {.lines = {line}}; }

Outcome Shown(const wchar_t* box) { return {.box = box}; }

Outcome Told(const std::wstring& box, const std::wstring& line) { return {.box = box, .lines = {line}}; }

Outcome NotReplaced(const std::wstring& line) { return Told(shown::kReplacementFailed, line); }

Outcome NotOpened(const std::wstring& site, const wchar_t* code) {
  Outcome outcome = Told(OpenFailed(L"{file}"), site + L"|OpenDoc6 failed at {file}<hr=0x" + code + L">");
  outcome.lines_at_box = 1;
  return outcome;
}

CallOutcomes Always(Operation operation, const wchar_t* method, const Outcome& outcome,
                    Disk disk = Disk::kUntouched) {
  return {operation, method, 1, outcome, outcome, outcome, disk};
}

// Where the code that is logged is the call's own.
CallOutcomes ReplaceCall(Operation operation, const std::wstring& site, Disk disk = Disk::kUntouched) {
  const std::wstring text = site + L"|pAssDoc->ReplaceComponents2<hr=0x";
  return {operation, L"IAssemblyDoc::ReplaceComponents2", 1,   NotReplaced(text + L"80004005>"),
          kSilent,   NotReplaced(text + L"1>"),           disk};
}

std::vector<CallOutcomes> OpenCalls() {
  const std::wstring site = L"798|OpenFilePath";
  return {{kOpen, L"ISldWorks::OpenDoc6", 1, NotOpened(site, L"80004005"), NotOpened(site, L"0"),
           NotOpened(site, L"1")},
          Always(kOpen, L"ISldWorks::ActivateDoc", kDone)};
}

std::vector<CallOutcomes> InsertCalls() {
  const auto failed = [](const std::wstring& site, const std::wstring& text) {
    return Logged(site + L"|InsertChildFile|" + text + L": {file}<hr=0x80004005>");
  };
  const std::wstring open = L"847|InsertChildFile";
  return {{kInsert, L"ISldWorks::get_IActiveDoc2", 1, failed(L"822", L"iSwApp->get_IActiveDoc2"), kSilent,
           kSilent},
          Always(kInsert, L"IModelDoc2::GetType", kDone),
          {kInsert, L"ISldWorks::OpenDoc6", 1, NotOpened(open, L"80004005"), NotOpened(open, L"0"),
           NotOpened(open, L"1")},
          {kInsert, L"IModelDoc2::QueryInterface(IAssemblyDoc)", 1,
           failed(L"856", L"iSwModel->QueryInterface"), kRaisedPointer, kRaisedPointer},
          {kInsert, L"IModelDoc2::get_ISelectionManager", 1,
           failed(L"864", L"iSwModel->get_ISelectionManager"), kRaisedPointer, kRaisedPointer},
          {kInsert, L"ISelectionMgr::IGetSelectionPoint2", 1,
           failed(L"872", L"iSelectionMgr->IGetSelectionPoint2"), kDone, kDone},
          {kInsert, L"IAssemblyDoc::AddComponent5", 1, failed(L"889", L"pAssmDoc->AddComponent5"),
           Shown(shown::kNotAdded), Shown(shown::kNotAdded)},
          Always(kInsert, L"ISldWorks::CloseDoc", kDone)};
}

/// The sites of the way to the active assembly, which replacing and covering share.
struct AssemblySites {
  std::wstring document;
  std::wstring type;
  std::wstring assembly;
};

std::vector<CallOutcomes> ActiveAssemblyCalls(Operation operation, const AssemblySites& sites) {
  const Outcome no_interface = NotReplaced(sites.assembly + L"|iSwApp->get_IActiveDoc2<hr=0x0>");
  return {{operation, L"ISldWorks::get_IActiveDoc2", 1, NotReplaced(sites.document + L"<hr=0x80004005>"),
           kRaisedPointer, kRaisedPointer},
          Always(operation, L"IModelDoc2::GetType",
                 Told(shown::kNotSupported, sites.type + L"|moduleType != swDocASSEMBLY")),
          {operation, L"IModelDoc2::QueryInterface(IAssemblyDoc)", 1, kRaisedFailure, no_interface,
           no_interface}};
}

std::vector<CallOutcomes> ReplaceCalls() {
  auto calls = ActiveAssemblyCalls(kReplace, {L"917|ReplaceCurrentFile|iSwApp->get_IActiveDoc2",
                                              L"928|ReplaceCurrentFile", L"937|ReplaceCurrentFile"});
  calls.push_back(ReplaceCall(kReplace, L"948|ReplaceCurrentFile"));
  return calls;
}

std::vector<CallOutcomes> ImportCalls() {
  return {Always(kImport, L"ISldWorks::get_IActiveDoc2", kSilent),
          {kImport, L"IModelDoc2::IsOpenedViewOnly", 1, kSilent, kDone, kSilent},
          Always(kImport, L"IModelDoc2::GetPathName", kSilent)};
}

std::wstring CoverLine(const wchar_t* line, const std::wstring& text) {
  return std::wstring(line) + L"|ReplaceCurrentFileByCovering|" + text;
}

/// The calls up to the point where the two ways to cover part.
std::vector<CallOutcomes> SelectedComponentCalls(Operation operation) {
  auto calls = ActiveAssemblyCalls(
      operation, {CoverLine(L"966", L"iSwApp->get_IActiveDoc2 failed."), L"978|ReplaceCurrentFileByCovering",
                  L"987|ReplaceCurrentFileByCovering"});
  const auto failed = [](const wchar_t* line, const wchar_t* text, const wchar_t* code) {
    return NotReplaced(CoverLine(line, std::wstring(text) + L" failed.<hr=0x" + code + L">"));
  };
  const wchar_t* const manager = L"iSwModel->get_ISelectionManager";
  const wchar_t* const query = L"pComponentDisp->QueryInterface";
  const wchar_t* const path = L"swSelectedComponent->GetPathName";
  calls.insert(
      calls.end(),
      {{operation, L"IModelDoc2::get_ISelectionManager", 1, failed(L"998", manager, L"80004005"),
        kRaisedPointer, kRaisedPointer},
       {operation, L"ISelectionMgr::GetSelectedObject6", 1, failed(L"1009", manager, L"80004005"),
        failed(L"1009", manager, L"0"), failed(L"1009", manager, L"1")},
       {operation, L"IComponent2::QueryInterface(IComponent2)", 1, failed(L"1021", query, L"80004005"),
        failed(L"1021", query, L"0"), failed(L"1021", query, L"1")},
       {operation, L"IComponent2::GetPathName", 1, failed(L"1032", path, L"80004005"),
        failed(L"1032", path, L"0"), failed(L"1032", path, L"0")}});
  return calls;
}

std::vector<CallOutcomes> CoverByCopyCalls() {
  auto calls = SelectedComponentCalls(kCoverByCopy);
  calls.push_back(Always(kCoverByCopy, L"ISldWorks::GetOpenDocumentByName", kDone, Disk::kCopied));
  calls.push_back(ReplaceCall(kCoverByCopy, L"1094|ReplaceCurrentFileByCovering", Disk::kCopied));
  return calls;
}

std::vector<CallOutcomes> CoverBySwapCalls() {
  auto calls = SelectedComponentCalls(kCoverBySwap);
  const auto failed = [](const wchar_t* line, const wchar_t* what) {
    return NotReplaced(CoverLine(line, L"swSelectedComponent->SetSuppression2 " + std::wstring(what) +
                                           L" model failed.<hr=0x80004005>"));
  };
  // The component was not suppressed: the host still holds its file.
  const Outcome held = {
      .box = shown::kReplacementFailed,
      .lines = {L"1519|SwapFile|MoveFileEx from {component} to {backup} failed. Get Last Error: "
                L"32<hr=0xa3012006>",
                CoverLine(L"1120",
                          L"SwapFile failed. Current model file: {component}, download file: "
                          L"{file}<hr=0xa3012006>")},
      .lines_at_box = 1};
  const std::wstring method = L"IComponent2::SetSuppression2";
  calls.push_back(
      {kCoverBySwap, method, 1, failed(L"1109", L"suppress"), held, held, Disk::kBackupFolderMade});
  calls.push_back({kCoverBySwap, method, 2, failed(L"1130", L"resolve"), kSilent, kSilent, Disk::kExchanged});
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
