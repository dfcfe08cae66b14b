// Taking login data out of texts.
#include "bundle/redaction.h"

#include <gtest/gtest.h>

#include "case_name.h"

using doctor::Redact;

namespace {

struct Secret {
  const char* name;
  const char* text;
  const char* redacted;
};

void PrintTo(const Secret& secret, std::ostream* stream) { *stream << secret.name; }

class Redaction : public testing::TestWithParam<Secret> {};

TEST_P(Redaction, TakesOutTheValueAndNothingElse) { EXPECT_EQ(Redact(GetParam().text), GetParam().redacted); }

const Secret kSecrets[] = {
    {"Member", R"({"password":"s3","state":"ok"})", R"({"password":"[redacted]","state":"ok"})"},
    {"NameInAnyCase", R"({ "PassWord" : "s3" })", R"({ "PassWord" : "[redacted]" })"},
    {"PartOfAName", R"({"plm_user-Name":"wang"})", R"({"plm_user-Name":"[redacted]"})"},
    {"Number", R"({"token":123,"n":4})", R"({"token":"[redacted]","n":4})"},
    {"EscapedQuote", R"({"pwd":"a\"b","n":4})", R"({"pwd":"[redacted]","n":4})"},
    {"EscapedBackslash", R"({"pwd":"a\\","n":4})", R"({"pwd":"[redacted]","n":4})"},
    {"Object", R"({"login":{"a":"}","b":[1]},"n":4})", R"({"login":"[redacted]","n":4})"},
    {"Array", R"({"users":["a]","b"],"n":4})", R"({"users":"[redacted]","n":4})"},
    {"ObjectThatIsCutOff", R"({"login":{"a":"s3)", R"({"login":"[redacted]")"},
    {"TextThatIsCutOff", "{\"token\":\"s3\nnext", "{\"token\":\"[redacted]\nnext"},
    {"ValueInTheNextLine", "{\"token\" :\n  \"s3\"}", "{\"token\" :\n  \"[redacted]\"}"},
    {"JsonInAString", R"({"answer":"{\"token\":\"s3\",\"n\":4}"})",
     R"({"answer":"{\"token\":\"[redacted]\",\"n\":4}"})"},
    {"JsonInAStringInAString", R"("{\"a\":\"{\\\"token\\\":\\\"s3\\\",\\\"n\\\":4}\"}")",
     R"("{\"a\":\"{\\\"token\\\":\\\"[redacted]\\\",\\\"n\\\":4}\"}")"},
    {"Assignment", "password=s3 and more\nnext", "password=[redacted]\nnext"},
    {"Colon", "Access-Token: s3\r\nnext", "Access-Token: [redacted]\r\nnext"},
    {"QuotedAssignment", "user='wang' state=2", "user='[redacted]' state=2"},
    {"TwoWords", "User name: wang", "User name: [redacted]"},
    {"Option", "client.exe --password s3 --fast", "client.exe --password [redacted] --fast"},
    {"OptionAtTheEndOfAMember", R"({"note":"--token abc"})", R"({"note":"--token [redacted]"})"},
    {"OptionInATextOfJson", R"({"t":"{\"note\":\"--token abc\"}"})",
     R"({"t":"{\"note\":\"--token [redacted]\"}"})"},
    {"QuotedOption", "client.exe --password \"s 3\" --fast", "client.exe --password \"[redacted]\" --fast"},
    {"Header", "sent Bearer abc.def to it", "sent Bearer [redacted] to it"},
    {"Url", "https://wang:s3@plm.example/a", "https://[redacted]@plm.example/a"},
    {"UrlParameter", "https://plm.example/a?token=s3&b=1", "https://plm.example/a?token=[redacted]"},
    {"Element", "<password>s3</password>", "<password>[redacted]</password>"},
    {"Chinese", R"({"密码":"s3","数量":1})", R"({"密码":"[redacted]","数量":1})"},
    {"WideColon", "密码：s3\nnext", "密码：[redacted]\nnext"},
    {"WordOfALogin", "logindata ok", "logindata ok"},
    {"FunctionInALogLine", "ERROR CSolidWorksAddIn::PlmUserLogin:59 - PlmLogin failed<hr=0x80004005>",
     "ERROR CSolidWorksAddIn::PlmUserLogin:59 - PlmLogin failed<hr=0x80004005>"},
    {"ItemOfTheMenu", R"(item 1 "Log In": "Hint" is missing)", R"(item 1 "Log In": "Hint" is missing)"},
    {"Path", R"(C:\Users\wang\AppData\Roaming\TAVO)", R"(C:\Users\wang\AppData\Roaming\TAVO)"},
    {"Empty", "", ""},
    {"NameAlone", "password:", "password:"},
};
INSTANTIATE_TEST_SUITE_P(, Redaction, testing::ValuesIn(kSecrets), CaseName<Secret>);

TEST(RedactionOfPieces, StandsATextThatIsCutOffAnywhere) {
  const std::string text =
      "{\"a\":\"\\\"token\\\":\\\"s3\\\"\",\"login\":{\"b\":[\"]\"]}} --pw 'x' <pin>1</pin> ://a@";
  for (std::size_t size = 0; size <= text.size(); ++size) {
    const std::string redacted = Redact(text.substr(0, size));
    EXPECT_EQ(redacted.find("s3"), std::string::npos) << redacted;
  }
}

TEST(RedactionOfPieces, OfALargeFileTakesTimeInProportion) {
  std::string text;
  for (int line = 0; line < 40'000; ++line)
    text += "2026-01-01 INFO infomsg CDrawingHelper::Open:12 - opened a=b: c\n";
  EXPECT_EQ(Redact(text), text);
}

}  // namespace
