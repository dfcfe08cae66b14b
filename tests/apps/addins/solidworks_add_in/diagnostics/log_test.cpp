// The log that the add-in sets up.
#include <gtest/gtest.h>

#include <algorithm>

#include "add_in_fixture.h"
#include "log_line.h"
#include "result_codes.h"
#include "views.h"

namespace {

class AddInLogging : public AddInFixture {
 protected:
  void FailToLogIn() {
    Answer("QD_PLMLogin", "");
    EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  }
};

TEST_F(AddInLogging, NamesTheAddInsSourceFileByItsFullPath) {
  Connect();
  FailToLogIn();
  const auto files = m_home.LoggedSourceFiles();
  const std::wstring expected = L"/tavo/apps/addins/solidworks_add_in/solidworks_add_in.cpp";
  EXPECT_EQ(std::ranges::count(files, expected), 1) << testing::PrintToString(files);
}

TEST_F(AddInLogging, IsSetUpOncePerProcess) {
  Connect();
  const std::wstring properties = L"log\\Log4cplus.properties";
  const std::string before = m_home.Folder().Read(properties);
  m_home.Folder().Write(properties, "log4cplus.rootLogger=OFF\n");
  Disconnect();
  Connect();
  m_home.Folder().Write(properties, before);
  FailToLogIn();
  EXPECT_EQ(AddInLog().size(), 1u) << "the second connection must not read the changed properties";
}

TEST_F(AddInLogging, WritesTextOfAnyScript) {
  ConnectAndLogIn();
  const std::wstring missing = m_folder.Path(L"零件 é 😀.sldprt");
  Answer("QD_PLMTaskManage", FilesAnswer({{"OpenFile", {missing}}}));
  m_boxes->Expect(IDOK);
  Pick(L"PlmTaskManage");
  EXPECT_EQ(AddInLog(), Texts{ErrorLine(798, L"OpenFilePath", L"OpenDoc6 failed at " + missing, S_OK)});
}

}  // namespace
