/// @file The host's interfaces with vtables as large as in release 2023, so that every slot of the real host
/// has a method here too.
#pragma once

#include <ocidl.h>

#include <type_traits>

#include "host/application.h"
#include "host/assembly.h"
#include "host/command_manager.h"
#include "host/custom_properties.h"
#include "host/drawing.h"
#include "host/model_doc.h"
#include "host/selection.h"

namespace cad_host {

template <class Interface>
struct FullSizeOf {
  using Type = Interface;
};

// First reserved slot after the last declared method, number of slots.
template <>
struct FullSizeOf<ISldWorks> {
  using Type = ReserveSlots<ISldWorks, 232, 368>;
};
template <>
struct FullSizeOf<IModelDoc2> {
  using Type = ReserveSlots<IModelDoc2, 799, 804>;
};
template <>
struct FullSizeOf<IModelDocExtension> {
  using Type = ReserveSlots<IModelDocExtension, 93, 359>;
};
template <>
struct FullSizeOf<ICustomPropertyManager> {
  using Type = ReserveSlots<ICustomPropertyManager, 22, 34>;
};
template <>
struct FullSizeOf<IAssemblyDoc> {
  using Type = ReserveSlots<IAssemblyDoc, 194, 215>;
};
template <>
struct FullSizeOf<IDrawingDoc> {
  using Type = ReserveSlots<IDrawingDoc, 237, 285>;
};
template <>
struct FullSizeOf<ISelectionMgr> {
  using Type = ReserveSlots<ISelectionMgr, 47, 70>;
};
template <>
struct FullSizeOf<IComponent2> {
  using Type = ReserveSlots<IComponent2, 111, 178>;
};
template <>
struct FullSizeOf<ICommandManager> {
  using Type = ReserveSlots<ICommandManager, 30, 31>;
};
template <>
struct FullSizeOf<ICommandGroup> {
  using Type = ReserveSlots<ICommandGroup, 37, 45>;
};
template <>
struct FullSizeOf<ICommandTab> {
  using Type = ReserveSlots<ICommandTab, 17, 19>;
};
template <>
struct FullSizeOf<ICommandTabBox> {
  using Type = ReserveSlots<ICommandTabBox, 9, 13>;
};

/// A dual interface whose methods are called by slot only, never by name.
template <class Dual>
struct EarlyBound : Dual {
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count) *count = 0;
    return E_NOTIMPL;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (info) *info = nullptr;
    return E_NOTIMPL;
  }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
};

template <class Interface>
struct ServedAs {
  using Type = typename FullSizeOf<Interface>::Type;
};
template <class Interface>
requires std::is_base_of_v<IDispatch, Interface>
struct ServedAs<Interface> {
  using Type = EarlyBound<typename FullSizeOf<Interface>::Type>;
};

/// The base class of an object that implements `Interface`.
template <class Interface>
using FullSize = typename ServedAs<Interface>::Type;

}  // namespace cad_host
