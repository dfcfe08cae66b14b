#include "CStringHelper.h"
#include "CZALException.h"
#include "base/platform_codes.h"
#include "detail/rapidjson_config.h"

void RaiseRapidJsonAssertion(const char* expression, const char* file, int line) {
  throw CZALException(platform_code::kJsonWrongType,
                      L"json assertion \"" + CStringHelper::UTF8ToUnicode(expression) + L"\" failed in " +
                          CStringHelper::UTF8ToUnicode(file) + L", line " + std::to_wstring(line));
}
