/// @file Forward declarations of the host's interfaces, for headers that only use pointers to them.
///
/// Interface ids, slots and arguments are those of the host's published type library. The parts declared here
/// are identical in the releases 2016, 2020 and 2023; new methods are only added at the end of an interface.
#pragma once

#include "base/com_pointers.h"

struct ISldWorks;
struct IModelDoc2;
struct IModelDocExtension;
struct ICustomPropertyManager;
struct IAssemblyDoc;
struct IDrawingDoc;
struct IView;
struct ISelectionMgr;
struct IComponent2;
struct ICommandManager;
struct ICommandGroup;
struct ICommandTab;
struct ICommandTabBox;
struct ISwAddin;
