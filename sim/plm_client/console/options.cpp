#include "options.h"

#include <stdexcept>

#include "CStringHelper.h"

const char* const kHelp =
    R"(usage: plm_client --answers FOLDER [--pipe NAME] [--record FILE] [--until-idle SECONDS] [--quiet]

A PLM client without a person: answers the add-in's commands with the content of files.

  --answers FOLDER       the folder of the answers: QD_PLMLogin.json answers every QD_PLMLogin. Files named
                         QD_PLMLogin.1.json, QD_PLMLogin.2.json and so on answer the first, the second ...
                         call on a connection; calls beyond them get QD_PLMLogin.json. They begin anew with
                         each connection, that is with each session of a host. A command without a file gets
                         the empty answer, as if the person had closed the panel.
  --pipe NAME            the pipe's name, without \\.\pipe\; default: tavo-plm-client-<SID of the user>
  --record FILE          appends each request to FILE, one line of JSON with "command" and "request"
  --until-idle SECONDS   ends when no host has been connected for this long; default: at Ctrl-C
  --quiet                prints no line for each command
)";

namespace {

std::chrono::seconds ParseSeconds(const std::wstring& text) {
  constexpr std::size_t kMostDigits = 6;
  const bool is_number = !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring::npos;
  if (!is_number || text.size() > kMostDigits) {
    throw std::runtime_error("--until-idle takes a number of seconds, not " +
                             CStringHelper::UnicodeToUTF8(text));
  }
  return std::chrono::seconds(std::stoi(text));
}

}  // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::wstring& name = *argument;
    const auto value = [&]() -> const std::wstring& {
      if (++argument == arguments.end()) {
        throw std::runtime_error(CStringHelper::UnicodeToUTF8(name) + " needs a value");
      }
      return *argument;
    };
    if (name == L"--answers") {
      options.answers = value();
    } else if (name == L"--pipe") {
      options.pipe = value();
    } else if (name == L"--record") {
      options.record = value();
    } else if (name == L"--until-idle") {
      options.until_idle = ParseSeconds(value());
    } else if (name == L"--quiet") {
      options.quiet = true;
    } else if (name == L"--help") {
      options.help = true;
    } else {
      throw std::runtime_error("no such option: " + CStringHelper::UnicodeToUTF8(name));
    }
  }
  if (!options.help && !std::filesystem::is_directory(options.answers)) {
    throw std::runtime_error("--answers must name a folder");
  }
  return options;
}
