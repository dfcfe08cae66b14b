// Each host call of reading and writing properties fails in turn, with a code and with a success that
// brings nothing.
#include <gtest/gtest.h>

#include <functional>

#include "property_access_fixture.h"

namespace {

enum class Operation { kGetAttributes, kGetCustomProperty, kPutAttributes };

/// The host call that fails, and what is left: nothing else is logged, written or shown.
struct FailingCall {
  Operation operation;
  const wchar_t* method;
  int nth;
  HRESULT answer;  ///< S_OK: a success that brings nothing
  HRESULT result;  ///< what the operation returns, or raises where it is E_POINTER
  Texts log;       ///< "LINE TEXT"
  Texts left;      ///< members of the object read into, or properties of the document written to
  Texts boxes;
};

const Texts kNone;
const Texts kAll = {L"A=1", L"B=2", L"C=3"};
const Texts kWritten = {L"A=x", L"B=y", L"C=z"};
const Texts kDone = {L"completed"};

constexpr const wchar_t* kActive = L"ISldWorks::get_IActiveDoc2";
constexpr const wchar_t* kExtension = L"IModelDoc2::get_Extension";
constexpr const wchar_t* kManager = L"IModelDocExtension::get_CustomPropertyManager";
constexpr const wchar_t* kGetAll = L"ICustomPropertyManager::GetAll";
constexpr const wchar_t* kGetNames = L"ICustomPropertyManager::GetNames";
constexpr const wchar_t* kGet2 = L"ICustomPropertyManager::Get2";
constexpr const wchar_t* kGet3 = L"ICustomPropertyManager::Get3";
constexpr const wchar_t* kSet = L"ICustomPropertyManager::Set";

using enum Operation;

const FailingCall kFailingCalls[] = {
    {kGetAttributes, kActive, 1, E_FAIL, E_FAIL, {L"1143 iSwApp->get_IActiveDoc2"}, kNone, kNone},
    {kGetAttributes, kActive, 1, S_OK, S_OK, kNone, kNone, kNone},
    {kGetAttributes, kExtension, 1, E_FAIL, E_FAIL, {L"1149 pModelDoc2->get_Extension"}, kNone, kNone},
    {kGetAttributes, kExtension, 1, S_OK, E_POINTER, kNone, kNone, kNone},
    {kGetAttributes,
     kManager,
     1,
     E_FAIL,
     E_FAIL,
     {L"1153 pModelDocExtension->get_CustomPropertyManager"},
     kNone,
     kNone},
    {kGetAttributes, kManager, 1, S_OK, E_POINTER, kNone, kNone, kNone},
    {kGetAttributes, kGetAll, 1, E_FAIL, E_FAIL, {L"1158 pCustomPropertyManager->GetAll"}, kNone, kNone},
    {kGetAttributes, kGetAll, 1, S_OK, S_OK, kNone, kNone, kNone},
    {kGetAttributes, kGet2, 1, E_FAIL, E_FAIL, {L"1170 pCustomPropertyManager->Get2"}, kNone, kNone},
    {kGetAttributes, kGet2, 1, S_OK, S_OK, kNone, {L"A=", L"B=2", L"C=3"}, kNone},
    {kGetAttributes, kGet2, 2, E_FAIL, E_FAIL, {L"1170 pCustomPropertyManager->Get2"}, {L"A=1"}, kNone},
    {kGetAttributes, kGet2, 2, S_OK, S_OK, kNone, {L"A=1", L"B=", L"C=3"}, kNone},
    {kGetAttributes,
     kGet2,
     3,
     E_FAIL,
     E_FAIL,
     {L"1170 pCustomPropertyManager->Get2"},
     {L"A=1", L"B=2"},
     kNone},
    {kGetAttributes, kGet2, 3, S_OK, S_OK, kNone, {L"A=1", L"B=2", L"C="}, kNone},

    {kGetCustomProperty, kExtension, 1, E_FAIL, E_FAIL, {L"1460 get_Extension"}, kNone, kNone},
    {kGetCustomProperty, kExtension, 1, S_OK, S_OK, kNone, kNone, kNone},
    {kGetCustomProperty,
     kManager,
     1,
     E_FAIL,
     E_FAIL,
     {L"1468 pDocExten->get_CustomPropertyManager"},
     kNone,
     kNone},
    {kGetCustomProperty, kManager, 1, S_OK, S_OK, kNone, kNone, kNone},
    {kGetCustomProperty, kGetNames, 1, E_FAIL, E_FAIL, {L"1475 pCustomMgr->GetNames"}, kNone, kNone},
    {kGetCustomProperty, kGetNames, 1, S_OK, S_OK, kNone, kNone, kNone},
    {kGetCustomProperty, kGet3, 1, E_FAIL, S_OK, {L"1489 pCustomMgr->Get3: A"}, {L"B=2", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 1, S_OK, S_OK, kNone, {L"A=", L"B=2", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 2, E_FAIL, S_OK, {L"1489 pCustomMgr->Get3: B"}, {L"A=1", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 2, S_OK, S_OK, kNone, {L"A=1", L"B=", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 3, E_FAIL, E_FAIL, {L"1489 pCustomMgr->Get3: C"}, {L"A=1", L"B=2"}, kNone},
    {kGetCustomProperty, kGet3, 3, S_OK, S_OK, kNone, {L"A=1", L"B=2", L"C="}, kNone},

    {kPutAttributes, kActive, 1, E_FAIL, E_FAIL, {L"1183 iSwApp->get_IActiveDoc2"}, kAll, kNone},
    {kPutAttributes, kActive, 1, S_OK, S_OK, kNone, kAll, kNone},
    {kPutAttributes, kExtension, 1, E_FAIL, E_FAIL, {L"1189 pModelDoc2->get_Extension"}, kAll, kNone},
    {kPutAttributes, kExtension, 1, S_OK, E_POINTER, kNone, kAll, kNone},
    {kPutAttributes,
     kManager,
     1,
     E_FAIL,
     E_FAIL,
     {L"1193 pModelDocExtension->get_CustomPropertyManager"},
     kAll,
     kNone},
    {kPutAttributes, kManager, 1, S_OK, E_POINTER, kNone, kAll, kNone},
    {kPutAttributes, kGetAll, 1, E_FAIL, E_FAIL, {L"1198 pCustomPropertyManager->GetAll"}, kAll, kNone},
    {kPutAttributes, kGetAll, 1, S_OK, S_OK, kNone, kAll, kDone},
    {kPutAttributes, kSet, 1, E_FAIL, E_FAIL, {L"1214 pCustomPropertyManager->Set"}, kAll, kNone},
    {kPutAttributes, kSet, 1, S_OK, S_OK, kNone, {L"A=1", L"B=y", L"C=z"}, kDone},
    {kPutAttributes,
     kSet,
     2,
     E_FAIL,
     E_FAIL,
     {L"1214 pCustomPropertyManager->Set"},
     {L"A=x", L"B=2", L"C=3"},
     kNone},
    {kPutAttributes, kSet, 2, S_OK, S_OK, kNone, {L"A=x", L"B=2", L"C=z"}, kDone},
    {kPutAttributes,
     kSet,
     3,
     E_FAIL,
     E_FAIL,
     {L"1214 pCustomPropertyManager->Set"},
     {L"A=x", L"B=y", L"C=3"},
     kNone},
    {kPutAttributes, kSet, 3, S_OK, S_OK, kNone, {L"A=x", L"B=y", L"C=3"}, kDone},
};

class FailingAccess : public PropertyAccessTest {
 protected:
  static constexpr const wchar_t* kValues = LR"({"A":"x","B":"y","C":"z"})";

  static const wchar_t* FunctionOf(Operation operation) {
    return operation == kGetAttributes       ? L"GetAttributes"
           : operation == kGetCustomProperty ? L"GetCustomProperty"
                                             : L"PutAttributes";
  }

  HRESULT Run(Operation operation, const std::shared_ptr<CJsonObject>& json) {
    switch (operation) {
      case kGetAttributes:
        return m_class->GetAttributes(json);
      case kGetCustomProperty:
        return m_class->GetCustomProperty(m_given, json);
      case kPutAttributes:
        return m_class->PutAttributes(json);
    }
    return E_UNEXPECTED;
  }

  void TearDown() override {
    m_given = nullptr;
    PropertyAccessTest::TearDown();
  }

  /// The members A, B and C of the object as "NAME=TEXT".
  static Texts MembersOf(const CJsonObject& json) {
    Texts members;
    for (const wchar_t* name : {L"A", L"B", L"C"}) {
      if (json.IsExist(name)) members.push_back(name + (L"=" + json.GetStringValue(name)));
    }
    return members;
  }

  IModelDoc2Ptr m_given;
};

class FailingCallOf : public FailingAccess, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingCallOf, LeavesWhatTheTableSays) {
  const FailingCall& row = GetParam();
  const bool writes = row.operation == kPutAttributes;
  const auto document = OpenPartWithThree();
  m_given = ActiveFace();
  const auto json = Json(writes ? kValues : L"{}");
  m_host->GetFaults().Fail(row.method, row.nth, row.answer);
  ExpectBoxes(row.boxes.size());
  HRESULT result = S_OK;
  const HRESULT raised = RaisedBy([&] { result = Run(row.operation, json); });
  EXPECT_EQ(row.result == E_POINTER ? raised : result, row.result);
  EXPECT_EQ(raised, row.result == E_POINTER ? E_POINTER : S_OK);
  Texts log;
  for (const std::wstring& line : row.log) {
    log.push_back(LogLine(std::stoi(line), FunctionOf(row.operation),
                          line.substr(line.find(L' ') + 1) + L"<hr=0x80004005>"));
  }
  EXPECT_EQ(m_home.LogLines(), log);
  EXPECT_EQ(writes ? PropertiesOf(*document) : MembersOf(*json), row.left);
  EXPECT_EQ(PropertiesOf(*document), writes ? row.left : kAll);
  EXPECT_EQ(Boxes(), row.boxes);
}

INSTANTIATE_TEST_SUITE_P(, FailingCallOf, testing::ValuesIn(kFailingCalls));

TEST_F(FailingAccess, TableHasEveryCallOfEachOperationTwice) {
  OpenPartWithThree();
  m_given = ActiveFace();
  for (const Operation operation : {kGetAttributes, kGetCustomProperty, kPutAttributes}) {
    m_host->GetJournal().Clear();
    if (operation == kPutAttributes) ExpectBoxes(1);
    EXPECT_EQ(Run(operation, Json(operation == kPutAttributes ? kValues : L"{}")), S_OK);
    const auto rows = std::count_if(std::begin(kFailingCalls), std::end(kFailingCalls),
                                    [&](const FailingCall& row) { return row.operation == operation; });
    EXPECT_EQ(static_cast<std::size_t>(rows), 2 * m_host->GetJournal().Calls().size())
        << Utf8(FunctionOf(operation));
  }
}

}  // namespace
