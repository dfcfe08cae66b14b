/// @file Stacks of this program's threads, as text on the standard error stream.
///
/// Collecting a stack and writing its addresses need neither memory nor locks of this process, which a fault
/// may have left broken or locked. Writing its function names does.
#pragma once

#include <windows.h>

#include <string_view>

/// Writes to the standard error stream without the C library, which may allocate and lock.
void WriteToErrors(std::string_view text);
void WriteToErrors(DWORD64 number, int base);

/// Collects the stack of this thread from its registers.
void CollectStack(const CONTEXT& context);

/// Collects the stack of this thread as it is now.
void CollectOwnStack();

/// Collects the stack of another thread, which is suspended meanwhile.
void CollectStackOf(HANDLE thread, DWORD id);

/// Collects the stacks of all threads but this one, the thread `ignored` and those that are collected
/// already. This one needs memory.
void CollectOtherStacks(DWORD ignored);

/// Writes the collected stacks: for each frame a line with module, function, file and line.
void WriteStacks();

/// Writes the collected stacks that WriteStacks has not finished: for each frame a line with its address.
void WriteAddresses();
