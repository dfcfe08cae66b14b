#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "CStringHelper.h"
#include "CZALException.h"
#include "base/platform_codes.h"
#include "whole_file.h"

namespace {

CZALException Unreadable(const std::wstring& path) {
  const std::string reason = std::generic_category().message(errno);
  return {platform_code::kJsonWrongType,
          L"cannot read \"" + path + L"\": " + CStringHelper::UTF8ToUnicode(reason)};
}

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

std::string ReadWholeFile(const std::wstring& path) {
  const std::unique_ptr<std::FILE, FileCloser> file(
      std::fopen(CStringHelper::UnicodeToUTF8(path).c_str(), "rb"));
  if (!file) throw Unreadable(path);

  std::string content;
  std::array<char, 64 * 1024> part;
  while (const std::size_t size = std::fread(part.data(), 1, part.size(), file.get())) {
    content.append(part.data(), size);
  }
  if (std::ferror(file.get())) throw Unreadable(path);
  return content;
}
