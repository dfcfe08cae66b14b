#include "options.h"

#include <functional>
#include <map>
#include <stdexcept>

#include "CStringHelper.h"
#include "window/texts.h"

namespace plm_window {

const char* const kHelp =
    R"(usage: plm_client_window --vault FOLDER [OPTION ...]
       plm_client_window --make-sample FOLDER

A PLM client that a person answers: each command of the CAD application opens a panel.

  --vault FOLDER         the vault that the panels show and change
  --make-sample FOLDER   makes a vault with sample content, and ends
  --pipe NAME            the pipe's name, without \\.\pipe\; default: tavo-plm-client-<SID of the user>
  --language LANGUAGE    en, zh-CN or zh-TW; default: the user's own
  --user NAME            who is proposed for the log-in; default: the first user of the vault
  --geometry WIDTHxHEIGHT  the size of the main window, in pixels at 96 dots per inch
  --answers FOLDER       QD_PLMLogin.json answers every QD_PLMLogin, QD_PLMLogin.1.json the first one of a
                         connection; a command without a file gets its panel
  --person FILE          makes the choices in the panels, as a person would; see below
  --step-ms N            waits N milliseconds before each step of the person; default: 600
  --misbehave FAULT      late:SECONDS, never, garbage, half-frame (half of the answer, then the connection
                         closes) or die (the program ends), instead of each answer
  --until-idle SECONDS   ends when no host has been connected for this long
  --layout-file FILE     each panel that opens writes here where its controls are: a line for each, with the
                         window's title, the control's name, left, top, width and height, separated by tabs
  --pictures FOLDER      for each picture that the person's file wants, makes NAME.wanted there and waits for
                         NAME.png, ten seconds at most; whoever shows the display takes it
  --help                 prints this

The person's file has a line for each command, used in order. What it has no line for, a person has to answer.

  QD_PLMLogin user=kim log-in
  QD_PLMDataSelector search="frame 600" check-out open "frame.sldasm"
  QD_PLMQuery cancel

After the command come fields that are filled in (NAME=VALUE) and texts in quotes, each of which selects the row
that has it in a cell; and actions, which are done last, wherever they stand: the buttons, or cancel. Lines that
begin with # are remarks.

  every command             picture=             cancel
  QD_PLMLogin               user=              log-in
  QD_PLMLogout                                 log-out stay
  QD_PLMDataSelector, QD_PLMQuery
                            search= kind= revision=
                            open insert replace cover check-out undo-check-out
  QD_PLMMyCheckOutList                         open undo-check-out
  QD_PLMTaskManage                             open complete
  QD_PLMStartWF             workflow= title= assignee= search=   start
  QD_PLMGetcode             series=            take done
  QD_PLMMyTempMaterial                         done keep
  QD_PLMImportCurrent, QD_PLMCreateChangeItems
                            name= comment=     import
  QD_PLMLotimport           folder= comment=   import
  QD_PLMCreateMaterial      name= group=       create nothing
  QD_PLMMaterialBackFill    search=            fill nothing
)";

namespace {

std::string Utf8(const std::wstring& text) { return CStringHelper::UnicodeToUTF8(text); }

int ParseNumber(const std::wstring& option, const std::wstring& text) {
  constexpr std::size_t kMostDigits = 6;
  const bool is_number = !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring::npos;
  if (!is_number || text.size() > kMostDigits) {
    throw std::runtime_error(Utf8(option) + " takes a number, not " + Utf8(text));
  }
  return std::stoi(text);
}

LANGID ParseLanguage(const std::wstring& text) {
  const auto language = window::LanguageNamed(text);
  if (!language) throw std::runtime_error("--language takes en, zh-CN or zh-TW, not " + Utf8(text));
  return *language;
}

SIZE ParseGeometry(const std::wstring& text) {
  const std::size_t cross = text.find(L'x');
  if (cross == std::wstring::npos) {
    throw std::runtime_error("--geometry takes WIDTHxHEIGHT, not " + Utf8(text));
  }
  return {ParseNumber(L"--geometry", text.substr(0, cross)),
          ParseNumber(L"--geometry", text.substr(cross + 1))};
}

using Setter = std::function<void(Options&, const std::wstring&)>;

const std::map<std::wstring, Setter>& Setters() {
  using Value = std::wstring;
  static const std::map<std::wstring, Setter> setters = {
      {L"--vault", [](Options& o, const Value& v) { o.vault = v; }},
      {L"--make-sample", [](Options& o, const Value& v) { o.make_sample = v; }},
      {L"--pipe", [](Options& o, const Value& v) { o.pipe = v; }},
      {L"--language", [](Options& o, const Value& v) { o.language = ParseLanguage(v); }},
      {L"--person", [](Options& o, const Value& v) { o.person = v; }},
      {L"--answers", [](Options& o, const Value& v) { o.answers = v; }},
      {L"--step-ms",
       [](Options& o, const Value& v) { o.step = std::chrono::milliseconds(ParseNumber(L"--step-ms", v)); }},
      {L"--until-idle",
       [](Options& o, const Value& v) {
         o.until_idle = std::chrono::seconds(ParseNumber(L"--until-idle", v));
       }},
      {L"--user", [](Options& o, const Value& v) { o.user = v; }},
      {L"--geometry", [](Options& o, const Value& v) { o.geometry = ParseGeometry(v); }},
      {L"--misbehave", [](Options& o, const Value& v) { o.misbehave = ParseFault(v); }},
      {L"--pictures", [](Options& o, const Value& v) { o.pictures = v; }},
      {L"--layout-file", [](Options& o, const Value& v) { o.layout_file = v; }},
  };
  return setters;
}

}  // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::wstring& name = *argument;
    if (name == L"--help") {
      options.help = true;
      continue;
    }
    const auto setter = Setters().find(name);
    if (setter == Setters().end()) throw std::runtime_error("no such option: " + Utf8(name));
    if (++argument == arguments.end()) throw std::runtime_error(Utf8(name) + " needs a value");
    setter->second(options, *argument);
  }
  if (!options.answers.empty() && !std::filesystem::is_directory(options.answers)) {
    throw std::runtime_error("--answers must name a folder");
  }
  if (!options.help && options.vault.empty() && options.make_sample.empty()) {
    throw std::runtime_error("--vault must name a vault; --make-sample makes one");
  }
  return options;
}

}  // namespace plm_window
