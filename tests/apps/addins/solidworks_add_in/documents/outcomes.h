/// @file The expected outcome of a failure, for every host call of every document operation.
#pragma once

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

enum class Operation { kOpen, kInsert, kReplace, kImport, kCoverByCopy, kCoverBySwap };

/// What the operation changed on the disk.
enum class Disk {
  kUntouched,
  kBackupFolderMade,  ///< an empty folder "temp" beside the file that the PLM client named
  kCopied,            ///< that folder, and a copy of the file beside the component's file
  kExchanged,         ///< the component's file in that folder, and a copy of the file in its place
};

/// The outcome of an operation. In texts, {file} is the file that the PLM client named, {component} the file
/// of the selected component, {backup} the path to which covering moves that file.
struct Outcome {
  bool done = false;  ///< the operation succeeded
  std::wstring box = {};
  std::vector<std::wstring> lines = {};  ///< of the log
  HRESULT thrown = S_OK;
  std::size_t lines_at_box = 0;  ///< how many of the lines are logged before the box is shown
};

/// A call of an operation, and the outcome of each way in which it fails.
struct CallOutcomes {
  Operation operation;
  std::wstring method;
  int nth;                  ///< which call of the method
  Outcome fails;            ///< E_FAIL
  Outcome returns_nothing;  ///< S_OK without a result
  Outcome returns_false;    ///< S_FALSE without a result
  Disk disk = Disk::kUntouched;
};

/// How a failed test prints its parameter.
void PrintTo(const CallOutcomes& call, std::ostream* stream);

/// Every call of a successful run of each operation, in the order of the calls.
const std::vector<CallOutcomes>& AllCallOutcomes();

/// "CoverByCopy".
std::string NameOf(Operation operation);
