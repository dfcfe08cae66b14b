// Each host call that reads or writes properties fails once with a code and once with a success without a
// result.
#include <gtest/gtest.h>

#include <functional>

#include "list_difference.h"
#include "log_line.h"
#include "method_case_name.h"
#include "property_access_fixture.h"
#include "raised_by.h"

namespace {

enum class Operation { kGetAttributes, kGetCustomProperty, kPutAttributes };

/// An error that is logged, with E_FAIL.
struct LoggedError {
  int line;
  const wchar_t* text;
};

/// A host call that fails, and the effect: nothing else is logged, written or shown.
struct FailingCall {
  Operation operation;
  const wchar_t* method;
  int nth;
  HRESULT host_result;  ///< S_OK: a success without a result
  HRESULT result;       ///< what the operation returns, or throws if it is E_POINTER
  std::vector<LoggedError> log;
  Texts left;  ///< members of the object that was read into, or properties of the document after writing
  Texts boxes;
};

const std::vector<LoggedError> kNoLine;
const Texts kNone;
const Texts kAll = {L"A=1", L"B=2", L"C=3"};
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
    {kGetAttributes, kActive, 1, E_FAIL, E_FAIL, {{1143, L"iSwApp->get_IActiveDoc2"}}, kNone, kNone},
    {kGetAttributes, kActive, 1, S_OK, S_OK, kNoLine, kNone, kNone},
    {kGetAttributes, kExtension, 1, E_FAIL, E_FAIL, {{1149, L"pModelDoc2->get_Extension"}}, kNone, kNone},
    {kGetAttributes, kExtension, 1, S_OK, E_POINTER, kNoLine, kNone, kNone},
    {kGetAttributes,
     kManager,
     1,
     E_FAIL,
     E_FAIL,
     {{1153, L"pModelDocExtension->get_CustomPropertyManager"}},
     kNone,
     kNone},
    {kGetAttributes, kManager, 1, S_OK, E_POINTER, kNoLine, kNone, kNone},
    {kGetAttributes, kGetAll, 1, E_FAIL, E_FAIL, {{1158, L"pCustomPropertyManager->GetAll"}}, kNone, kNone},
    {kGetAttributes, kGetAll, 1, S_OK, S_OK, kNoLine, kNone, kNone},
    {kGetAttributes, kGet2, 1, E_FAIL, E_FAIL, {{1170, L"pCustomPropertyManager->Get2"}}, kNone, kNone},
    {kGetAttributes, kGet2, 1, S_OK, S_OK, kNoLine, {L"A=", L"B=2", L"C=3"}, kNone},
    {kGetAttributes, kGet2, 2, E_FAIL, E_FAIL, {{1170, L"pCustomPropertyManager->Get2"}}, {L"A=1"}, kNone},
    {kGetAttributes, kGet2, 2, S_OK, S_OK, kNoLine, {L"A=1", L"B=", L"C=3"}, kNone},
    {kGetAttributes,
     kGet2,
     3,
     E_FAIL,
     E_FAIL,
     {{1170, L"pCustomPropertyManager->Get2"}},
     {L"A=1", L"B=2"},
     kNone},
    {kGetAttributes, kGet2, 3, S_OK, S_OK, kNoLine, {L"A=1", L"B=2", L"C="}, kNone},

