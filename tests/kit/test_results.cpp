#include "test_results.h"

#include <charconv>

namespace {

/// The value of an attribute of the element that begins at `begin`; empty if it has none.
std::string_view Attribute(std::string_view xml, std::size_t begin, std::string_view name) {
  const std::string_view element = xml.substr(begin, xml.find('>', begin) - begin);
  const std::string start = " " + std::string(name) + "=\"";
  const std::size_t found = element.find(start);
  if (found == std::string_view::npos) return {};
  const std::string_view rest = element.substr(found + start.size());
  return rest.substr(0, rest.find('"'));
}

std::optional<int> Number(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// The tests with a failure inside.
std::vector<std::string> Failures(std::string_view xml) {
  constexpr std::string_view kTest = "<testcase ";
  std::vector<std::string> failures;
  for (std::size_t test = xml.find(kTest); test != std::string_view::npos;) {
    const std::size_t next = xml.find(kTest, test + 1);
    if (xml.substr(test, next - test).find("<failure ") != std::string_view::npos) {
      failures.push_back(std::string(Attribute(xml, test, "classname")) + "." +
                         std::string(Attribute(xml, test, "name")));
    }
    test = next;
  }
  return failures;
}

}  // namespace

std::optional<TestResults> ReadResults(std::string_view xml) {
  const std::size_t all = xml.find("<testsuites ");
  if (all == std::string_view::npos || xml.find("</testsuites>") == std::string_view::npos)
    return std::nullopt;
  const std::optional<int> tests = Number(Attribute(xml, all, "tests"));
  const std::optional<int> failed = Number(Attribute(xml, all, "failures"));
  if (!tests || !failed) return std::nullopt;
  return TestResults{.passed = *tests - *failed, .failed = *failed, .failures = Failures(xml)};
}
