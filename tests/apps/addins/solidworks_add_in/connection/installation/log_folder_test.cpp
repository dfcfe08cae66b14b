// The add-in where its log cannot be written or is not set up as it should be: everything else works.
#include <functional>

#include "fresh_dll_fixture.h"
#include "solidworks_add_in_h.h"

namespace {

/// What is wrong with the log, laid out in a new platform folder.
struct Obstacle {
  const char* name;
  std::function<void(const TempFolder&)> lay;
};

void PrintTo(const Obstacle& obstacle, std::ostream* stream) { *stream << obstacle.name; }

class UnwritableLog : public FreshDllTest, public testing::WithParamInterface<Obstacle> {};

TEST_P(UnwritableLog, KeepsNothingElseFromWorking) {
  GetParam().lay(m_folder);
  Load();
  cad_host::AddIn& add_in = Connect();
  ASSERT_EQ(m_host->Groups().size(), 1u);
  EXPECT_EQ(m_host->Groups()[0]->items.size(), 14u);
  // A failure that would be logged fails as it does with a log.
  EXPECT_EQ(m_host->Pick(add_in, L"PlmLogin").code, static_cast<HRESULT>(0xA3013005));
  EXPECT_TRUE(m_host->Disconnect(add_in));
}

INSTANTIATE_TEST_SUITE_P(
    , UnwritableLog,
    testing::Values(Obstacle{"a file in the folder's place",
                             [](const TempFolder& home) { home.Write(L"log", "taken"); }},
                    Obstacle{"a folder in the file's place",
                             [](const TempFolder& home) { home.MakeFolder(L"log\\SolidWorks.log"); }},
                    Obstacle{"a set-up that names a drive that is not there", [](const TempFolder& home) {
                               home.Write(L"log\\Log4cplus.properties",
                                          "log4cplus.rootLogger=INFO, file\n"
                                          "log4cplus.appender.file=log4cplus::FileAppender\n"
                                          "log4cplus.appender.file.File=Q:/nowhere/SolidWorks.log\n"
                                          "log4cplus.appender.file.layout=log4cplus::SimpleLayout\n");
                             }}));

using LogFolder = FreshDllTest;

TEST_F(LogFolder, HasTheLogAndItsSetUp) {
  m_folder.MakeFolder(L"log\\Log4cplus.properties");  // a folder cannot be read
  Load();
  EXPECT_TRUE(m_host->Disconnect(Connect()));
  const std::wstring log = m_folder.ReadText(L"log\\SolidWorks.log");
  EXPECT_NE(log.find(L"cannot read " + m_folder.Path(L"log") + L"/Log4cplus.properties"), std::wstring::npos)
      << m_folder.Read(L"log\\SolidWorks.log");
}

/// The host calls a command of an object that it has not connected.
TEST_F(LogFolder, HasALogAlsoBeforeAConnection) {
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
