/// @file What the process holds between two runs: the same after each good run, if nothing leaks.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <cstddef>
#include <string>

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

/// What is held.
struct Holdings {
  std::size_t blocks = 0;       ///< of the C runtime, by the DLL
  long task_blocks = 0;         ///< BSTRs and other memory of the task allocator, by the process
  std::size_t handles = 0;      ///< of the kernel, by the process
  std::size_t host_objects = 0; ///< references to the host
  std::size_t temporary_files = 0;

  /// Of which there is more here than in `before`, in words; empty if there is nothing.
  std::string MoreThan(const Holdings& before) const;
};

/// What is held now.
Holdings CountHoldings(Stage& stage, const TaskMemorySpy& spy);
