/// @file Counting the GDI and USER objects of the running test. GetGuiResources returns 0 under Wine, so that
/// it would find no leak.
#pragma once

#include <cstddef>

/// How many GDI objects this process has, such as bitmaps, brushes and device contexts: from the table in
/// which the system keeps them.
std::size_t GdiObjectCount();

/// How many windows (top-level and message-only ones), menus, icons and cursors this process has. Other USER
/// objects, such as hooks and timers, cannot be listed.
std::size_t UserObjectCount();
