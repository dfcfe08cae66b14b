// The log's folder and configuration.
#include "case_name.h"
#include "doctor_fixture.h"
#include "folder_tree.h"

using doctor::Report;
using doctor::Status;

namespace {

class LogCheck : public DoctorFixture {
 protected:
  void ConfigureLog(std::string_view properties) const {
    m_folder.Write(L"home\\log\\Log4cplus.properties", properties);
  }
};

TEST_F(LogCheck, FindsNothingWrongInTheInstalledDefault) {
  const Report report = Check("log");
  ExpectHealthy(report);
  ExpectFinding(report, "log.folder", Status::kOk,
                L"The log folder can be written: " + m_folder.Path(L"home\\log") + L".");
}

TEST_F(LogCheck, LeavesNothingBehind) {
  Check("log");
  EXPECT_TRUE(ListTree(m_folder).empty()) << testing::PrintToString(ListTree(m_folder));
  ConfigureLog(
      "log4cplus.rootLogger=INFO, f\n"
      "log4cplus.appender.f=tavo::SharedFileAppender\n"
      "log4cplus.appender.f.File=deep\\folder\\a.log\n");
  const std::vector<std::wstring> before = ListTree(m_folder);
  ExpectHealthy(Check("log"));
  EXPECT_EQ(ListTree(m_folder), before);
}

TEST_F(LogCheck, FindsThatAFileLiesInPlaceOfTheFolder) {
  m_folder.Write(L"home\\log", "a file");
  ExpectFinding(Check("log"), "log.folder", Status::kFailed, L"home\\log cannot be written: ");
}

TEST_F(LogCheck, FindsThatTheFolderCannotBeMade) {
  m_folder.Write(L"home", "a file");
  ExpectFinding(Check("log"), "log.folder", Status::kFailed, L"home\\log cannot be written: ");
}

TEST_F(LogCheck, FindsAFolderOnADriveThatDoesNotExist) {
  m_home.Set(L"Q:\\tavo");
  ExpectFinding(Check("log"), "log.folder", Status::kFailed, L"Q:\\tavo\\log cannot be written: ");
}

TEST_F(LogCheck, FindsThatThereIsNoPlaceForALog) {
  m_home.Set(std::nullopt);
  const ScopedEnvironment application_data(L"APPDATA", std::nullopt);
  ExpectFinding(Check("log"), "log.folder", Status::kFailed, L"neither TAVO_HOME nor APPDATA is set.");
}

TEST_F(LogCheck, TellsTheBuiltInSetUp) {
  RegisterCopy();
  const Report report = Check("log");
  ExpectHealthy(report);
  ExpectFinding(report, "log.file", Status::kOk,
                L"There is no Log4cplus.properties; the built-in set-up holds.");
}

struct Mistake {
  const char* name;
  const char* line;
  const wchar_t* text;
};

void PrintTo(const Mistake& mistake, std::ostream* stream) { *stream << mistake.name; }

class LogMistake : public LogCheck, public testing::WithParamInterface<Mistake> {};

TEST_P(LogMistake, IsFoundWithoutAnEffect) {
  ConfigureLog(std::string("log4cplus.rootLogger=INFO, f\n"
                           "log4cplus.appender.f=tavo::SharedFileAppender\n"
                           "log4cplus.appender.f.File=a.log\n") +
               GetParam().line + "\n");
  const std::vector<std::wstring> before = ListTree(m_folder);
  ExpectFinding(Check("log"), "log.configuration", Status::kFailed, GetParam().text);
  EXPECT_EQ(ListTree(m_folder), before);
}

const Mistake kMistakes[] = {
    {"Level", "log4cplus.logger.infomsg=INFOO", L"log4cplus.logger.infomsg: \"INFOO\" is not a level."},
    {"UnknownKey", "log4cplus.rootLoger=INFO",
     L"log4cplus.rootLoger: \"INFO\" is ignored: the key is unknown"},
    {"UnknownAppender", "log4cplus.logger.infomsg=INFO, g", L"\"g\" is not the name of an appender"},
    {"AppenderType", "log4cplus.appender.g=log4cplus::FileApender", L"is not an appender type"},
    {"FolderThatIsNotMade",
     "log4cplus.appender.g=log4cplus::FileAppender\nlog4cplus.appender.g.File=C:\\\\no such folder\\\\g.log",
     L"g.log\" cannot be opened: "},
    {"Size", "log4cplus.appender.f.MaxFileSize=10XB", L"\"10XB\" is not a size such as 10MB"},
    {"NoAppender", "log4cplus.rootLogger=INFO",
     L"home\\log/Log4cplus.properties assigns no appender to any logger; using the built-in"},
};
INSTANTIATE_TEST_SUITE_P(, LogMistake, testing::ValuesIn(kMistakes), CaseName<Mistake>);

}  // namespace
