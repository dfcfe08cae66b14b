// The exact bytes of the request of PlmCreateMaterial, for names and values of every kind.
#include <gtest/gtest.h>

#include "case_name.h"
#include "properties_fixture.h"

namespace {

/// A property and its member in the request, in UTF-8.
struct Member {
  const char* name;
  std::wstring property;
  std::wstring value;
  const char* json;
};

class RequestText : public PropertiesFixture, public testing::WithParamInterface<Member> {
 protected:
  void Send(const cad_host::CustomProperties& properties) {
    ConnectAndLogIn();
    // Set in the open document, because a file cannot hold all of them.
    Open(L"part.sldprt", {})->model.properties = properties;
    for (const int button : {IDOK, IDCANCEL}) m_boxes->Expect(button);
    EXPECT_EQ(Pick(L"PlmCreateMaterial").result, S_OK);
  }
};

TEST_P(RequestText, HasThePropertyAsAJsonMember) {
  Send({{.name = GetParam().property, .text = GetParam().value}});
  EXPECT_EQ(Asked(),
            Requests{std::string(R"(QD_PLMCreateMaterial {"extract_info":{)") + GetParam().json + "}}"});
}

const Member kMembers[] = {
    {"Empty", L"n", L"", R"("n":"")"},
    {"EmptyName", L"", L"v", R"("":"v")"},
    {"Blanks", L" n ", L"  v ", R"(" n ":"  v ")"},
    {"Quotes", LR"("n")", LR"(2" pipe "x)", R"("\"n\"":"2\" pipe \"x")"},
    {"Backslashes", LR"(a\b\\)", LR"(C:\parts\n)", R"("a\\b\\\\":"C:\\parts\\n")"},
    {"Slashes", L"a/b", L"</script>", R"("a/b":"</script>")"},
    {"LineEnds", L"a\r\nb", L"1\n2\r3", R"("a\r\nb":"1\n2\r3")"},
    {"NamedControls", L"\b\f\t", L"\t\f\b", R"("\b\f\t":"\t\f\b")"},
    {"OtherControls", L"\x01", L"\x1b\x1f", R"("\u0001":"\u001B\u001F")"},
    {"Delete", L"\x7f", L"\x7f", "\"\x7f\":\"\x7f\""},
    {"NullInside", L"n", std::wstring(L"a\0b", 3), R"("n":"a\u0000b")"},
    {"Separators", L"\x2028", L"\x2029\xfeff", "\"\xe2\x80\xa8\":\"\xe2\x80\xa9\xef\xbb\xbf\""},
    {"Chinese", L"材料", L"钢 Q235，国标", R"("材料":"钢 Q235，国标")"},
    {"Emoji", L"😀", L"👩‍🔧", R"("😀":"👩‍🔧")"},
    {"LastCharacter", L"\U0010FFFF", L"\xFFFF", "\"\xf4\x8f\xbf\xbf\":\"\xef\xbf\xbf\""},
    {"LoneHighSurrogate", L"a\xd83d", L"\xd83d", "\"a\xef\xbf\xbd\":\"\xef\xbf\xbd\""},
    {"LoneLowSurrogate",
     L"\xde00"
     L"a",
     L"x\xde00"
     L"y",
     "\"\xef\xbf\xbd"
     "a\":\"x\xef\xbf\xbdy\""},
    {"Combining", L"e\x301", L"\xe9", "\"e\xcc\x81\":\"\xc3\xa9\""},
    {"Markup", L"%s%n", L"{\"a\":1}", R"("%s%n":"{\"a\":1}")"},
    {"Numbers", L"1", L"00.10", R"("1":"00.10")"},
};

INSTANTIATE_TEST_SUITE_P(, RequestText, testing::ValuesIn(kMembers), CaseName<Member>);

TEST_F(RequestText, HasPropertiesInTheDocumentsOrder) {
  Send({{.name = L"b", .text = L"1"}, {.name = L"a", .text = L"2"}, {.name = L"c", .text = L"3"}});
  EXPECT_EQ(Asked(), Requests{R"(QD_PLMCreateMaterial {"extract_info":{"b":"1","a":"2","c":"3"}})"});
}

TEST_F(RequestText, HasAValueOfAMegabyte) {
  const std::wstring value(1 << 20, L'长');
  Send({{.name = L"n", .text = value}});
  EXPECT_TRUE(Asked() == Requests{R"(QD_PLMCreateMaterial {"extract_info":{"n":")" + Utf8(value) + R"("}})"});
}

}  // namespace
