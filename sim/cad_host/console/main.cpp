// The simulated CAD host as a console program: runs a session script.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "CStringHelper.h"
#include "cad_host/host.h"
#include "exception_text.h"
#include "journal_file.h"
#include "session.h"

namespace {

using namespace cad_host;

constexpr int kExpectationsFailed = 1;
constexpr int kFailed = 2;

constexpr const char* kUsage =
    R"(usage: cad_host [--state FOLDER] [--revision R] [--without QUIRK]... [--journal FILE] [--full]
                SCRIPT

Runs the commands of SCRIPT ("-": the standard input), one per line, and prints them with the journal of the
host: its calls of the add-in ("->") and, below each, the add-in's calls of the host. The commands:
  connect [TITLE|CLSID]   disconnect [TITLE|CLSID]   pick ITEM [of TITLE|CLSID]   items   tabs
  open PATH   new part|assembly|drawing   save [PATH]   activate NAME   close NAME
  insert PATH [at X Y Z]   select component NAME|face|nothing [at X Y Z]   components
  suppress NAME   unsuppress NAME
  property NAME = VALUE [text|number|date|yesno]   remove property NAME   properties
  quantity NAME = VALUE
  fault TEXT, such as: fault fail the 3rd OpenDoc6 with 80004005
  quirk NAME on|off       quirks
  answer OK|Cancel|Yes|No|Retry|Abort|Ignore [picture NAME], for the next message box; others stay for the person
  picture NAME            of the display; only cad_host_window --pictures takes pictures
  expect enabled|disabled ITEM   expect active NAME|nothing   expect [no] journal TEXT
  expect property NAME = VALUE   expect component NAME revision N|suppressed
  print TEXT   # comment
Words with blanks must be in quotes; a quote in such a word is written twice.

  --state FOLDER   where command tabs and saved command ids are kept from one run to the next
  --revision R     the host's revision number, 31.0.0 if not given
  --without QUIRK  switches a quirk of the host off from the start; may be given for several
  --journal FILE   writes the whole journal to FILE
  --full           prints the whole journal, every answer and every expectation; otherwise calls that only
                   ask for something or set one property (put_...), events, answers and expectations
                   that are met are left out, and three or more calls of one method become one line

Exit code: 0; 1 if an expectation failed; 2 if the script could not be run to its end.

The quirks, manners of real hosts, all on:
)";

std::string Usage() {
  std::wstring quirks;
  for (const NamedQuirk& named : Quirks::All()) {
    quirks += L"  " + std::wstring(named.name) + L"\n      " + named.description + L"\n";
  }
  return kUsage + CStringHelper::UnicodeToUTF8(quirks);
}

struct Arguments {
  HostOptions options;
  Output output = Output::kFolded;
  std::wstring journal;
  std::wstring script;
};

/// Empty if the arguments are not valid.
/// @throws HostError if there is no quirk of the given name.
std::optional<Arguments> Parse(const std::vector<std::wstring>& words) {
  Arguments arguments;
  for (std::size_t place = 0; place < words.size(); ++place) {
    const std::wstring& word = words[place];
    if (word == L"--without" && place + 1 < words.size()) {
      arguments.options.quirks.Set(Quirks::Named(words[++place]), false);
      continue;
    }
    std::wstring* const value = word == L"--state"      ? &arguments.options.state_folder
                                : word == L"--revision" ? &arguments.options.revision
                                : word == L"--journal"  ? &arguments.journal
                                                        : nullptr;
    if (word == L"--full") {
      arguments.output = Output::kFull;
    } else if (value && ++place < words.size()) {
      *value = words[place];
    } else if (!value && arguments.script.empty() && !word.starts_with(L"--")) {
      arguments.script = word;
    } else {
      return std::nullopt;
    }
  }
  if (arguments.script.empty()) return std::nullopt;
  return arguments;
}

int Run(const Arguments& arguments) {
  std::vector<Command> script = ReadScript(arguments.script);
  Host host(arguments.options);
  Session session(host, std::cout, arguments.output);
  try {
    for (Command& command : script) session.Run(command);
    session.End();
  } catch (...) {
    WriteJournalFile(arguments.journal, host.GetJournal());
    throw;
  }
  WriteJournalFile(arguments.journal, host.GetJournal());
  return session.FailedExpectations() > 0 ? kExpectationsFailed : 0;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);  // the same bytes on every system
  try {
    const auto arguments = Parse({words + 1, words + count});
    if (arguments) return Run(*arguments);
    std::cerr << Usage();
    return kFailed;
  } catch (...) {
    std::cerr << "cad_host: " << CStringHelper::UnicodeToUTF8(TextOfException()) << "\n";
    return kFailed;
  }
}
