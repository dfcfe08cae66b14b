// Each host call that reads or writes properties fails once with a code and once with a success without a
// result.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

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

/// A call that fails with a code, which the operation logs and returns.
FailingCall Fails(Operation operation, const wchar_t* method, int nth, const LoggedError& error,
                  const Texts& left) {
  return {operation, method, nth, E_FAIL, E_FAIL, {error}, left, kNone};
}

/// A call that succeeds without a result.
FailingCall ReturnsNothing(Operation operation, const wchar_t* method, int nth, HRESULT result,
                           const Texts& left, const Texts& boxes = kNone) {
  return {operation, method, nth, S_OK, result, kNoLine, left, boxes};
}

/// A property that GetCustomProperty does not get: that ends nothing.
FailingCall IsSkipped(int nth, HRESULT result, const wchar_t* text, const Texts& left) {
  return {kGetCustomProperty, kGet3, nth, E_FAIL, result, {{1489, text}}, left, kNone};
}

/// The lines of the log for the calls that list the properties of the active document, which GetAttributes
/// and PutAttributes share.
struct ListingLines {
  int document;
  int extension;
  int manager;
  int get_all;
};

/// @param left what is left after a failure. @param boxes those of a document without properties.
std::vector<FailingCall> ListingCalls(Operation operation, const ListingLines& lines, const Texts& left,
                                      const Texts& boxes) {
  return {
      Fails(operation, kActive, 1, {lines.document, L"iSwApp->get_IActiveDoc2"}, left),
      ReturnsNothing(operation, kActive, 1, S_OK, left),
      Fails(operation, kExtension, 1, {lines.extension, L"pModelDoc2->get_Extension"}, left),
      ReturnsNothing(operation, kExtension, 1, E_POINTER, left),
      Fails(operation, kManager, 1, {lines.manager, L"pModelDocExtension->get_CustomPropertyManager"}, left),
      ReturnsNothing(operation, kManager, 1, E_POINTER, left),
      Fails(operation, kGetAll, 1, {lines.get_all, L"pCustomPropertyManager->GetAll"}, left),
      ReturnsNothing(operation, kGetAll, 1, S_OK, left, boxes)};
}

std::vector<FailingCall> GetAttributesCalls() {
  const LoggedError get = {1170, L"pCustomPropertyManager->Get2"};
  std::vector<FailingCall> calls = ListingCalls(kGetAttributes, {1143, 1149, 1153, 1158}, kNone, kNone);
  calls.insert(calls.end(), {Fails(kGetAttributes, kGet2, 1, get, kNone),
                             ReturnsNothing(kGetAttributes, kGet2, 1, S_OK, {L"A=", L"B=2", L"C=3"}),
                             Fails(kGetAttributes, kGet2, 2, get, {L"A=1"}),
                             ReturnsNothing(kGetAttributes, kGet2, 2, S_OK, {L"A=1", L"B=", L"C=3"}),
                             Fails(kGetAttributes, kGet2, 3, get, {L"A=1", L"B=2"}),
                             ReturnsNothing(kGetAttributes, kGet2, 3, S_OK, {L"A=1", L"B=2", L"C="})});
  return calls;
}

std::vector<FailingCall> GetCustomPropertyCalls() {
  return {Fails(kGetCustomProperty, kExtension, 1, {1460, L"get_Extension"}, kNone),
          ReturnsNothing(kGetCustomProperty, kExtension, 1, S_OK, kNone),
          Fails(kGetCustomProperty, kManager, 1, {1468, L"pDocExten->get_CustomPropertyManager"}, kNone),
          ReturnsNothing(kGetCustomProperty, kManager, 1, S_OK, kNone),
          Fails(kGetCustomProperty, kGetNames, 1, {1475, L"pCustomMgr->GetNames"}, kNone),
          ReturnsNothing(kGetCustomProperty, kGetNames, 1, S_OK, kNone),
          IsSkipped(1, S_OK, L"pCustomMgr->Get3: A", {L"B=2", L"C=3"}),
          ReturnsNothing(kGetCustomProperty, kGet3, 1, S_OK, {L"A=", L"B=2", L"C=3"}),
          IsSkipped(2, S_OK, L"pCustomMgr->Get3: B", {L"A=1", L"C=3"}),
          ReturnsNothing(kGetCustomProperty, kGet3, 2, S_OK, {L"A=1", L"B=", L"C=3"}),
          IsSkipped(3, E_FAIL, L"pCustomMgr->Get3: C", {L"A=1", L"B=2"}),
          ReturnsNothing(kGetCustomProperty, kGet3, 3, S_OK, {L"A=1", L"B=2", L"C="})};
}

std::vector<FailingCall> PutAttributesCalls() {
  const LoggedError set = {1214, L"pCustomPropertyManager->Set"};
  std::vector<FailingCall> calls = ListingCalls(kPutAttributes, {1183, 1189, 1193, 1198}, kAll, kDone);
  calls.insert(calls.end(), {Fails(kPutAttributes, kSet, 1, set, kAll),
                             ReturnsNothing(kPutAttributes, kSet, 1, S_OK, {L"A=1", L"B=y", L"C=z"}, kDone),
                             Fails(kPutAttributes, kSet, 2, set, {L"A=x", L"B=2", L"C=3"}),
                             ReturnsNothing(kPutAttributes, kSet, 2, S_OK, {L"A=x", L"B=2", L"C=z"}, kDone),
                             Fails(kPutAttributes, kSet, 3, set, {L"A=x", L"B=y", L"C=3"}),
                             ReturnsNothing(kPutAttributes, kSet, 3, S_OK, {L"A=x", L"B=y", L"C=3"}, kDone)});
  return calls;
}

std::vector<FailingCall> AllFailingCalls() {
  std::vector<FailingCall> all = GetAttributesCalls();
  for (const auto& calls : {GetCustomPropertyCalls(), PutAttributesCalls()}) {
    all.insert(all.end(), calls.begin(), calls.end());
  }
  return all;
}

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

INSTANTIATE_TEST_SUITE_P(, FailingPropertyAccess, testing::ValuesIn(AllFailingCalls()), NameOfCall);

TEST_F(PropertyAccess, HasEachOfItsHostCallsTwiceInTheTable) {
  OpenPartWithThree();
  m_given = ActiveModel();
  for (const Operation operation : {kGetAttributes, kGetCustomProperty, kPutAttributes}) {
    m_host->GetJournal().Clear();
    if (operation == kPutAttributes) ExpectBoxes(1);
    EXPECT_EQ(Run(operation, Json(operation == kPutAttributes ? kValues : L"{}")), S_OK);
    const auto rows = std::ranges::count(AllFailingCalls(), operation, &FailingCall::operation);
    EXPECT_EQ(static_cast<std::size_t>(rows), 2 * m_host->GetJournal().Calls().size())
        << Utf8(FunctionOf(operation));
  }
}

}  // namespace