    {kGetCustomProperty, kExtension, 1, E_FAIL, E_FAIL, {{1460, L"get_Extension"}}, kNone, kNone},
    {kGetCustomProperty, kExtension, 1, S_OK, S_OK, kNoLine, kNone, kNone},
    {kGetCustomProperty,
     kManager,
     1,
     E_FAIL,
     E_FAIL,
     {{1468, L"pDocExten->get_CustomPropertyManager"}},
     kNone,
     kNone},
    {kGetCustomProperty, kManager, 1, S_OK, S_OK, kNoLine, kNone, kNone},
    {kGetCustomProperty, kGetNames, 1, E_FAIL, E_FAIL, {{1475, L"pCustomMgr->GetNames"}}, kNone, kNone},
    {kGetCustomProperty, kGetNames, 1, S_OK, S_OK, kNoLine, kNone, kNone},
    {kGetCustomProperty, kGet3, 1, E_FAIL, S_OK, {{1489, L"pCustomMgr->Get3: A"}}, {L"B=2", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 1, S_OK, S_OK, kNoLine, {L"A=", L"B=2", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 2, E_FAIL, S_OK, {{1489, L"pCustomMgr->Get3: B"}}, {L"A=1", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 2, S_OK, S_OK, kNoLine, {L"A=1", L"B=", L"C=3"}, kNone},
    {kGetCustomProperty, kGet3, 3, E_FAIL, E_FAIL, {{1489, L"pCustomMgr->Get3: C"}}, {L"A=1", L"B=2"}, kNone},
    {kGetCustomProperty, kGet3, 3, S_OK, S_OK, kNoLine, {L"A=1", L"B=2", L"C="}, kNone},

    {kPutAttributes, kActive, 1, E_FAIL, E_FAIL, {{1183, L"iSwApp->get_IActiveDoc2"}}, kAll, kNone},
    {kPutAttributes, kActive, 1, S_OK, S_OK, kNoLine, kAll, kNone},
    {kPutAttributes, kExtension, 1, E_FAIL, E_FAIL, {{1189, L"pModelDoc2->get_Extension"}}, kAll, kNone},
    {kPutAttributes, kExtension, 1, S_OK, E_POINTER, kNoLine, kAll, kNone},
    {kPutAttributes,
     kManager,
     1,
     E_FAIL,
     E_FAIL,
     {{1193, L"pModelDocExtension->get_CustomPropertyManager"}},
     kAll,
     kNone},
    {kPutAttributes, kManager, 1, S_OK, E_POINTER, kNoLine, kAll, kNone},
    {kPutAttributes, kGetAll, 1, E_FAIL, E_FAIL, {{1198, L"pCustomPropertyManager->GetAll"}}, kAll, kNone},
    {kPutAttributes, kGetAll, 1, S_OK, S_OK, kNoLine, kAll, kDone},
    {kPutAttributes, kSet, 1, E_FAIL, E_FAIL, {{1214, L"pCustomPropertyManager->Set"}}, kAll, kNone},
    {kPutAttributes, kSet, 1, S_OK, S_OK, kNoLine, {L"A=1", L"B=y", L"C=z"}, kDone},
    {kPutAttributes,
     kSet,
     2,
     E_FAIL,
     E_FAIL,
     {{1214, L"pCustomPropertyManager->Set"}},
     {L"A=x", L"B=2", L"C=3"},
     kNone},
    {kPutAttributes, kSet, 2, S_OK, S_OK, kNoLine, {L"A=x", L"B=2", L"C=z"}, kDone},
    {kPutAttributes,
     kSet,
     3,
     E_FAIL,
     E_FAIL,
     {{1214, L"pCustomPropertyManager->Set"}},
     {L"A=x", L"B=y", L"C=3"},
     kNone},
    {kPutAttributes, kSet, 3, S_OK, S_OK, kNoLine, {L"A=x", L"B=y", L"C=3"}, kDone},
};

const wchar_t* FunctionOf(Operation operation) {
  return operation == kGetAttributes       ? L"GetAttributes"
         : operation == kGetCustomProperty ? L"GetCustomProperty"
                                           : L"PutAttributes";
}

/// "PutAttributes_ICustomPropertyManagerSet_2_Fails".
std::string NameOfCall(const testing::TestParamInfo<FailingCall>& info) {
  const FailingCall& row = info.param;
  return Utf8(FunctionOf(row.operation)) + "_" + MethodInName(row.method) + "_" + std::to_string(row.nth) +
         (row.host_result == S_OK ? "_ReturnsNothing" : "_Fails");
}

class PropertyAccess : public PropertyAccessFixture {
 protected:
  static constexpr const wchar_t* kValues = LR"({"A":"x","B":"y","C":"z"})";

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
    PropertyAccessFixture::TearDown();
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

class FailingPropertyAccess : public PropertyAccess, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingPropertyAccess, HasTheEffectOfTheTable) {
  const FailingCall& row = GetParam();
  const bool writes = row.operation == kPutAttributes;
  const auto document = OpenPartWithThree();
  m_given = ActiveModel();
  const auto json = Json(writes ? kValues : L"{}");
  m_host->GetFaults().Fail(row.method, row.nth, row.host_result);
  ExpectBoxes(row.boxes.size());
  HRESULT result = S_OK;
  const HRESULT thrown = RaisedBy([&] { result = Run(row.operation, json); });
  EXPECT_EQ(row.result == E_POINTER ? thrown : result, row.result);
  EXPECT_EQ(thrown, row.result == E_POINTER ? E_POINTER : S_OK);
  Texts log;
  for (const LoggedError& error : row.log) {
    log.push_back(ErrorLine(error.line, FunctionOf(row.operation), error.text, E_FAIL));
  }
  EXPECT_EQ(m_home.LogLines(), log);
  EXPECT_SAME_ENTRIES(writes ? PropertiesOf(*document) : MembersOf(*json), row.left);
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), writes ? row.left : kAll);
  EXPECT_EQ(Boxes(), row.boxes);
}

INSTANTIATE_TEST_SUITE_P(, FailingPropertyAccess, testing::ValuesIn(kFailingCalls), NameOfCall);

TEST_F(PropertyAccess, HasEachOfItsHostCallsTwiceInTheTable) {
  OpenPartWithThree();
  m_given = ActiveModel();
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
