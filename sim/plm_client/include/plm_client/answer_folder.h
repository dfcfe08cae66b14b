/// @file Answers out of files.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>

namespace plm_client {

/// The answer that a folder holds for a command.
struct FiledAnswer {
  std::string text;  ///< the file's content; empty where there is no file
  std::string file;  ///< the file's name; empty where there is none
};

/// A folder of prepared answers: the first call of QD_PLMQuery is answered with QD_PLMQuery.1.json, the
/// second with QD_PLMQuery.2.json and so on; a call for which there is no such file with QD_PLMQuery.json;
/// where that is missing too, with the empty answer. Files are read when they are asked for.
class AnswerFolder {
 public:
  explicit AnswerFolder(std::filesystem::path folder) : m_folder(std::move(folder)) {}

  /// The answer to the next call of `command`.
  /// @throws std::runtime_error naming the file where it is there but cannot be read.
  FiledAnswer Next(const std::string& command);

 private:
  std::filesystem::path m_folder;
  std::mutex m_mutex;
  std::map<std::string, int> m_calls;
};

}  // namespace plm_client
