#include "options.h"

#include <algorithm>

#include "CStringHelper.h"
#include "activation.h"
#include "version.h"

namespace doctor {
namespace {

constexpr unsigned long kMostSeconds = 600;

const Area& FindArea(const std::wstring& name) {
  const auto found = std::ranges::find(kAreas, CStringHelper::UnicodeToUTF8(name),
                                       [](const Area& area) { return std::string(area.name); });
  if (found == std::end(kAreas)) throw WrongUse{L"there is no area \"" + name + L"\""};
  return *found;
}

std::chrono::seconds ParseSeconds(const std::wstring& text) {
  const bool is_number = !text.empty() && text.size() <= 3 &&
                         std::ranges::all_of(text, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
  const unsigned long seconds = is_number ? std::stoul(text) : 0;
  if (seconds == 0 || seconds > kMostSeconds) {
    throw WrongUse{L"\"" + text + L"\" is not a number of seconds from 1 to " +
                   std::to_wstring(kMostSeconds)};
  }
  return std::chrono::seconds(seconds);
}

}  // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::wstring& name = *argument;
    const auto value = [&] {
      if (++argument == arguments.end()) throw WrongUse{L"the option " + name + L" needs a value"};
      return *argument;
    };
    if (name == L"--help") {
      options.help = true;
    } else if (name == L"--json") {
      options.json = true;
    } else if (name == L"--bundle") {
      options.bundle = value();
    } else if (name == L"--area") {
      options.areas.push_back(&FindArea(value()));
    } else if (name == L"--timeout") {
      options.patience = ParseSeconds(value());
    } else if (name == kCreateOption) {
      options.create = value();
    } else {
      throw WrongUse{L"there is no option \"" + name + L"\""};
    }
  }
  return options;
}

std::wstring Usage() {
  std::wstring areas;
  for (const Area& area : kAreas) areas += L" " + CStringHelper::UTF8ToUnicode(area.name);
  return L"tavo_doctor " PRODUCT_VERSION_WIDE
         LR"(
Says why the TAVO SolidWorks Integration is not there, or why nothing happens. It changes nothing and starts
no PLM client. Run it with the account that uses the CAD application.

usage: tavo_doctor [OPTION ...]

  --json             prints the findings as one JSON object
  --bundle FILE.zip  also writes the findings, the logs and the configuration into an archive for support,
                     without passwords and the like
  --area NAME        checks this area only; may be given several times:
                    )" +
         areas + LR"(
  --timeout SECONDS  how long a library or a PLM client that does not answer is awaited ()" +
         std::to_wstring(kDefaultPatience.count()) + LR"()
  --help             prints this text

It ends with 0 if nothing has failed, with 1 if something has, and with 2 if it was used wrongly or the archive
cannot be written.
)";
}

}  // namespace doctor
