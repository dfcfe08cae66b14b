// The log as the add-in sets it up.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "views.h"

namespace {

class AddInLogging : public AddInTest {
 protected:
  void FailToLogIn() {
    Answer("QD_PLMLogin", "");
    EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
  }
};

TEST_F(AddInLogging, NamesTheAddInsSourceFileByItsFullPath) {
  Connect();
  FailToLogIn();
  const auto files = m_home.LoggedSourceFiles();
  const auto named = std::find_if(files.begin(), files.end(), [](const std::wstring& file) {
    return file.ends_with(L"apps/addins/solidworks_add_in/solidworks_add_in.cpp") && file.starts_with(L"/");
  });
  EXPECT_NE(named, files.end());
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
  EXPECT_EQ(AddInLog().size(), 1u) << "the second connection read the changed properties";
}

TEST_F(AddInLogging, WritesTextOfAnyScript) {
  ConnectAndLogIn();
  const std::wstring missing = m_folder.Path(L"零件 é 😀.sldprt");
  std::string escaped;
  for (const char character : Utf8(missing))
    escaped += character == '\\' ? "\\\\" : std::string(1, character);
  Answer("QD_PLMTaskManage", R"({"OpenFile":[")" + escaped + R"("]})");
  m_boxes->Expect(IDOK);
  Pick(L"PlmTaskManage");
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{
                            L"errormsg|ERROR|798|CSolidWorksAddIn::OpenFilePath|OpenDoc6 failed at " +
                            missing + L"<hr=0x0>"});
}

}  // namespace
