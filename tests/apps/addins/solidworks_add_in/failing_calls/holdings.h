/// @file What the process holds between two runs: the same after each good run, if nothing leaks.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <array>
#include <cstddef>
#include <vector>

#include "stage.h"

/// Counts the blocks of the task allocator, to which the texts of COM (BSTRs) belong. At most one object.
///
/// The system keeps freed texts for later use, which would look like held ones; that is switched off.
class TaskMemorySpy {
 public:
  /// @throws std::runtime_error if the system does not take the spy.
  TaskMemorySpy();
  TaskMemorySpy(const TaskMemorySpy&) = delete;
  TaskMemorySpy& operator=(const TaskMemorySpy&) = delete;
  ~TaskMemorySpy();

  /// How many more blocks were allocated than freed since the object was made.
  long Count() const;
};

/// A kind of thing that is held.
enum class Held {
  kBlocks,          ///< blocks of the C runtime, by the DLL
  kTaskBlocks,      ///< BSTRs and other memory of the task allocator, by the process
  kHandles,         ///< handles of the kernel, by the process
  kReferences,      ///< references to the host
  kTemporaryFiles,  ///< files in the folder for temporary files
};

inline constexpr std::size_t kHeldKinds = 5;

/// In words.
const char* NameOf(Held held);

/// How much of each is held.
struct Holdings {
  std::array<long, kHeldKinds> counts{};

  long& Of(Held held) { return counts[static_cast<std::size_t>(held)]; }
  long Of(Held held) const { return counts[static_cast<std::size_t>(held)]; }

  /// The kinds of which there is more here than in `before`.
  std::vector<Held> MoreThan(const Holdings& before) const;
};

/// What is held now.
Holdings CountHoldings(Stage& stage, const TaskMemorySpy& spy);
