/// @file Icons: those of add-ins, cut from their bitmaps, and those of the host, which it draws.
#pragma once

#include <windows.h>

#include "cad_host/commands.h"
#include "window/gdi.h"

namespace cad_host {

/// The icons of a list in one size: as they are, and grey for commands that are not enabled.
struct IconSet {
  window::UniqueImageList normal;
  window::UniqueImageList grey;
};

/// Cuts the list into square icons of its height, scales them to the size of the icons in `set` and adds
/// them. The light grey that add-ins use as a background becomes transparent.
/// @return the place of the first one; -1 if the list is no bitmap.
int AddIcons(IconSet& set, const IconList& icons);

/// No icons yet, for icons of `size` pixels.
IconSet EmptyIconSet(int size);

/// The host's own icons, by their place in the list that DrawHostIcons makes.
enum HostIcon {
  kPartIcon,
  kAssemblyIcon,
  kDrawingIcon,
  kClosedFolderIcon,
  kOpenFolderIcon,
  kSuppressedIcon,
  kViewIcon,
  kOpenIcon,
  kSaveIcon,
  kInsertIcon,
  kFaceIcon,
  kPropertyIcon,
  kHostIconCount
};

/// Draws the host's own icons with `size` pixels.
IconSet DrawHostIcons(int size);

}  // namespace cad_host
