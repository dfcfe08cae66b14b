// Each call of each document operation fails once in each way: the outcome is that of the table, nothing
// leaks, and the host keeps running.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <tuple>

#include "documents_fixture.h"
#include "folder_tree.h"
#include "list_difference.h"
#include "method_case_name.h"
#include "outcomes.h"

namespace {

/// An operation, and a host and files with which it succeeds.
class DocumentOperation : public DocumentsFixture {
 protected:
  static constexpr long kNewRevision = 2;

  void SetUpFor(Operation operation) {
    ConnectAndLogIn();
    Answer("QD_PLMImportCurrent", R"({"__InvokeResult__":true})");
    Answer("QD_PLMStartWF", "{}");
    m_folder.MakeFolder(L"download");
    cad_host::ModelFile newer;
    newer.revision = kNewRevision;
    m_file = MakeModel(
        operation == Operation::kCoverBySwap ? L"download\\nut.sldprt" : L"download\\screw.sldprt", newer);
    if (operation == Operation::kOpen) return;
    m_assembly = OpenAssembly();
    m_selected = m_assembly->FindComponent(operation == Operation::kCoverBySwap ? L"nut-1" : L"bolt-1");
    m_componentPath = m_selected->record.path;
    m_assembly->selection = {{m_selected, kPicked}};
  }

  cad_host::PickResult Run(Operation operation) {
    switch (operation) {
      case Operation::kOpen:
        return PickFiles({{"OpenFile", {m_file}}});
      case Operation::kInsert:
        return PickFiles({{"InsertFile", {m_file}}});
      case Operation::kReplace:
        return PickFiles({{"ReplaceFile", {m_file}}});
      case Operation::kImport:
        return Pick(L"PlmImportCurrent");
      case Operation::kCoverByCopy:
      case Operation::kCoverBySwap:
        return PickFiles({{"ReplaceFileByCovering", {m_file}}});
    }
    return {};
  }

  bool IsDone(Operation operation) const {
    switch (operation) {
      case Operation::kOpen:
        return m_host->FindDocument(m_file) != nullptr;
      case Operation::kInsert:
        return m_assembly->components.size() == 4;
      case Operation::kImport:
        return !Asked().empty();
      case Operation::kReplace:
      case Operation::kCoverByCopy:
        return m_selected->record.path.ends_with(L"screw.sldprt");
      case Operation::kCoverBySwap:
        return m_selected->loaded_revision == kNewRevision && !m_selected->IsSuppressed();
    }
    return false;
  }

  /// The files by their names, with their content; folders end in a backslash.
  using Files = std::map<std::wstring, std::string>;

  Files FilesNow() const {
    Files files;
    for (const wchar_t* folder : {L"download", L"parts"}) {
      for (const std::wstring& path : ListTree(m_folder, folder)) {
        files[path] = path.ends_with(L'\\') ? "" : m_folder.Read(path);
      }
    }
    return files;
  }

  /// What `files`, the files before the operation, become.
  Files FilesAfter(Disk disk, Files files) const {
    if (disk == Disk::kUntouched) return files;
    files[L"download\\temp\\"] = "";
    if (disk == Disk::kCopied) files[L"parts\\screw.sldprt"] = files.at(L"download\\screw.sldprt");
    if (disk == Disk::kExchanged) {
      files[L"download\\temp\\nut.sldprt"] = files.at(L"parts\\nut.sldprt");
      files[L"parts\\nut.sldprt"] = files.at(L"download\\nut.sldprt");
    }
    return files;
  }

  /// `text` with the paths of this run for its placeholders.
  std::wstring Filled(std::wstring text) const {
    const std::pair<std::wstring, std::wstring> places[] = {
        {L"{file}", m_file},
        {L"{component}", m_componentPath},
        {L"{backup}", m_folder.Path(L"download\\temp\\nut.sldprt")}};
    for (const auto& [place, path] : places) {
      if (const auto found = text.find(place); found != std::wstring::npos) {
        text.replace(found, place.size(), path);
      }
    }
    return text;
  }

