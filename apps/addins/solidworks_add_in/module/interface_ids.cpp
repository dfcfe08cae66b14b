// Defines the GUIDs of solidworks_add_in.idl. The system's headers come before initguid.h, because the
// system's libraries define the GUIDs that those headers declare.
#include <windows.h>

#include <ole2.h>

#include <initguid.h>

#include "solidworks_add_in_h.h"
