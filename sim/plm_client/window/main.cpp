// A PLM client that a person answers.
#include <windows.h>
// After windows.h, which they need.
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include <exception>
#include <memory>

#include "CStringHelper.h"
#include "base/local_memory.h"
#include "main_window.h"
#include "models/sample_vault.h"
#include "options.h"
#include "window/message_loop.h"
#include "window/texts.h"

namespace {

std::vector<std::wstring> Arguments() {
  int count = 0;
  const LocalMemory<wchar_t*> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  return {arguments.get() + 1, arguments.get() + count};
}

/// Writes to where the program that started this one reads. @return false if nobody does.
bool Print(DWORD stream, const std::string& text) {
  DWORD written = 0;
  HANDLE output = GetStdHandle(stream);
  return output && WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

/// Prints the text, or shows it in a box.
void Tell(DWORD stream, const std::string& text) {
  if (Print(stream, text)) return;
  MessageBoxW(nullptr, CStringHelper::UTF8ToUnicode(text).c_str(), L"plm_client_window",
              MB_OK | (stream == STD_ERROR_HANDLE ? MB_ICONERROR : MB_ICONINFORMATION));
}

int ShowWindows(const plm_window::Options& options) {
  const LANGID language = options.language ? options.language : GetThreadUILanguage();
  if (options.language) window::UseLanguage(language);
  const INITCOMMONCONTROLSEX controls{sizeof(controls),
                                      ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  const plm_window::MainWindow main_window(options, window::Texts(language));
  Print(STD_OUTPUT_HANDLE, "serving\n");
  return window::MessageLoop(main_window.Handle(), main_window.Accelerators()).Run();
}

int Run() {
  const plm_window::Options options = plm_window::ParseOptions(Arguments());
  if (options.help) {
    Tell(STD_OUTPUT_HANDLE, plm_window::kHelp);
  } else if (!options.make_sample.empty()) {
    const plm_vault::Vault vault = plm_models::MakeSampleVault(options.make_sample);
    Tell(STD_OUTPUT_HANDLE, "made " + CStringHelper::UnicodeToUTF8(vault.Folder().wstring()) + "\n");
  } else {
    return ShowWindows(options);
  }
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int result = 2;
  try {
    result = Run();
  } catch (const std::exception& failure) {
    Tell(STD_ERROR_HANDLE, std::string("plm_client_window: ") + failure.what() + "\n");
  }
  CoUninitialize();
  return result;
}
