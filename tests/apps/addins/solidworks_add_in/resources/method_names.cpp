#include "method_names.h"

#include <gtest/gtest.h>

#include <regex>

#include "schema_files.h"

void PrintTo(const MethodNames& names, std::ostream* stream) {
  *stream << testing::PrintToString(names.commands) << testing::PrintToString(names.enable_methods);
}

MethodNames DefinedMethods() {
  const std::string all = TextOf(INTERFACE_DEFINITION);
  const std::size_t begin = all.find("interface ISolidWorksAddIn ");
  const std::string definition = all.substr(begin, all.find('}', begin) - begin);
  // Commands have no parameter, enable methods have one.
  const std::regex method(R"(HRESULT (\w+)\((\[out\] long\* status)?\);)");
  MethodNames names;
  for (std::sregex_iterator found(definition.begin(), definition.end(), method), end; found != end; ++found) {
    ((*found)[2].matched ? names.enable_methods : names.commands).insert((*found)[1]);
  }
  return names;
}

MethodNames DocumentedMethods() {
  const std::string page = TextOf(std::filesystem::path(DOCUMENTS) / "view-json.md");
  const std::regex row(R"(\n\| `(?!CallbackFunction`)(\w+)` \| `(Enable\w+)` \|)");
  MethodNames names;
  for (std::sregex_iterator found(page.begin(), page.end(), row), end; found != end; ++found) {
    names.commands.insert((*found)[1]);
    names.enable_methods.insert((*found)[2]);
  }
  return names;
}
