#include "options.h"

#include <cwchar>

namespace cad_host {
namespace {

unsigned NumberIn(const std::wstring& word, const std::wstring& option, unsigned smallest, unsigned largest) {
  wchar_t* end = nullptr;
  const unsigned long number = std::wcstoul(word.c_str(), &end, 10);
  if (word.empty() || *end || word.starts_with(L'-') || number < smallest || number > largest) {
    throw HostError(L"\"" + word + L"\" is not a value of " + option);
  }
  return static_cast<unsigned>(number);
}

SIZE SizeIn(const std::wstring& word, const std::wstring& option) {
  constexpr unsigned kSmallest = 100;
  constexpr unsigned kLargest = 30000;
  const std::size_t cross = word.find(L'x');
  if (cross == std::wstring::npos) {
    throw HostError(L"\"" + word + L"\" is not a value of " + option + L"; 1200x800 is one");
  }
  return {static_cast<LONG>(NumberIn(word.substr(0, cross), option, kSmallest, kLargest)),
          static_cast<LONG>(NumberIn(word.substr(cross + 1), option, kSmallest, kLargest))};
}

LANGID LanguageIn(const std::wstring& word) {
  const auto language = window::LanguageNamed(word);
  if (!language) throw HostError(L"\"" + word + L"\" is not a language; en, zh-CN and zh-TW are");
  return *language;
}

/// Takes an option that has a value. @return false if there is no such option.
bool TakeValue(WindowOptions& options, const std::wstring& option, const std::wstring& value) {
  constexpr unsigned kHour = 60 * 60 * 1000;
  constexpr unsigned kDensest = 960;
  if (option == L"--state") {
    options.host.state_folder = value;
  } else if (option == L"--revision") {
    options.host.revision = value;
  } else if (option == L"--without") {
    options.host.quirks.Set(Quirks::Named(value), false);
  } else if (option == L"--connect") {
    options.connect = value;
  } else if (option == L"--script") {
    options.script = value;
  } else if (option == L"--step-ms") {
    options.step_ms = NumberIn(value, option, 0, kHour);
  } else if (option == L"--record") {
    options.record = value;
  } else if (option == L"--journal") {
    options.journal = value;
  } else if (option == L"--pictures") {
    options.pictures = value;
  } else if (option == L"--language") {
    options.language = LanguageIn(value);
  } else if (option == L"--geometry") {
    options.size = SizeIn(value, option);
  } else if (option == L"--dpi") {
    options.dpi = static_cast<int>(NumberIn(value, option, window::Dpi::kNormal, kDensest));
  } else {
    return false;
  }
  return true;
}

}  // namespace

const char* const kWindowUsage =
    R"(usage: cad_host_window [OPTION ...]

The simulated CAD host as a program with windows.

  --state FOLDER     where command tabs and saved command ids are kept from one run to the next
  --revision R       the host's revision number, 31.0.0 if not given
  --without QUIRK    switches a quirk of the host off from the start; may be given for several
  --connect TITLE    connects the add-in with this title or class id; otherwise, if no script is played, those
                     that are set to load at the start
  --script FILE      plays a session script; cad_host --help names its commands. Each line is shown in the
                     status bar as it runs. The window closes at the end
  --step-ms N        waits N milliseconds before each line of the script
  --stay             the window stays open after the script
  --record FILE      writes every action as a line of a session script
  --journal FILE     writes the whole journal to FILE at the end
  --pictures FOLDER  for each picture that the script wants, makes NAME.wanted there and waits for NAME.png, ten
                     seconds at most; whoever shows the display takes it
  --language L       en, zh-CN or zh-TW
  --geometry WxH     the size of the window, such as 1200x800
  --dpi N            scales the window as for a display of N dots per inch
  --help             shows this text

Exit code: 0; 1 if an expectation of the script failed; 2 if the script could not be run to its end.
)";

WindowOptions ParseOptions(const std::vector<std::wstring>& words) {
  WindowOptions options;
  for (std::size_t place = 0; place < words.size(); ++place) {
    const std::wstring& word = words[place];
    if (word == L"--help") {
      options.help = true;
    } else if (word == L"--stay") {
      options.stay = true;
    } else {
      if (++place == words.size()) {
        throw HostError(L"\"" + word + L"\" is unknown or lacks its value; --help names all arguments");
      }
      if (!TakeValue(options, word, words[place])) {
        throw HostError(L"unknown argument \"" + word + L"\"; --help names all");
      }
    }
  }
  return options;
}

}  // namespace cad_host
