/// @file Smart pointers of system interfaces for which the compiler's headers name none.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <ocidl.h>
#include <ole2.h>

namespace cad_host {

_COM_SMARTPTR_TYPEDEF(IStorage, __uuidof(IStorage));
_COM_SMARTPTR_TYPEDEF(IStream, __uuidof(IStream));
_COM_SMARTPTR_TYPEDEF(ITypeLib, __uuidof(ITypeLib));

}  // namespace cad_host
