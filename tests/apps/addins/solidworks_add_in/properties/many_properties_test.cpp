// Documents with thousands of properties.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>

#include "list_difference.h"
#include "properties_fixture.h"

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int kMany = 10'000;

// The work for eight times as many properties may take at most so many times as long; quadratic time would
// take up to 64 times as long.
constexpr int kTimesAsMany = 8;
constexpr double kMostGrowth = 11;

/// The time for `count`, divided by the time for an eighth of it. A busy machine can slow a measurement down,
/// so the best of several pairs counts.
double Growth(int count, const std::function<double(int count)>& seconds) {
  constexpr int kPairs = 6;
  const int few = count / kTimesAsMany;
  double growth = 2 * kMostGrowth;
  for (int pair = 0; pair < kPairs && growth >= kMostGrowth; ++pair) {
    const double of_few = std::min(seconds(few), seconds(few));
    const double of_all = std::min(seconds(count), seconds(count));
    growth = std::min(growth, of_all / of_few);
  }
  testing::Test::RecordProperty("growth", std::to_string(growth));
  return growth;
}

/// Properties of every type. Texts such as "1.50" and "yes" must be kept although the value is 1.5 or true.
cad_host::CustomProperties AllTypes(int count) {
  constexpr swCustomInfoType_e kTypes[] = {swCustomInfoText, swCustomInfoNumber, swCustomInfoYesOrNo,
                                           swCustomInfoDate};
  cad_host::CustomProperties properties;
  for (int index = 0; index < count; ++index) {
    const std::wstring number = std::to_wstring(index);
    const std::wstring texts[] = {L"值 \"" + number, number + L".50", L"yes", L"2024-5-1"};
    const auto type = static_cast<std::size_t>(index) % std::size(kTypes);
    properties.push_back({.name = L"属性 " + number, .text = texts[type], .type = kTypes[type]});
  }
  return properties;
}

class ManyProperties : public PropertiesFixture {
 protected:
  void SetUp() override { ConnectAndLogIn(); }

  /// Opens a new file with so many properties, and sets an answer of the PLM client with new values for all
  /// of them.
  void Make(int count) {
    cad_host::CustomProperties properties;
    m_request = R"(QD_PLMCreateMaterial {"extract_info":{)";
    std::string values = R"({"material_property_back_fill":{)";
    m_written.clear();
    for (int index = 0; index < count; ++index) {
      const std::wstring name = L"属性 " + std::to_wstring(index);
      const std::wstring text = L"text \"" + std::to_wstring(index);
      const std::wstring value = L"值 " + std::to_wstring(count - index);
      properties.push_back({.name = name, .text = text});
      const char* const comma = index == 0 ? "" : ",";
      m_request += comma + ("\"" + Utf8(name)) + R"(":"text \")" + std::to_string(index) + "\"";
      values += comma + ("\"" + Utf8(name)) + R"(":")" + Utf8(value) + "\"";
      m_written.push_back(name + L"=" + value);
    }
    m_request += "}}";
    if (m_document) m_host->Close(m_document);
    m_document = Open(L"part.sldprt", properties);
    Answer("QD_PLMCreateMaterial", R"({"data":{}})");
    Answer("QD_PLMMaterialBackFill", values + "}}");
  }

  /// Picks PlmCreateMaterial and answers all boxes with OK. @return the seconds that it took.
  double Run() {
    m_host->GetJournal().Clear();
    ExpectBoxes(3);
    const auto start = Clock::now();
    EXPECT_EQ(Pick(L"PlmCreateMaterial").result, S_OK);
    return Seconds(Clock::now() - start).count();
  }

  /// Saves a document with these properties, closes it and opens it again. @return the seconds that it took.
  double SaveAndReopen(const cad_host::CustomProperties& properties) {
    if (m_document) m_host->Close(m_document);
    m_document = Open(L"part.sldprt", {});
    m_document->model.properties = properties;
    const std::wstring path = m_document->path;
    const auto start = Clock::now();
    m_host->Save(*m_document);
    m_host->Close(m_document);
    m_document = m_host->Open(path);
    return Seconds(Clock::now() - start).count();
  }

  std::shared_ptr<cad_host::Document> m_document;
  std::string m_request;
  Texts m_written;
};

TEST_F(ManyProperties, AreReadAndWrittenCorrectly) {
  Make(kMany);
  Run();
  EXPECT_TRUE(Asked().at(0) == m_request);
  EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), m_written);
}

TEST_F(ManyProperties, TakeOneCallEachForReadingAndWriting) {
  constexpr std::size_t kOtherCalls = 11;
  for (const int count : {kMany / 4, kMany / 2, kMany}) {
    Make(count);
    Run();
    EXPECT_EQ(m_host->GetJournal().Calls().size(), 2 * static_cast<std::size_t>(count) + kOtherCalls);
  }
}

TEST_F(ManyProperties, TakeLinearTimeToBeReadAndWritten) {
  const auto run = [this](int count) {
    Make(count);
    return Run();
  };
  EXPECT_LT(Growth(kMany, run), kMostGrowth);
}

TEST_F(ManyProperties, AreTheSameAfterTheyAreSavedAndOpenedAgain) {
  const cad_host::CustomProperties properties = AllTypes(kMany);
  SaveAndReopen(properties);
  const cad_host::CustomProperties& read = m_document->model.properties;
  const auto same = [](const cad_host::CustomProperty& a, const cad_host::CustomProperty& b) {
    return a.name == b.name && a.text == b.text && a.type == b.type;
  };
  EXPECT_TRUE(std::equal(properties.begin(), properties.end(), read.begin(), read.end(), same));
}

TEST_F(ManyProperties, TakeLinearTimeToBeSavedAndOpenedAgain) {
  const auto save_and_reopen = [this](int count) { return SaveAndReopen(AllTypes(count)); };
  EXPECT_LT(Growth(4 * kMany, save_and_reopen), kMostGrowth);
}

}  // namespace
