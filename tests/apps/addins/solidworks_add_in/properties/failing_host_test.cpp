// Each host call of the material commands fails in turn, with a code and with a success that brings
// nothing.
#include <gtest/gtest.h>

#include <algorithm>

#include "properties_fixture.h"

namespace {

constexpr const wchar_t* kCreate = L"PlmCreateMaterial";
constexpr const wchar_t* kBackFill = L"PlmMaterialBackFill";

constexpr const char* kMaterial = R"({"data":{"no":"M-1"}})";
constexpr const char* kValues = R"({"material_property_back_fill":{"A":"x","B":"y","C":"z"}})";

/// The host call that fails, and what is left.
struct FailingCall {
  const wchar_t* command;
  const wchar_t* method;
  int nth;
  HRESULT answer;         ///< S_OK: a success that brings nothing
  HRESULT code;           ///< of the command
  Texts log;              ///< "LINE FUNCTION TEXT"; `PATH` is the document's
  const char* extracted;  ///< the properties sent; "" for an empty request, null where nothing is sent
  Texts left;             ///< the document's properties
  Texts boxes;
};

const Texts kNone;
const Texts kAll = {L"A=1", L"B=2", L"C=3"};
const Texts kWritten = {L"A=x", L"B=y", L"C=z"};
constexpr const char* kSent = R"({"A":"1","B":"2","C":"3"})";
constexpr const char* kEmpty = "{}";
constexpr const char* kNoPath = "";  // no document: an empty request

const Texts kExtract = {L"extract?"};
const Texts kQuestions = {L"extract?", L"backfill?"};
const Texts kCompleted = {L"extract?", L"backfill?", L"completed"};
const Texts kError = {L"extract?", L"backfill?", L"error 0x80004005"};
const Texts kDone = {L"completed"};
const Texts kNotice = {L"error 0x80004005"};
const Texts kNoModel = {L"no model"};

// The line after every write of PlmCreateMaterial, and after a failed one of PlmMaterialBackFill.
const std::wstring kWrote = L"1308 PlmCreateMaterial AttributesBackFill failed<hr=0x0>";
const std::wstring kNotWrote = L"1308 PlmCreateMaterial AttributesBackFill failed<hr=0x80004005>";
const std::wstring kNotFilled = L"1417 PlmMaterialBackFill AttributesBackFill failed.<hr=0x80004005>";
const std::wstring kNotRead =
    L"1275 PlmCreateMaterial GetCustomProperty failed, opened file path: PATH<hr=0x80004005>";

std::wstring NotRead(const std::wstring& line) {
  return line.substr(0, 5) + L"GetCustomProperty " + line.substr(5) + L"<hr=0x80004005>";
}
std::wstring NotPut(const std::wstring& line) {
  return line.substr(0, 5) + L"PutAttributes " + line.substr(5) + L"<hr=0x80004005>";
}

constexpr const wchar_t* kActive = L"ISldWorks::get_IActiveDoc2";
constexpr const wchar_t* kViewOnly = L"IModelDoc2::IsOpenedViewOnly";
constexpr const wchar_t* kPathName = L"IModelDoc2::GetPathName";
constexpr const wchar_t* kOpen = L"ISldWorks::OpenDoc6";
constexpr const wchar_t* kExtension = L"IModelDoc2::get_Extension";
constexpr const wchar_t* kManager = L"IModelDocExtension::get_CustomPropertyManager";
constexpr const wchar_t* kGetAll = L"ICustomPropertyManager::GetAll";
constexpr const wchar_t* kGetNames = L"ICustomPropertyManager::GetNames";
constexpr const wchar_t* kGet3 = L"ICustomPropertyManager::Get3";
constexpr const wchar_t* kSet = L"ICustomPropertyManager::Set";

/// A failure that ends PlmCreateMaterial before anything is sent.
FailingCall NotExtracted(const wchar_t* method, int nth, const wchar_t* line) {
  return {kCreate, method, nth, E_FAIL, E_FAIL, {NotRead(line), kNotRead}, nullptr, kAll, kExtract};
}

/// A failure that ends the writing, after which `left` is there.
FailingCall NotWrittenBack(const wchar_t* command, const wchar_t* method, int nth, const wchar_t* line,
                           const Texts& left = kAll) {
  if (command == std::wstring_view(kCreate)) {
    return {kCreate, method, nth, E_FAIL, E_FAIL, {NotPut(line), kNotWrote}, kSent, left, kError};
  }
  return {kBackFill, method, nth, E_FAIL, E_FAIL, {NotPut(line), kNotFilled}, nullptr, left, kNotice};
}

const FailingCall kFailingCalls[] = {
    // Which document: without a path an empty request is sent, and no question asked.
    {kCreate, kActive, 1, E_FAIL, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kActive, 1, S_OK, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kViewOnly, 1, E_FAIL, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kViewOnly, 1, S_OK, S_OK, {kWrote}, kSent, kWritten, kCompleted},
    {kCreate, kPathName, 1, E_FAIL, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kPathName, 1, S_OK, S_OK, kNone, kNoPath, kAll, kNone},
    // Reading it: a failure ends the command before anything is sent.
    {kCreate,
     kOpen,
     1,
     E_FAIL,
     E_FAIL,
     {L"1267 PlmCreateMaterial iSwApp->OpenDoc6 failed, opened file path: PATH<hr=0x80004005>"},
     nullptr,
     kAll,
     kExtract},
    {kCreate,
     kOpen,
     1,
     S_OK,
     S_OK,
     {L"1267 PlmCreateMaterial iSwApp->OpenDoc6 failed, opened file path: PATH<hr=0x0>"},
     nullptr,
     kAll,
     kExtract},
    NotExtracted(kExtension, 1, L"1460 get_Extension"),
    {kCreate, kExtension, 1, S_OK, S_OK, {kWrote}, kEmpty, kWritten, kCompleted},
    NotExtracted(kManager, 1, L"1468 pDocExten->get_CustomPropertyManager"),
    {kCreate, kManager, 1, S_OK, S_OK, {kWrote}, kEmpty, kWritten, kCompleted},
    NotExtracted(kGetNames, 1, L"1475 pCustomMgr->GetNames"),
    {kCreate, kGetNames, 1, S_OK, S_OK, {kWrote}, kEmpty, kWritten, kCompleted},
    {kCreate,
     kGet3,
     1,
     E_FAIL,
     S_OK,
     {NotRead(L"1489 pCustomMgr->Get3: A"), kWrote},
     R"({"B":"2","C":"3"})",
     kWritten,
     kCompleted},
    {kCreate, kGet3, 1, S_OK, S_OK, {kWrote}, R"({"A":"","B":"2","C":"3"})", kWritten, kCompleted},
    {kCreate,
     kGet3,
     2,
     E_FAIL,
     S_OK,
     {NotRead(L"1489 pCustomMgr->Get3: B"), kWrote},
     R"({"A":"1","C":"3"})",
     kWritten,
     kCompleted},
    {kCreate, kGet3, 2, S_OK, S_OK, {kWrote}, R"({"A":"1","B":"","C":"3"})", kWritten, kCompleted},
    NotExtracted(kGet3, 3, L"1489 pCustomMgr->Get3: C"),
    {kCreate, kGet3, 3, S_OK, S_OK, {kWrote}, R"({"A":"1","B":"2","C":""})", kWritten, kCompleted},
    // Writing: what was written stays.
    NotWrittenBack(kCreate, kActive, 2, L"1183 iSwApp->get_IActiveDoc2"),
    {kCreate, kActive, 2, S_OK, S_OK, {kWrote}, kSent, kAll, kQuestions},
    NotWrittenBack(kCreate, kExtension, 2, L"1189 pModelDoc2->get_Extension"),
    {kCreate, kExtension, 2, S_OK, E_POINTER, kNone, kSent, kAll, kQuestions},
    NotWrittenBack(kCreate, kManager, 2, L"1193 pModelDocExtension->get_CustomPropertyManager"),
    {kCreate, kManager, 2, S_OK, E_POINTER, kNone, kSent, kAll, kQuestions},
    NotWrittenBack(kCreate, kGetAll, 1, L"1198 pCustomPropertyManager->GetAll"),
    {kCreate, kGetAll, 1, S_OK, S_OK, {kWrote}, kSent, kAll, kCompleted},
    NotWrittenBack(kCreate, kSet, 1, L"1214 pCustomPropertyManager->Set"),
    {kCreate, kSet, 1, S_OK, S_OK, {kWrote}, kSent, {L"A=1", L"B=y", L"C=z"}, kCompleted},
    NotWrittenBack(kCreate, kSet, 2, L"1214 pCustomPropertyManager->Set", {L"A=x", L"B=2", L"C=3"}),
    {kCreate, kSet, 2, S_OK, S_OK, {kWrote}, kSent, {L"A=x", L"B=2", L"C=z"}, kCompleted},
    NotWrittenBack(kCreate, kSet, 3, L"1214 pCustomPropertyManager->Set", {L"A=x", L"B=y", L"C=3"}),
    {kCreate, kSet, 3, S_OK, S_OK, {kWrote}, kSent, {L"A=x", L"B=y", L"C=3"}, kCompleted},

    {kBackFill, kActive, 1, E_FAIL, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kActive, 1, S_OK, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kViewOnly, 1, E_FAIL, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kViewOnly, 1, S_OK, S_OK, kNone, nullptr, kWritten, kDone},
    {kBackFill, kPathName, 1, E_FAIL, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kPathName, 1, S_OK, S_OK, kNone, nullptr, kAll, kNoModel},
    NotWrittenBack(kBackFill, kActive, 2, L"1183 iSwApp->get_IActiveDoc2"),
    {kBackFill, kActive, 2, S_OK, S_OK, kNone, nullptr, kAll, kNone},
    NotWrittenBack(kBackFill, kExtension, 1, L"1189 pModelDoc2->get_Extension"),
    {kBackFill, kExtension, 1, S_OK, E_POINTER, kNone, nullptr, kAll, kNone},
    NotWrittenBack(kBackFill, kManager, 1, L"1193 pModelDocExtension->get_CustomPropertyManager"),
    {kBackFill, kManager, 1, S_OK, E_POINTER, kNone, nullptr, kAll, kNone},
    NotWrittenBack(kBackFill, kGetAll, 1, L"1198 pCustomPropertyManager->GetAll"),
    {kBackFill, kGetAll, 1, S_OK, S_OK, kNone, nullptr, kAll, kDone},
    NotWrittenBack(kBackFill, kSet, 1, L"1214 pCustomPropertyManager->Set"),
    {kBackFill, kSet, 1, S_OK, S_OK, kNone, nullptr, {L"A=1", L"B=y", L"C=z"}, kDone},
    NotWrittenBack(kBackFill, kSet, 2, L"1214 pCustomPropertyManager->Set", {L"A=x", L"B=2", L"C=3"}),
    {kBackFill, kSet, 2, S_OK, S_OK, kNone, nullptr, {L"A=x", L"B=2", L"C=z"}, kDone},
    NotWrittenBack(kBackFill, kSet, 3, L"1214 pCustomPropertyManager->Set", {L"A=x", L"B=y", L"C=3"}),
    {kBackFill, kSet, 3, S_OK, S_OK, kNone, nullptr, {L"A=x", L"B=y", L"C=3"}, kDone},
};

class MaterialCommand : public PropertiesTest {
 protected:
  void SetUp() override {
    Answer("QD_PLMCreateMaterial", kMaterial);
    Answer("QD_PLMMaterialBackFill", kValues);
    ConnectAndLogIn();
    m_document = OpenPartWithThree();
  }

