/// @file Answers from files.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace plm_client {

/// The answer that a folder holds for a command.
struct FiledAnswer {
  std::string text;  ///< the file's content; empty if there is no file
  std::string file;  ///< the file's name; empty if there is no file
};

/// A folder of prepared answers: the first call of QD_PLMQuery on a connection is answered with
/// QD_PLMQuery.1.json, the second with QD_PLMQuery.2.json and so on. A call without such a file is answered
/// with QD_PLMQuery.json, or with the empty answer if that file is missing too. A file is read each time it
/// is needed.
class AnswerFolder {
 public:
  explicit AnswerFolder(std::filesystem::path folder) : m_folder(std::move(folder)) {}

  /// The answer to the next call of `command` on the connection with this number.
  /// @throws std::runtime_error naming the file if it exists but cannot be read.
  FiledAnswer Next(const std::string& command, int connection);

 private:
  std::filesystem::path m_folder;
  std::mutex m_mutex;
  std::map<std::pair<int, std::string>, int> m_calls;  // by connection and command
};

}  // namespace plm_client
