// What the log says about an add-in that works.
#include "CStringHelper.h"
#include "fresh_dll_fixture.h"
#include "solidworks_add_in_h.h"

namespace {

class Information : public FreshDllFixture {
 protected:
  /// Connects and disconnects; the log has two lines, which end with these texts.
  void ExpectLines(const std::wstring& at_set_up, const std::wstring& at_connection) {
    EXPECT_TRUE(m_host->Disconnect(Connect()));
    const auto lines = LogFileLines();
    ASSERT_EQ(lines.size(), 2u);
    for (const std::wstring& line : lines) {
      EXPECT_NE(line.find(L" INFO  platform "), std::wstring::npos) << CStringHelper::UnicodeToUTF8(line);
    }
    EXPECT_TRUE(lines[0].ends_with(L" - " + at_set_up)) << CStringHelper::UnicodeToUTF8(lines[0]);
    EXPECT_TRUE(lines[1].ends_with(L" - " + at_connection)) << CStringHelper::UnicodeToUTF8(lines[1]);
  }

  /// The start of the first line for the DLL at `path`.
  static std::wstring SetUpOf(const std::wstring& path) {
    return std::wstring(L"version ") + PRODUCT_VERSION + L" from " + path + L", log configuration ";
  }

  static std::wstring ConnectedWith(const std::wstring& view) {
    return L"connected to the host of revision \"31.0.0\", menu from " + view;
  }
};

TEST_F(Information, NamesVersionDllLogConfigurationRevisionAndMenu) {
  Load();
  const std::wstring dll = AddInDll::BuiltPath();
  const std::wstring configuration = dll.substr(0, dll.find_last_of(L'\\')) + L"\\config\\";
  ExpectLines(SetUpOf(dll) + configuration + L"Log4cplus.properties",
              ConnectedWith(configuration + L"View.json"));
}

TEST_F(Information, SaysThatTheLogConfigurationIsBuiltInIfThereIsNoFile) {
  const std::wstring view = m_folder.Write(L"add-in\\config\\View.json", R"({"name":"PLM","Menu":[]})");
  const std::wstring dll = LoadCopy();
  ExpectLines(SetUpOf(dll) + L"built in", ConnectedWith(view));
}

TEST_F(Information, IsLoggedOnceForTheSetUpAndAtEachConnection) {
  Load();
  // Of one load: the object stays, so the DLL is not unloaded in between.
  IUnknownPtr held;
  ASSERT_EQ(m_dll->GetClassObject(CLSID_SwAddin, IID_PPV_ARGS(&held)), S_OK);
  for (int round = 0; round < 3; ++round) EXPECT_TRUE(m_host->Disconnect(Connect()));
  held = nullptr;
  EXPECT_EQ(LogFileLines().size(), 4u);
}

}  // namespace
