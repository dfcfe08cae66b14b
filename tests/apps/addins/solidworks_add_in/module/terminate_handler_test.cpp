#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "program_folder.h"

namespace {

struct Closer {
  void operator()(FILE* pipe) const { _pclose(pipe); }
};

/// What the program unhandled_exception, which lies beside this one, writes before it ends.
std::string OutputOf(const std::wstring& argument) {
  const std::unique_ptr<FILE, Closer> pipe(
      // The shell takes the outer quotes off.
      _wpopen((L"\"\"" + BesideTests(L"unhandled_exception.exe") + L"\" " + argument + L" 2>&1\"").c_str(),
              L"r"));
  std::string result;
  char line[256];
  while (pipe && std::fgets(line, sizeof line, pipe.get())) result += line;
  return result;
}

}  // namespace

TEST(TerminateHandler, WritesTheTypeAndTheTextOfAnException) {
  const std::string output = OutputOf(L"error");
  EXPECT_NE(output.find("exception without a handler: St13runtime_error"), std::string::npos) << output;
  EXPECT_NE(output.find("what: nobody catches this"), std::string::npos) << output;
}

TEST(TerminateHandler, WritesTheTypeOfAnExceptionWithoutAText) {
  const std::string output = OutputOf(L"number");
  EXPECT_NE(output.find("exception without a handler: i"), std::string::npos) << output;
  EXPECT_EQ(output.find("what:"), std::string::npos) << output;
}