  /// The references to the host that are held from outside, as text.
  Texts Held() const {
    Texts held;
    for (const auto& reference : m_host->HeldReferences()) {
      held.push_back(reference.object + L" " + std::to_wstring(reference.count));
    }
    std::sort(held.begin(), held.end());
    return held;
  }

 private:
  std::wstring m_file;
  std::wstring m_componentPath;
  std::shared_ptr<cad_host::Document> m_assembly;
  std::shared_ptr<cad_host::Component> m_selected;
};

class SuccessfulOperation : public DocumentOperation, public testing::WithParamInterface<Operation> {};

TEST_P(SuccessfulOperation, MakesTheCallsOfTheTableInTheirOrder) {
  SetUpFor(GetParam());
  const Texts held = Held();
  EXPECT_EQ(Run(GetParam()).result, S_OK);
  Texts expected;
  for (const auto& call : AllCallOutcomes()) {
    if (call.operation == GetParam()) expected.push_back(call.method);
  }
  EXPECT_SAME_ENTRIES(CalledMethods(), expected);
  EXPECT_TRUE(IsDone(GetParam()));
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_SAME_ENTRIES(Held(), held);
}

INSTANTIATE_TEST_SUITE_P(, SuccessfulOperation,
                         testing::Values(Operation::kOpen, Operation::kInsert, Operation::kReplace,
                                         Operation::kImport, Operation::kCoverByCopy,
                                         Operation::kCoverBySwap),
                         [](const auto& test) { return NameOf(test.param); });

/// A result of a call that returns no object or value.
struct Failure {
  const char* name;
  HRESULT result;
  Outcome CallOutcomes::*outcome;
};

void PrintTo(const Failure& failure, std::ostream* stream) { *stream << failure.name; }

using FailingCall = std::tuple<CallOutcomes, Failure>;

std::string NameOfCall(const testing::TestParamInfo<FailingCall>& test) {
  const auto& [call, failure] = test.param;
  const std::string name = NameOf(call.operation) + "_" + MethodInName(call.method) + "_" + failure.name;
  return call.nth > 1 ? name + "_" + std::to_string(call.nth) : name;
}

class FailingHost : public DocumentOperation, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingHost, LeadsToTheOutcomeOfTheTable) {
  const auto& [call, failure] = GetParam();
  const Outcome& expected = call.*failure.outcome;
  SetUpFor(call.operation);
  const Texts held = Held();
  const Files files = FilesNow();
  m_host->GetFaults().Fail(call.method, call.nth, failure.result);
  if (!expected.box.empty()) ExpectBox();

  const auto picked = Run(call.operation);

  EXPECT_EQ(picked.result, expected.thrown == S_OK ? S_OK : DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, expected.thrown);
  EXPECT_EQ(BoxTexts(), expected.box.empty() ? Texts{} : Texts{Filled(expected.box)});
  Texts lines;
  for (const std::wstring& line : expected.lines) lines.push_back(Filled(line));
  EXPECT_EQ(AddInLog(), lines);
  if (!expected.box.empty()) {
    EXPECT_EQ(LinesAtBoxes(), std::vector<std::size_t>{expected.lines_at_box});
  }
  EXPECT_EQ(FilesNow(), FilesAfter(call.disk, files));
  EXPECT_EQ(PlatformLog().size(), expected.thrown == S_OK ? 0u : 1u);
  EXPECT_EQ(IsDone(call.operation), expected.done);
  EXPECT_SAME_ENTRIES(Held(), held);
  EXPECT_EQ(Pick(L"PlmWf").result, S_OK) << "the next command works";
}

INSTANTIATE_TEST_SUITE_P(
    , FailingHost,
    testing::Combine(testing::ValuesIn(AllCallOutcomes()),
                     testing::Values(Failure{"Fails", E_FAIL, &CallOutcomes::fails},
                                     Failure{"ReturnsNothing", S_OK, &CallOutcomes::returns_nothing},
                                     Failure{"ReturnsFalse", S_FALSE, &CallOutcomes::returns_false})),
    NameOfCall);

}  // namespace
