/// @file Looking for damage in the memory of the running program: a byte written behind a block or into a
/// freed one, and a block that is freed twice.
#pragma once

/// From now on the C runtime and the libraries of COM have each block checked before they give it back or
/// change its size, and each time after `interval` such blocks all blocks of the heap; in a large heap, where
/// that takes long, less often. Freed blocks are held back for a while, filled with a pattern that must stay.
/// That nothing was written behind a block can be seen if the system fills the bytes there (GlobalFlag 0x10).
/// @param on_damage is called with what is damaged, in the thread that meets it.
void StartHeapChecks(unsigned interval, void (*on_damage)(const char* what));

/// Gives back the freed blocks that are held back. For those who count blocks.
void ReleaseFreedBlocks();

/// Checks all blocks of all heaps of the process, and gives back the freed ones.
void CheckHeaps();

/// Checks nothing more, so that a report of what was found does not take long.
void EndHeapChecks();
