// The one place where the GUIDs of solidworks_add_in.idl become objects. windows.h comes first: what it
// declares is defined by the system's own libraries.
#include <windows.h>

#include <ole2.h>

#include <initguid.h>

#include "solidworks_add_in_h.h"
