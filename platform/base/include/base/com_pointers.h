/// @file Smart pointers to COM interfaces of Windows.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <comip.h>
#include <ocidl.h>
#include <ole2.h>

_COM_SMARTPTR_TYPEDEF(IUnknown, IID_IUnknown);
_COM_SMARTPTR_TYPEDEF(IDispatch, IID_IDispatch);
_COM_SMARTPTR_TYPEDEF(ITypeInfo, IID_ITypeInfo);
_COM_SMARTPTR_TYPEDEF(ITypeLib, IID_ITypeLib);
_COM_SMARTPTR_TYPEDEF(IConnectionPoint, IID_IConnectionPoint);
_COM_SMARTPTR_TYPEDEF(IConnectionPointContainer, IID_IConnectionPointContainer);
_COM_SMARTPTR_TYPEDEF(IErrorInfo, IID_IErrorInfo);
_COM_SMARTPTR_TYPEDEF(ICreateErrorInfo, IID_ICreateErrorInfo);
_COM_SMARTPTR_TYPEDEF(IStorage, IID_IStorage);
_COM_SMARTPTR_TYPEDEF(IStream, IID_IStream);
_COM_SMARTPTR_TYPEDEF(IClassFactory, IID_IClassFactory);
