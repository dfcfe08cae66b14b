// Documents with thousands of properties.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "properties_fixture.h"

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

class ManyProperties : public PropertiesTest {
 protected:
  void SetUp() override {
    ConnectAndLogIn();
    m_document = Open(L"part.sldprt", {});
  }

  /// Gives the document so many properties, and the PLM client new values for all of them.
  void Make(int count) {
    m_document->model.properties.clear();
    m_request = R"(QD_PLMCreateMaterial {"extract_info":{)";
    std::string values = R"({"material_property_back_fill":{)";
    m_written.clear();
    for (int index = 0; index < count; ++index) {
      const std::wstring name = L"属性 " + std::to_wstring(index);
      const std::wstring text = L"text \"" + std::to_wstring(index);
      const std::wstring value = L"值 " + std::to_wstring(count - index);
      m_document->model.properties.push_back({.name = name, .text = text});
      const char* const comma = index == 0 ? "" : ",";
      m_request += comma + ("\"" + Utf8(name)) + R"(":"text \")" + std::to_string(index) + "\"";
      values += comma + ("\"" + Utf8(name)) + R"(":")" + Utf8(value) + "\"";
      m_written.push_back(name + L"=" + value);
    }
    m_request += "}}";
    Answer("QD_PLMCreateMaterial", R"({"data":{}})");
    Answer("QD_PLMMaterialBackFill", values + "}}");
  }

  /// Picks PlmCreateMaterial and says yes to everything. @return the seconds it took.
  double Run() {
    m_host->GetJournal().Clear();
    ExpectBoxes(3);
    const auto start = Clock::now();
    EXPECT_EQ(Pick(L"PlmCreateMaterial").result, S_OK);
    return Seconds(Clock::now() - start).count();
  }

  std::shared_ptr<cad_host::Document> m_document;
  std::string m_request;
  Texts m_written;
};

TEST_F(ManyProperties, AreReadAndWrittenRight) {
  Make(10'000);
  Run();
  EXPECT_TRUE(Asked().at(0) == m_request);
  EXPECT_TRUE(PropertiesOf(*m_document) == m_written);
}

TEST_F(ManyProperties, TakeOneCallEachForReadingAndWriting) {
  constexpr std::size_t kCallsAround = 11;
  for (const std::size_t count : {2'500u, 5'000u, 10'000u}) {
    Make(static_cast<int>(count));
    Run();
    EXPECT_EQ(m_host->GetJournal().Calls().size(), 2 * count + kCallsAround);
  }
}

// Time that grows with the square would be sixteen-fold. A busy machine can slow one measurement down, so
// the best of several pairs counts.
TEST_F(ManyProperties, TakeTimeThatGrowsWithTheirNumber) {
  constexpr int kPairs = 6;
  constexpr double kMostGrowth = 10;
  double growth = 2 * kMostGrowth;
  for (int pair = 0; pair < kPairs && growth >= kMostGrowth; ++pair) {
    Make(2'500);
    const double quarter = std::min(Run(), Run());
    Make(10'000);
    const double whole = std::min(Run(), Run());
    growth = std::min(growth, whole / quarter);
  }
  RecordProperty("growth_from_2500_to_10000", std::to_string(growth));
  EXPECT_LT(growth, kMostGrowth);
}

}  // namespace
