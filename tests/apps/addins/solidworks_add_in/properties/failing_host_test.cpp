// Each host call of the material commands fails once with a code and once with a success without a result.
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "list_difference.h"
#include "log_line.h"
#include "method_case_name.h"
#include "properties_fixture.h"

namespace {

constexpr const wchar_t* kCreate = L"PlmCreateMaterial";
constexpr const wchar_t* kBackFill = L"PlmMaterialBackFill";

constexpr const char* kMaterial = R"({"data":{"no":"M-1"}})";
constexpr const char* kValues = R"({"material_property_back_fill":{"A":"x","B":"y","C":"z"}})";

/// A host call that fails, and the effect.
struct FailingCall {
  const wchar_t* command;
  const wchar_t* method;
  int nth;
  HRESULT host_result;    ///< S_OK: a success without a result
  HRESULT code;           ///< of the command
  Texts log;              ///< {path} is the document's path
  const char* extracted;  ///< the properties sent; "" for an empty request, null if nothing is sent
  Texts left;             ///< the document's properties afterwards
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

// PlmCreateMaterial logs a line after every write, PlmMaterialBackFill only after a failed one.
const std::wstring kWrote = ErrorLine(1308, kCreate, L"AttributesBackFill failed", S_OK);
const std::wstring kNotWrote = ErrorLine(1308, kCreate, L"AttributesBackFill failed", E_FAIL);
const std::wstring kNotFilled = ErrorLine(1417, kBackFill, L"AttributesBackFill failed.", E_FAIL);
const std::wstring kNotRead =
    ErrorLine(1275, kCreate, L"GetCustomProperty failed, opened file path: {path}", E_FAIL);

std::wstring NotRead(int line, const wchar_t* text) {
  return ErrorLine(line, L"GetCustomProperty", text, E_FAIL);
}
std::wstring NotPut(int line, const wchar_t* text) { return ErrorLine(line, L"PutAttributes", text, E_FAIL); }
std::wstring NotOpened(HRESULT code) {
  return ErrorLine(1267, kCreate, L"iSwApp->OpenDoc6 failed, opened file path: {path}", code);
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
FailingCall NotExtracted(const wchar_t* method, int nth, int line, const wchar_t* text) {
  return {kCreate, method, nth, E_FAIL, E_FAIL, {NotRead(line, text), kNotRead}, nullptr, kAll, kExtract};
}

/// A failure that ends the writing; the document then has the properties `left`.
FailingCall NotWrittenBack(const wchar_t* command, const wchar_t* method, int nth, int line,
                           const wchar_t* text, const Texts& left = kAll) {
  if (command == std::wstring_view(kCreate)) {
    return {kCreate, method, nth, E_FAIL, E_FAIL, {NotPut(line, text), kNotWrote}, kSent, left, kError};
  }
  return {kBackFill, method, nth, E_FAIL, E_FAIL, {NotPut(line, text), kNotFilled}, nullptr, left, kNotice};
}

const FailingCall kFailingCalls[] = {
    // Finding the document: without a path, an empty request is sent and no question is shown.
    {kCreate, kActive, 1, E_FAIL, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kActive, 1, S_OK, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kViewOnly, 1, E_FAIL, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kViewOnly, 1, S_OK, S_OK, {kWrote}, kSent, kWritten, kCompleted},
    {kCreate, kPathName, 1, E_FAIL, S_OK, kNone, kNoPath, kAll, kNone},
    {kCreate, kPathName, 1, S_OK, S_OK, kNone, kNoPath, kAll, kNone},
    // Reading: a failure ends the command before anything is sent.
    {kCreate, kOpen, 1, E_FAIL, E_FAIL, {NotOpened(E_FAIL)}, nullptr, kAll, kExtract},
    {kCreate, kOpen, 1, S_OK, S_OK, {NotOpened(S_OK)}, nullptr, kAll, kExtract},
    NotExtracted(kExtension, 1, 1460, L"get_Extension"),
    {kCreate, kExtension, 1, S_OK, S_OK, {kWrote}, kEmpty, kWritten, kCompleted},
    NotExtracted(kManager, 1, 1468, L"pDocExten->get_CustomPropertyManager"),
    {kCreate, kManager, 1, S_OK, S_OK, {kWrote}, kEmpty, kWritten, kCompleted},
    NotExtracted(kGetNames, 1, 1475, L"pCustomMgr->GetNames"),
    {kCreate, kGetNames, 1, S_OK, S_OK, {kWrote}, kEmpty, kWritten, kCompleted},
    {kCreate,
     kGet3,
     1,
     E_FAIL,
     S_OK,
     {NotRead(1489, L"pCustomMgr->Get3: A"), kWrote},
     R"({"B":"2","C":"3"})",
     kWritten,
     kCompleted},
    {kCreate, kGet3, 1, S_OK, S_OK, {kWrote}, R"({"A":"","B":"2","C":"3"})", kWritten, kCompleted},
    {kCreate,
     kGet3,
     2,
     E_FAIL,
     S_OK,
     {NotRead(1489, L"pCustomMgr->Get3: B"), kWrote},
     R"({"A":"1","C":"3"})",
     kWritten,
     kCompleted},
    {kCreate, kGet3, 2, S_OK, S_OK, {kWrote}, R"({"A":"1","B":"","C":"3"})", kWritten, kCompleted},
    NotExtracted(kGet3, 3, 1489, L"pCustomMgr->Get3: C"),
    {kCreate, kGet3, 3, S_OK, S_OK, {kWrote}, R"({"A":"1","B":"2","C":""})", kWritten, kCompleted},
    // Writing: values that were written before the failure stay.
    NotWrittenBack(kCreate, kActive, 2, 1183, L"iSwApp->get_IActiveDoc2"),
    {kCreate, kActive, 2, S_OK, S_OK, {kWrote}, kSent, kAll, kQuestions},
    NotWrittenBack(kCreate, kExtension, 2, 1189, L"pModelDoc2->get_Extension"),
    {kCreate, kExtension, 2, S_OK, E_POINTER, kNone, kSent, kAll, kQuestions},
    NotWrittenBack(kCreate, kManager, 2, 1193, L"pModelDocExtension->get_CustomPropertyManager"),
    {kCreate, kManager, 2, S_OK, E_POINTER, kNone, kSent, kAll, kQuestions},
    NotWrittenBack(kCreate, kGetAll, 1, 1198, L"pCustomPropertyManager->GetAll"),
    {kCreate, kGetAll, 1, S_OK, S_OK, {kWrote}, kSent, kAll, kCompleted},
    NotWrittenBack(kCreate, kSet, 1, 1214, L"pCustomPropertyManager->Set"),
    {kCreate, kSet, 1, S_OK, S_OK, {kWrote}, kSent, {L"A=1", L"B=y", L"C=z"}, kCompleted},
    NotWrittenBack(kCreate, kSet, 2, 1214, L"pCustomPropertyManager->Set", {L"A=x", L"B=2", L"C=3"}),
    {kCreate, kSet, 2, S_OK, S_OK, {kWrote}, kSent, {L"A=x", L"B=2", L"C=z"}, kCompleted},
    NotWrittenBack(kCreate, kSet, 3, 1214, L"pCustomPropertyManager->Set", {L"A=x", L"B=y", L"C=3"}),
    {kCreate, kSet, 3, S_OK, S_OK, {kWrote}, kSent, {L"A=x", L"B=y", L"C=3"}, kCompleted},

    {kBackFill, kActive, 1, E_FAIL, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kActive, 1, S_OK, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kViewOnly, 1, E_FAIL, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kViewOnly, 1, S_OK, S_OK, kNone, nullptr, kWritten, kDone},
    {kBackFill, kPathName, 1, E_FAIL, S_OK, kNone, nullptr, kAll, kNoModel},
    {kBackFill, kPathName, 1, S_OK, S_OK, kNone, nullptr, kAll, kNoModel},
    NotWrittenBack(kBackFill, kActive, 2, 1183, L"iSwApp->get_IActiveDoc2"),
    {kBackFill, kActive, 2, S_OK, S_OK, kNone, nullptr, kAll, kNone},
    NotWrittenBack(kBackFill, kExtension, 1, 1189, L"pModelDoc2->get_Extension"),
    {kBackFill, kExtension, 1, S_OK, E_POINTER, kNone, nullptr, kAll, kNone},
    NotWrittenBack(kBackFill, kManager, 1, 1193, L"pModelDocExtension->get_CustomPropertyManager"),
    {kBackFill, kManager, 1, S_OK, E_POINTER, kNone, nullptr, kAll, kNone},
    NotWrittenBack(kBackFill, kGetAll, 1, 1198, L"pCustomPropertyManager->GetAll"),
    {kBackFill, kGetAll, 1, S_OK, S_OK, kNone, nullptr, kAll, kDone},
    NotWrittenBack(kBackFill, kSet, 1, 1214, L"pCustomPropertyManager->Set"),
    {kBackFill, kSet, 1, S_OK, S_OK, kNone, nullptr, {L"A=1", L"B=y", L"C=z"}, kDone},
    NotWrittenBack(kBackFill, kSet, 2, 1214, L"pCustomPropertyManager->Set", {L"A=x", L"B=2", L"C=3"}),
    {kBackFill, kSet, 2, S_OK, S_OK, kNone, nullptr, {L"A=x", L"B=2", L"C=z"}, kDone},
    NotWrittenBack(kBackFill, kSet, 3, 1214, L"pCustomPropertyManager->Set", {L"A=x", L"B=y", L"C=3"}),
    {kBackFill, kSet, 3, S_OK, S_OK, kNone, nullptr, {L"A=x", L"B=y", L"C=3"}, kDone},
};

class MaterialCommand : public PropertiesFixture {
 protected:
  void SetUp() override {
    Answer("QD_PLMCreateMaterial", kMaterial);
    Answer("QD_PLMMaterialBackFill", kValues);
    ConnectAndLogIn();
    m_document = OpenPartWithThree();
  }

  /// The log lines of a row, with the document's path.
  Texts LinesOf(const FailingCall& row) const {
    constexpr std::wstring_view kPath = L"{path}";
    Texts lines;
    for (std::wstring line : row.log) {
      const std::size_t place = line.find(kPath);
      if (place != std::wstring::npos) line.replace(place, kPath.size(), m_document->path);
      lines.push_back(line);
    }
    return lines;
  }

  /// The requests that a row's command sends.
  static Requests RequestsOf(const FailingCall& row) {
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

/// "PlmCreateMaterial_ICustomPropertyManagerSet_2_Fails".
std::string NameOfCall(const testing::TestParamInfo<FailingCall>& info) {
  const FailingCall& row = info.param;
  return Utf8(row.command) + "_" + MethodInName(row.method) + "_" + std::to_string(row.nth) +
         (row.host_result == S_OK ? "_ReturnsNothing" : "_Fails");
}

class FailingMaterialCommand : public MaterialCommand, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingMaterialCommand, HasTheEffectOfTheTable) {
  const FailingCall& row = GetParam();
  m_host->GetFaults().Fail(row.method, row.nth, row.host_result);
  ExpectBoxes(row.boxes.size());
  const auto picked = Pick(row.command);
  EXPECT_EQ(FAILED(picked.result) ? picked.code : picked.result, row.code);
  EXPECT_SAME_ENTRIES(AddInLog(), LinesOf(row));
  EXPECT_EQ(PlatformLog().size(), row.code == E_POINTER ? 1u : 0u);
  EXPECT_SAME_ENTRIES(Asked(), RequestsOf(row));
  EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), row.left);
  EXPECT_SAME_ENTRIES(Boxes(), row.boxes);
}

INSTANTIATE_TEST_SUITE_P(, FailingMaterialCommand, testing::ValuesIn(kFailingCalls), NameOfCall);

TEST_F(MaterialCommand, HasEachOfItsHostCallsTwiceInTheTable) {
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