  /// The log lines that a row tells, as the log has them.
  Texts LinesOf(const FailingCall& row) const {
    Texts lines;
    for (std::wstring line : row.log) {
      const std::size_t path = line.find(L"PATH");
      if (path != std::wstring::npos) line.replace(path, 4, m_document->path);
      const std::size_t text = line.find(L' ', 5);
      lines.push_back(LogLine(std::stoi(line), line.substr(5, text - 5), line.substr(text + 1)));
    }
    return lines;
  }

  /// What a row's command asks of the PLM client.
  static Requests AskedBy(const FailingCall& row) {
    if (row.command == std::wstring_view(kBackFill)) {
      if (row.boxes == kNoModel) return {};
      return {std::string("QD_PLMMaterialBackFill ") + kLoginAnswer};
    }
    if (!row.extracted) return {};
    if (row.extracted == std::string_view(kNoPath)) return {"QD_PLMCreateMaterial "};
    return {std::string(R"(QD_PLMCreateMaterial {"extract_info":)") + row.extracted + "}",
            R"(QD_PLMMaterialBackFill {"backfill_info_from_create_material":{"no":"M-1"}})"};
  }

  std::shared_ptr<cad_host::Document> m_document;
};

class FailingCallOf : public MaterialCommand, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingCallOf, LeavesWhatTheTableSays) {
  const FailingCall& row = GetParam();
  m_host->GetFaults().Fail(row.method, row.nth, row.answer);
  ExpectBoxes(row.boxes.size());
  const auto picked = Pick(row.command);
  EXPECT_EQ(FAILED(picked.result) ? picked.code : picked.result, row.code);
  EXPECT_EQ(AddInLog(), LinesOf(row));
  EXPECT_EQ(PlatformLog().size(), row.code == E_POINTER ? 1u : 0u);
  EXPECT_EQ(Asked(), AskedBy(row));
  EXPECT_EQ(PropertiesOf(*m_document), row.left);
  EXPECT_EQ(Boxes(), row.boxes);
}

INSTANTIATE_TEST_SUITE_P(, FailingCallOf, testing::ValuesIn(kFailingCalls));

TEST_F(MaterialCommand, TableHasEveryCallOfEachCommandTwice) {
  for (const wchar_t* command : {kCreate, kBackFill}) {
    m_host->GetJournal().Clear();
    ExpectBoxes(command == kCreate ? kCompleted.size() : kDone.size());
    EXPECT_EQ(Pick(command).result, S_OK);
    const auto rows =
        std::count_if(std::begin(kFailingCalls), std::end(kFailingCalls),
                      [&](const FailingCall& row) { return row.command == std::wstring_view(command); });
    EXPECT_EQ(static_cast<std::size_t>(rows), 2 * HostCalls().size()) << Utf8(command);
  }
}

}  // namespace
