// tavo_doctor: says why the add-in is not there, or why nothing happens.
#include <windows.h>

#include <objbase.h>

#include "CStringHelper.h"
#include "activation.h"
#include "base/module_path.h"
#include "bundle/bundle.h"
#include "options.h"
#include "output/console.h"
#include "output/format.h"
#include "run.h"

namespace {

using namespace doctor;

constexpr int kFailure = 1;
constexpr int kWrongUse = 2;

/// COM for this thread, which reads type libraries.
class ComForThread {
 public:
  ComForThread() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
  ComForThread(const ComForThread&) = delete;
  ComForThread& operator=(const ComForThread&) = delete;
  ~ComForThread() { CoUninitialize(); }
};

int Diagnose(const Options& options) {
  const ComForThread com;
  const std::wstring program = ModulePath(nullptr);
  const AddInLibrary library(program.substr(0, program.find_last_of(L'\\')));
  const Report report =
      RunChecks({.own_program = program, .add_in = library, .patience = options.patience}, options.areas);
  Print(options.json ? CStringHelper::UTF8ToUnicode(FormatJson(report)) + L"\n" : FormatText(report));
  if (!options.bundle.empty()) WriteBundle(options.bundle, report, library);
  return report.Count(Status::kFailed) > 0 ? kFailure : 0;
}

int Run(const std::vector<std::wstring>& arguments) {
  try {
    const Options options = ParseOptions(arguments);
    if (options.help) {
      Print(Usage());
      return 0;
    }
    return options.create.empty() ? Diagnose(options) : CreateAndPrint(options.create);
  } catch (const WrongUse& error) {
    PrintError(L"tavo_doctor: " + error.text + L"; see tavo_doctor --help\n");
  } catch (const BundleError& error) {
    PrintError(L"tavo_doctor: " + error.text + L"\n");
  }
  return kWrongUse;
}

}  // namespace

int wmain(int count, wchar_t** arguments) { return Run({arguments + 1, arguments + count}); }
