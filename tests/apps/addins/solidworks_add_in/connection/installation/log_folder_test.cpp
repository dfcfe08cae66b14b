// The add-in if its log cannot be written or its log configuration is wrong: everything else works.
#include <functional>
#include <optional>

#include "base/unique_handle.h"
#include "case_name.h"
#include "fresh_dll_fixture.h"
#include "result_codes.h"
#include "solidworks_add_in_h.h"

namespace {

/// Something that keeps the log from being written.
struct Obstacle {
  const char* name;
  std::function<void(const TempFolder& home)> create;
};

void PrintTo(const Obstacle& obstacle, std::ostream* stream) { *stream << obstacle.name; }

class UnwritableLog : public FreshDllFixture, public testing::WithParamInterface<Obstacle> {};

TEST_P(UnwritableLog, DoesNotAffectAnythingElse) {
  GetParam().create(m_folder);
  Load();
  cad_host::AddIn& add_in = Connect();
  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_EQ(m_host->Groups()[0]->items.size(), 14u);
  m_boxes.Expect(IDOK);  // there is no PLM client
  // This failure would be logged; without a log, its code is the same.
  EXPECT_EQ(m_host->Pick(add_in, L"PlmLogin").code, hr::kNoAnswer);
  EXPECT_TRUE(m_host->Disconnect(add_in));
}

INSTANTIATE_TEST_SUITE_P(
    , UnwritableLog,
    testing::Values(Obstacle{"FileInPlaceOfTheFolder",
                             [](const TempFolder& home) { home.Write(L"log", "taken"); }},
                    Obstacle{"FolderInPlaceOfTheFile",
                             [](const TempFolder& home) { home.MakeFolder(L"log\\SolidWorks.log"); }},
                    Obstacle{"ConfigurationWithAMissingDrive",
                             [](const TempFolder& home) {
                               home.Write(L"log\\Log4cplus.properties",
                                          "log4cplus.rootLogger=INFO, file\n"
                                          "log4cplus.appender.file=log4cplus::FileAppender\n"
                                          "log4cplus.appender.file.File=Q:/nowhere/SolidWorks.log\n"
                                          "log4cplus.appender.file.layout=log4cplus::SimpleLayout\n");
                             }}),
    CaseName<Obstacle>);

class LogFolder : public FreshDllFixture {};

TEST_F(LogFolder, HasALogEvenIfTheConfigurationCannotBeRead) {
  const std::wstring file = m_folder.Write(L"log\\Log4cplus.properties", "log4cplus.rootLogger=OFF\n");
  const UniqueHandle held_by_another = OwnHandle(
      CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(held_by_another);
  Load();
  EXPECT_TRUE(m_host->Disconnect(Connect()));
  const std::wstring log = m_folder.ReadText(L"log\\SolidWorks.log");
  EXPECT_NE(log.find(L"cannot read " + m_folder.Path(L"log") + L"/Log4cplus.properties"), std::wstring::npos)
      << m_folder.Read(L"log\\SolidWorks.log");
}

TEST_F(LogFolder, IgnoresAFolderWithTheNameOfTheConfiguration) {
  m_folder.MakeFolder(L"log\\Log4cplus.properties");
  Load();
  EXPECT_TRUE(m_host->Disconnect(Connect()));
  EXPECT_NE(LogFileLines().at(0).find(L"\\bin\\config\\Log4cplus.properties"), std::wstring::npos);
}

/// Neither variable says where the log folder is, until the second connection.
TEST_F(LogFolder, IsNotNeededToConnect) {
  m_home.Set(std::nullopt);
  const ScopedEnvironment application_data(L"APPDATA", std::nullopt);
  Load();
  // Of one load: the object stays, so the DLL is not unloaded in between.
  IUnknownPtr held;
  ASSERT_EQ(m_dll->GetClassObject(CLSID_SwAddin, IID_PPV_ARGS(&held)), S_OK);
  cad_host::AddIn& add_in = Connect();
  EXPECT_EQ(m_host->GetJournal().Of(L"ISwAddin::ConnectToSW").at(0).results, L"true");
  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_EQ(m_host->Groups()[0]->items.size(), 14u);
  EXPECT_TRUE(m_host->Disconnect(add_in));
  EXPECT_FALSE(m_folder.Exists(L"log"));

  m_home.Set(m_folder.Path());
  EXPECT_TRUE(m_host->Disconnect(Connect()));
  EXPECT_EQ(LogFileLines().size(), 2u) << "that it is set up, and connected";
}

/// The host calls a command of an object that it has not connected.
TEST_F(LogFolder, HasALogBeforeTheFirstConnection) {
  Load();
  IDispatchPtr add_in;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in)), S_OK);
  DISPPARAMS none{};
  EXPECT_EQ(add_in->Invoke(1, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_NE(m_folder.ReadText(L"log\\SolidWorks.log").find(L"ISolidWorksAddIn::PlmLogin raised 0x80004003"),
            std::wstring::npos);
}

}  // namespace
