#include "example_client.h"

#include <gtest/gtest.h>

#include "CStringHelper.h"
#include "host.h"
#include "program_folder.h"

namespace {

std::wstring NodejsFile(const std::wstring& name) { return SourceFile(L"build\\deps\\nodejs\\" + name); }

std::wstring Words(const Example& example, const std::wstring& arguments) {
  return example.script.empty() ? arguments : L"\"" + example.script + L"\" " + arguments;
}

}  // namespace

void PrintTo(const Example& example, std::ostream* stream) { *stream << example.name; }

Example GoExample() { return {"Go", InBuild(L"examples\\plm_client_go.exe"), L""}; }

Example NodejsExample() { return {"Nodejs", NodejsFile(L"node.exe"), ExampleFile(L"nodejs\\plm_client.js")}; }

std::vector<Example> AllExamples() { return {GoExample(), NodejsExample()}; }

std::wstring ExampleFile(const std::wstring& name) { return SourceFile(L"examples\\plm_clients\\" + name); }

ExampleClient::ExampleClient(const Example& example, const std::wstring& arguments)
    : ExampleClient(example, NewPipeName(), arguments) {}

ExampleClient::ExampleClient(const Example& example, const std::wstring& pipe, const std::wstring& arguments)
    : m_pipe(pipe),
      m_packages(L"NODE_PATH", NodejsFile(L"node_modules")),
      m_anySystem(L"NODE_SKIP_PLATFORM_CHECK", L"1"),  // Wine says that it is an older Windows
      m_program(example.program.c_str(), m_output,
                Words(example, (pipe.empty() ? L"" : L"--pipe \"" + pipe + L"\" ") + arguments)) {}

std::unique_ptr<ExampleClient> ExampleClient::StartWith(const Example& example,
                                                        const std::wstring& arguments) {
  return std::unique_ptr<ExampleClient>(new ExampleClient(example, L"", arguments));
}

void ExampleClient::AwaitServing() const {
  for (int looks = 0; looks < 500; ++looks) {
    if (m_program.Output().ends_with('\n')) return;
    Sleep(20);
  }
  ADD_FAILURE() << "it does not serve: " << m_program.Output() << m_program.Errors();
}
