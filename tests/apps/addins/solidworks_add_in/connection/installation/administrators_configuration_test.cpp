// The configuration files that an administrator puts into a folder for all users.
#include "fresh_dll_fixture.h"
#include "views.h"

namespace {

class AdministratorsConfiguration : public FreshDllFixture {
 protected:
  /// Writes a file for all users. @return its path.
  std::wstring WriteForAll(const std::wstring& name, std::string_view bytes) const {
    return m_programData.Write(L"TAVO\\config\\New TAVO SolidWorks AddOn\\" + name, bytes);
  }

  /// A log configuration whose file has this name.
  static std::string LogTo(const std::string& name) {
    return "log4cplus.rootLogger=INFO, file\n"
           "log4cplus.appender.file=log4cplus::FileAppender\n"
           "log4cplus.appender.file.File=${LogFolder}/" +
           name +
           "\n"
           "log4cplus.appender.file.layout=log4cplus::PatternLayout\n"
           "log4cplus.appender.file.layout.ConversionPattern=%c|%p|%m%n\n";
  }

  TempFolder m_programData;
  ScopedEnvironment m_programDataVariable{L"PROGRAMDATA", m_programData.Path()};
};

TEST_F(AdministratorsConfiguration, IsUsedInsteadOfTheInstalledOne) {
  const std::wstring view = WriteForAll(L"View.json", ViewWithItems(1, "For all"));
  const std::wstring log = WriteForAll(L"Log4cplus.properties", LogTo("for_all.log"));
  Load();

  cad_host::AddIn& add_in = Connect();

  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_EQ(m_host->Groups()[0]->title, L"For all");
  EXPECT_FALSE(m_folder.Exists(L"log\\SolidWorks.log"));
  const auto lines = LogFileLines(L"for_all.log");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].ends_with(L", log configuration " + log)) << m_folder.Read(L"log\\for_all.log");
  EXPECT_TRUE(lines[1].ends_with(L", menu from " + view)) << m_folder.Read(L"log\\for_all.log");
  EXPECT_TRUE(m_host->Disconnect(add_in));
}

TEST_F(AdministratorsConfiguration, GivesWayToTheUsersOwn) {
  WriteForAll(L"View.json", ViewWithItems(1, "For all"));
  WriteForAll(L"Log4cplus.properties", LogTo("for_all.log"));
  const std::wstring view = ConfigurationPath(L"View.json");
  WriteFileBytes(view, ViewWithItems(1, "Mine"));
  const std::wstring log = m_folder.Path(L"log") + L"/Log4cplus.properties";
  m_folder.Write(L"log\\Log4cplus.properties", LogTo("mine.log"));
  Load();

  cad_host::AddIn& add_in = Connect();

  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_EQ(m_host->Groups()[0]->title, L"Mine");
  EXPECT_FALSE(m_folder.Exists(L"log\\for_all.log"));
  const auto lines = LogFileLines(L"mine.log");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].ends_with(L", log configuration " + log)) << m_folder.Read(L"log\\mine.log");
  EXPECT_TRUE(lines[1].ends_with(L", menu from " + view)) << m_folder.Read(L"log\\mine.log");
  EXPECT_TRUE(m_host->Disconnect(add_in));
}

}  // namespace
