/// @file The names of the host's interfaces, for headers that only point at them.
///
/// Interface ids, slots and arguments are those of the host's published type library; what stands here
/// was the same in the releases 2016, 2020 and 2023. Interfaces only ever grow at the end.
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
