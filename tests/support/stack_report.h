/// @file Stacks of this program as text: a line for each frame with function, file and line.
#pragma once

#include <windows.h>

/// Writes the stack of this thread, whose registers are `context`, to the standard error stream.
void WriteStack(const CONTEXT& context);

/// Writes the stack of this thread as it is now.
void WriteOwnStack();

/// Writes the stacks of all other threads, which are stopped for good.
void WriteStacksOfOtherThreads();
