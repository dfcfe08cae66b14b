#include <string_view>

#include "CStringHelper.h"
#include "CZALException.h"
#include "base/platform_codes.h"
#include "detail/rapidjson_config.h"

namespace {

/// The path as it is written in an #include, without folders of the machine that built the program: what
/// follows the last "rapidjson/", or else the name of the file.
std::string_view HeaderName(std::string_view path) {
  constexpr std::string_view kFolder = "rapidjson/";
  const std::size_t folder = path.rfind(kFolder);
  if (folder != std::string_view::npos) return path.substr(folder + kFolder.size());
  return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace

void RaiseRapidJsonAssertion(const char* expression, const char* file, int line) {
  throw CZALException(platform_code::kJsonWrongType,
                      L"json assertion \"" + CStringHelper::UTF8ToUnicode(expression) + L"\" failed in " +
                          CStringHelper::UTF8ToUnicode(HeaderName(file)) + L", line " +
                          std::to_wstring(line));
}
