// The command lines of the example clients.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "CStringHelper.h"
#include "base/unique_handle.h"
#include "case_name.h"
#include "example_client.h"
#include "host.h"
#include "plm_client/client.h"

namespace {

class ExampleCommandLine : public testing::TestWithParam<Example> {
 protected:
  /// The example refuses these arguments, and says `named`.
  static void ExpectRefusal(const std::wstring& arguments, const std::string& named) {
    const auto client = ExampleClient::StartWith(GetParam(), arguments);
    EXPECT_EQ(client->Program().ExitCode(), 2u) << CStringHelper::UnicodeToUTF8(arguments);
    const std::string error = client->Program().Errors();
    EXPECT_TRUE(error.starts_with("plm_client: ")) << error;
    EXPECT_NE(error.find(named), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), error.size() - 1) << error;
    EXPECT_EQ(client->Program().Output(), "");
  }
};

TEST_P(ExampleCommandLine, TellsItsOptions) {
  const auto client = ExampleClient::StartWith(GetParam(), L"--help");
  EXPECT_EQ(client->Program().ExitCode(), 0u);
  const std::string help = client->Program().Output();
  EXPECT_TRUE(help.starts_with("usage: ")) << help;
  for (const char* option : {"--file PATH", "--user NAME", "--pipe NAME"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option << "\n" << help;
  }
}

TEST_P(ExampleCommandLine, NamesTheWordThatIsWrong) {
  ExpectRefusal(L"--speed 5", "-speed");
  ExpectRefusal(L"--pipe", "-pipe");
  ExpectRefusal(L"--file C:\\missing.sldprt", "there is no C:\\missing.sldprt");
}

TEST_P(ExampleCommandLine, NamesThePipeThatCannotBeServed) {
  const std::wstring path = L"\\\\.\\pipe\\" + NewPipeName();
  const UniqueHandle only_instance = OwnHandle(
      CreateNamedPipeW(path.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, 4'096, 4'096, 0, nullptr));
  ASSERT_TRUE(only_instance);
  ExpectRefusal(L"--pipe " + path.substr(path.rfind(L'\\') + 1),
                CStringHelper::UnicodeToUTF8(path) + " cannot be served: ");
}

INSTANTIATE_TEST_SUITE_P(, ExampleCommandLine, testing::ValuesIn(AllExamples()), CaseName<Example>);

TEST(GoExampleCommandLine, HasThePipeOfTheUserByDefault) {
  const auto client = ExampleClient::StartWith(GoExample(), L"");
  client->AwaitServing();
  EXPECT_EQ(client->Program().Output(),
            "serving \\\\.\\pipe\\" + CStringHelper::UnicodeToUTF8(plm_client::DefaultPipeName()) + "\n");
}

// Wine's whoami knows no options, so the client's reading is shown what Windows prints.
TEST(NodejsExampleCommandLine, FindsTheSidInTheOutputOfWhoami) {
  const TempFolder folder;
  const std::wstring script = folder.WriteText(
      L"sid.js", LR"(console.log(require(process.argv[2]).sidIn('"vm\\S-1-0","S-1-5-21-1-2-3-1001"\r\n')))");
  const ScopedEnvironment any_system(L"NODE_SKIP_PLATFORM_CHECK", L"1");
  const TempFolder output;
  const ClientProgram node(NodejsExample().program.c_str(), output,
                           L"\"" + script + L"\" \"" + ExampleFile(L"nodejs\\options.js") + L"\"");
  EXPECT_EQ(node.ExitCode(), 0u) << node.Errors();
  EXPECT_EQ(node.Output(), "S-1-5-21-1-2-3-1001\n");
}

}  // namespace
