// The simulated CAD host as a program with windows.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "CStringHelper.h"
#include "actions.h"
#include "console/exception_text.h"
#include "console/journal_file.h"
#include "host_command_table.h"
#include "main_window.h"
#include "options.h"
#include "window/message_loop.h"
#include "window/picture_taker.h"

namespace {

using namespace cad_host;

constexpr int kFailed = 2;
constexpr const wchar_t* kProgram = L"cad_host_window";

std::vector<std::wstring> Arguments() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> owner(words, LocalFree);
  return {words + 1, words + count};
}

/// Writes the text where a console program would, or shows it if the program was started without one.
void Tell(std::ostream& stream, DWORD handle, const std::wstring& text) {
  if (GetStdHandle(handle)) {
    stream << CStringHelper::UnicodeToUTF8(text) << "\n";
  } else {
    MessageBoxW(nullptr, text.c_str(), kProgram, MB_OK);
  }
}

int Run(const WindowOptions& options) {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
  window::UseLanguage(options.language);
  Host host(options.host);
  Actions actions(host, std::cout);
  actions.Present(options.step_ms, [taker = window::PictureTaker(options.pictures)](
                                       const std::wstring& name) { taker.Take(name); });
  MainWindow main_window(host, actions, options);
  const window::UniqueAccelerators keys = MakeAccelerators();
  window::MessageLoop loop(main_window.Handle(), keys.get());
  loop.OnIdle([&main_window] { main_window.OnIdle(); });
  loop.Run();
  WriteJournalFile(options.journal, host.GetJournal());
  return main_window.ExitCode();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  try {
    const WindowOptions options = ParseOptions(Arguments());
    if (!options.help) return Run(options);
    Tell(std::cout, STD_OUTPUT_HANDLE, CStringHelper::UTF8ToUnicode(kWindowUsage));
    return 0;
  } catch (...) {
    Tell(std::cerr, STD_ERROR_HANDLE, std::wstring(kProgram) + L": " + TextOfException());
    return kFailed;
  }
}
