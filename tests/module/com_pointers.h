/// @file Owning pointers to the system's interfaces.
#pragma once

#include <unknwn.h>

#include "host/system_pointers.h"

_COM_SMARTPTR_TYPEDEF(IClassFactory, IID_IClassFactory);
