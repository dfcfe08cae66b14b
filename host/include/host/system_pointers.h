/// @file Smart pointers to interfaces of the system, in the manner of those to the host's.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <comip.h>
#include <ocidl.h>

_COM_SMARTPTR_TYPEDEF(IUnknown, IID_IUnknown);
_COM_SMARTPTR_TYPEDEF(IDispatch, IID_IDispatch);
_COM_SMARTPTR_TYPEDEF(ITypeInfo, IID_ITypeInfo);
_COM_SMARTPTR_TYPEDEF(ITypeLib, IID_ITypeLib);
_COM_SMARTPTR_TYPEDEF(IConnectionPoint, IID_IConnectionPoint);
_COM_SMARTPTR_TYPEDEF(IConnectionPointContainer, IID_IConnectionPointContainer);
