#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

struct Closer {
  void operator()(FILE* pipe) const { _pclose(pipe); }
};

/// What the program unhandled_exception, which lies beside this one, writes before it ends.
std::string OutputOf(const std::string& argument) {
  const std::unique_ptr<FILE, Closer> pipe(
      _popen(("tests\\unhandled_exception.exe " + argument + " 2>&1").c_str(), "r"));
  std::string result;
  char line[256];
  while (pipe && std::fgets(line, sizeof line, pipe.get())) result += line;
  return result;
}

}  // namespace

TEST(TerminateHandler, WritesTheTypeAndTheTextOfAnException) {
  const std::string output = OutputOf("error");
  EXPECT_NE(output.find("exception without a handler: St13runtime_error"), std::string::npos) << output;
  EXPECT_NE(output.find("what: nobody catches this"), std::string::npos) << output;
}

TEST(TerminateHandler, WritesTheTypeOfAnExceptionWithoutAText) {
  const std::string output = OutputOf("number");
  EXPECT_NE(output.find("exception without a handler: i"), std::string::npos) << output;
  EXPECT_EQ(output.find("what:"), std::string::npos) << output;
}
