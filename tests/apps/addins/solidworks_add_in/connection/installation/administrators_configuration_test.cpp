// The configuration files that an administrator puts into a folder for all users.
#include "CStringHelper.h"
#include "fresh_dll_fixture.h"
#include "views.h"

namespace {

class AdministratorsConfiguration : public FreshDllFixture {
 protected:
  /// Writes a file for all users. @return its path.
  std::wstring WriteForAll(const std::wstring& name, std::string_view bytes) const {
    return m_programData.Write(L"TAVO\\config\\New TAVO SolidWorks AddOn\\" + name, bytes);
  }

  /// A log configuration with this log file.
  static std::string LogTo(const std::string& file) {
    return "log4cplus.rootLogger=INFO, file\n"
           "log4cplus.appender.file=log4cplus::FileAppender\n"
           "log4cplus.appender.file.File=${LogFolder}/" +
           file +
           "\n"
           "log4cplus.appender.file.layout=log4cplus::PatternLayout\n"
           "log4cplus.appender.file.layout.ConversionPattern=%c|%p|%m%n\n";
  }

  /// Connects: the menu is that of the file `view`, with this title, and the only log file is `log_file`,
  /// which names `view` and `log_configuration`.
  void ExpectConnectsWith(const std::wstring& view, const std::wstring& title,
                          const std::wstring& log_configuration, const std::wstring& log_file) {
    Load();
    cad_host::AddIn& add_in = Connect();

    ASSERT_EQ(m_host->Groups().size(), 1u);
    EXPECT_EQ(m_host->Groups()[0]->title, title);
    for (const wchar_t* other : {L"for_all.log", L"mine.log", L"SolidWorks.log"}) {
      EXPECT_EQ(m_folder.Exists(std::wstring(L"log\\") + other), other == log_file);
    }
    const auto lines = LogFileLines(log_file);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[0].ends_with(L", log configuration " + log_configuration))
        << CStringHelper::UnicodeToUTF8(lines[0]);
    EXPECT_TRUE(lines[1].ends_with(L", menu from " + view)) << CStringHelper::UnicodeToUTF8(lines[1]);
    EXPECT_TRUE(m_host->Disconnect(add_in));
  }

  TempFolder m_programData;
  ScopedEnvironment m_programDataVariable{L"PROGRAMDATA", m_programData.Path()};
};

TEST_F(AdministratorsConfiguration, IsUsedInsteadOfTheInstalledOne) {
  const std::wstring view = WriteForAll(L"View.json", ViewWithItems(1, "For all"));
  const std::wstring log = WriteForAll(L"Log4cplus.properties", LogTo("for_all.log"));

  ExpectConnectsWith(view, L"For all", log, L"for_all.log");
}

TEST_F(AdministratorsConfiguration, GivesWayToTheUsersOwn) {
  WriteForAll(L"View.json", ViewWithItems(1, "For all"));
  WriteForAll(L"Log4cplus.properties", LogTo("for_all.log"));
  const std::wstring view = ConfigurationPath(L"View.json");
  WriteFileBytes(view, ViewWithItems(1, "Mine"));
  m_folder.Write(L"log\\Log4cplus.properties", LogTo("mine.log"));

  ExpectConnectsWith(view, L"Mine", m_folder.Path(L"log") + L"/Log4cplus.properties", L"mine.log");
}

}  // namespace
