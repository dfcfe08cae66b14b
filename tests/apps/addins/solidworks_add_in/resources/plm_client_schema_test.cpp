// The schema of PlmClient.json takes what the add-in takes without a fault. The exceptions are the cases at
// the end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CJsonObject.h"
#include "CZALException.h"
#include "case_name.h"
#include "configuration/client_configuration.h"
#include "schema_case.h"

namespace {

std::vector<SchemaCase> Cases() {
  using enum TakenBy;
  return {
      {"Empty", "{}", kBoth},
      {"Complete", R"({"pipe":"a","client":"C:\\PLM\\client.exe","startTimeoutMs":15000})", kBoth},
      {"ByteOrderMark", "\xEF\xBB\xBF{}", kBoth},
      {"NamesTheSchema", R"({"$schema":"schemas/PlmClient.schema.json"})", kBoth},
      {"SchemaNotAText", R"({"$schema":1})", kNobody},
      {"PipeInAnyLanguage", R"({"pipe":"测试 Ü"})", kBoth},
      {"PipeEmpty", R"({"pipe":""})", kBoth},
      {"PipeANumber", R"({"pipe":5})", kNobody},
      {"PipeNull", R"({"pipe":null})", kNobody},
      {"ClientEmpty", R"({"client":""})", kBoth},
      {"ClientWithVariables", R"({"client":"%ProgramFiles%\\PLM\\client.exe"})", kBoth},
      {"ClientNotAFullPath", R"({"client":"client.exe"})", kBoth},  // told when it is to be started
      {"ClientAnObject", R"({"client":{}})", kNobody},
      {"TimeZero", R"({"startTimeoutMs":0})", kBoth},
      {"TimeLongest", R"({"startTimeoutMs":4294967295})", kBoth},
      {"TimeBeyond32Bits", R"({"startTimeoutMs":4294967296})", kNobody},
      {"TimeNegative", R"({"startTimeoutMs":-1})", kNobody},
      {"TimeAFraction", R"({"startTimeoutMs":1.5})", kNobody},
      {"TimeAText", R"({"startTimeoutMs":"1"})", kNobody},
      {"UnknownMember", R"({"pipes":"a"})", kNobody},
      {"MemberInOtherCase", R"({"Pipe":"a"})", kNobody},
      {"NotAnObject", "[]", kNobody},
      {"NotJson", "pipe = a", kNobody},
      {"NoText", "", kNobody},

      // A schema judges values, not their spelling: of a key that is given twice it sees one value, in most
      // editors the last, and 15000.0 is a whole number to it.
      {"FirstOfTwoWrong", R"({"pipe":5,"pipe":"a"})", kOnlySchema},
      {"SecondOfTwoWrong", R"({"pipe":"a","pipe":5})", kOnlyAddIn},
      {"TimeWithAPoint", R"({"startTimeoutMs":15000.0})", kOnlySchema},
  };
}

std::vector<std::wstring> FaultsIn(const std::filesystem::path& file) {
  try {
    CJsonObject object;
    object.CreateFromFile(file.wstring());
    return ReadClientMembers(object).faults;
  } catch (const CZALException& exception) {
    return {exception.GetErrorMessage()};
  }
}

class PlmClientSchema : public testing::TestWithParam<SchemaCase> {};

TEST_P(PlmClientSchema, TakesWhatTheAddInTakes) {
  static const SchemaVerdicts verdicts(Cases(), "PlmClient.schema.json", FaultsIn);
  verdicts.Expect(GetParam());
}

INSTANTIATE_TEST_SUITE_P(, PlmClientSchema, testing::ValuesIn(Cases()), CaseName<SchemaCase>);

}  // namespace
