#include "plm_client/answer_folder.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace plm_client {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Whether `command` is a plain name: it comes from outside and becomes part of a path.
bool IsPlainName(const std::string& command) {
  return std::all_of(command.begin(), command.end(),
                     [](unsigned char c) { return std::isalnum(c) || c == '_' || c == '-'; });
}

std::string ReadWhole(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) throw std::runtime_error(path.filename().string() + " cannot be read");
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  return text;
}

}  // namespace

FiledAnswer AnswerFolder::Next(const std::string& command, int connection) {
  if (!IsPlainName(command)) return {};
  const std::lock_guard lock(m_mutex);
  const int call = ++m_calls[{connection, command}];
  const std::string numbered = command + "." + std::to_string(call) + ".json";
  for (const std::string& name : {numbered, command + ".json"}) {
    const std::filesystem::path path = m_folder / name;
    if (std::filesystem::exists(path)) return {ReadWhole(path), name};
  }
  return {};
}

}  // namespace plm_client
