/// @file What has to happen when a call of the host fails, for every call of every document operation.
#pragma once

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

enum class Operation { kOpen, kInsert, kReplace, kImport, kCoverByCopy, kCoverBySwap };

/// What lies on the disk afterwards.
enum class Disk {
  kUntouched,
  kBackupFolderMade,  ///< an empty folder "temp" beside the file that the PLM client named
  kCopied,            ///< that folder, and a copy of the file beside the component's
  kExchanged,         ///< the component's file in that folder, and a copy of the file in its place
};

/// What becomes of an operation. In texts, {file} is the file that the PLM client named, {component} the
/// selected component's file, {backup} where covering puts that.
struct Outcome {
  bool done = false;  ///< the operation did what it was asked for
  std::wstring box = {};
  std::vector<std::wstring> lines = {};  ///< of the log: "line|function|text"
  HRESULT raised = S_OK;
  std::size_t lines_at_box = 0;  ///< how many of the lines there are while the box is up
};

/// One call of an operation, and what follows from each way to fail.
struct CallOutcomes {
  Operation operation;
  std::wstring method;
  int nth;                ///< which call of the method
  Outcome fails;          ///< E_FAIL
  Outcome gives_nothing;  ///< S_OK without what was asked for
  Outcome answers_false;  ///< S_FALSE without what was asked for
  Disk disk = Disk::kUntouched;
};

/// How a failed test shows its parameter.
void PrintTo(const CallOutcomes& call, std::ostream* stream);

/// Every call of a run that meets no failure, in the order of the calls.
const std::vector<CallOutcomes>& AllCallOutcomes();

/// "CoverByCopy".
std::string NameOf(Operation operation);
