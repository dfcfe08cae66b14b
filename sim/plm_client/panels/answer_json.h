/// @file Writes the JSON texts of answers.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vault/records.h"

namespace plm_panels {

/// An object in the making, indented for people:
///
///     AnswerJson().Flag("__InvokeResult__", true).Text("user", user).Done()
class AnswerJson {
 public:
  AnswerJson();
  AnswerJson(const AnswerJson&) = delete;
  AnswerJson& operator=(const AnswerJson&) = delete;
  ~AnswerJson();

  AnswerJson& Flag(std::string_view name, bool value);
  AnswerJson& Text(std::string_view name, std::wstring_view value);
  AnswerJson& Texts(std::string_view name, const std::vector<std::wstring>& values);
  AnswerJson& Object(std::string_view name, const plm_vault::Properties& members);

  /// The whole text. Nothing can be added any more.
  std::wstring Done();

 private:
  class Writer;
  std::unique_ptr<Writer> m_writer;
};

}  // namespace plm_panels
