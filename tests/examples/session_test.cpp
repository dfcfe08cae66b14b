// A session of the simulated CAD host with each example client: the one that the guide has a new author run.
#include <gtest/gtest.h>

#include <string>

#include "CStringHelper.h"
#include "case_name.h"
#include "environment.h"
#include "example_client.h"
#include "module/add_in_dll.h"
#include "temp_folder.h"

namespace {

/// The folder that the session names, with nothing of an earlier session.
class ExampleFolder {
 public:
  ExampleFolder() {
    CreateDirectoryW(kPath, nullptr);
    DeleteFileW(Model().c_str());
  }
  ExampleFolder(const ExampleFolder&) = delete;
  ExampleFolder& operator=(const ExampleFolder&) = delete;
  ~ExampleFolder() {
    DeleteFileW(Model().c_str());
    RemoveDirectoryW(kPath);
  }

  static std::wstring Model() { return std::wstring(kPath) + L"\\Welle Ü 轴.sldprt"; }

 private:
  static constexpr const wchar_t* kPath = L"C:\\tavo-example";
};

class ExampleSession : public testing::TestWithParam<Example> {
 protected:
  ExampleSession() { m_dll.RegisterServer(); }
  ~ExampleSession() override { m_dll.UnregisterServer(); }

  /// Runs the CAD host with a script of the examples. @return what it printed.
  std::string RunHost(const std::wstring& script) const {
    const TempFolder output;
    const ClientProgram host(L"cad_host.exe", output,
                             L"--state \"" + m_home.Path() + L"\" --full \"" + ExampleFile(script) + L"\"");
    EXPECT_EQ(host.ExitCode(), 0u) << host.Output() << host.Errors();
    return host.Output();
  }

  AddInDll m_dll;
  TempFolder m_home;
  ScopedEnvironment m_root{L"TAVO_HOME", m_home.Path()};
};

// What the client reads and writes, byte for byte: the texts of commands are not formatted anew on their way.
constexpr const char* kConversation =
    R"(asked QD_PLMLogin 
answered {"__InvokeResult__":true,"user":"金 Ü 😀"}
asked QD_PLMDataSelector {"__InvokeResult__":true,"user":"金 Ü 😀"}
answered {"OpenFile":["C:\\tavo-example\\Welle Ü 轴.sldprt"]}
asked QD_PLMGetcode {"__InvokeResult__":true,"user":"金 Ü 😀"}
answered 
asked QD_PLMCreateMaterial {"extract_info":{"Number":"-","Description":"Welle Ü 轴"}}
answered {"data":{"description":"Welle Ü 轴","number":"M-4711"}}
asked QD_PLMMaterialBackFill {"backfill_info_from_create_material":{"description":"Welle Ü 轴","number":"M-4711"}}
answered {"material_property_back_fill":{"Number":"M-4711"}}
asked QD_PLMLogout 
answered {"__InvokeResult__":true}
)";

TEST_P(ExampleSession, LogsInOpensAFileCreatesAMaterialAndLogsOut) {
  const ExampleFolder folder;
  RunHost(L"models.txt");
  const ExampleClient client(GetParam(), L"--user \"金 Ü 😀\" --file \"" + ExampleFolder::Model() + L"\"");
  m_home.WriteText(LR"(config\New TAVO SolidWorks AddOn\PlmClient.json)",
                   L"{\"pipe\":\"" + client.Pipe() + L"\"}");
  client.AwaitServing();

  const std::string transcript = RunHost(L"session.txt");

  EXPECT_EQ(client.Program().Output(),
            "serving \\\\.\\pipe\\" + CStringHelper::UnicodeToUTF8(client.Pipe()) + "\n" + kConversation);
  EXPECT_EQ(client.Program().Errors(), "");
  EXPECT_NE(transcript.find(R"(ISldWorks::OpenDoc6("C:\tavo-example\Welle Ü 轴.sldprt", 1, 1, "") = S_OK)"),
            std::string::npos);
  EXPECT_NE(transcript.find(R"(ICustomPropertyManager::Set("Number", "M-4711") = S_OK)"), std::string::npos);
  const std::string log = m_home.Read(L"log\\SolidWorks.log");
  EXPECT_EQ(log.find("ERROR platform"), std::string::npos) << log;
}

INSTANTIATE_TEST_SUITE_P(, ExampleSession, testing::ValuesIn(AllExamples()), CaseName<Example>);

}  // namespace
