/// @file Reserved vtable slots: how a header states that a method sits on slot N without spelling out
/// the N - 1 methods before it.
#pragma once

#include <windows.h>

#include <oaidl.h>

/// Names one vtable slot in an overload list, so that every reserved slot is a method of its own.
template <int Slot>
struct SlotTag {};

/// `Base` followed by reserved methods on the slots `From` up to, not including, `To`.
///
/// A reserved method answers E_NOTIMPL. On x64 the caller cleans the stack, so that holds whatever
/// arguments a caller passes. Eight slots make one class: a class per slot would give an interface of
/// 800 slots a chain of 800 base classes.
template <class Base, int From, int To>
struct ReserveSlots : ReserveSlots<Base, From, To - 1> {
  using ReserveSlots<Base, From, To - 1>::Reserved;
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 1>) { return E_NOTIMPL; }
};

template <class Base, int From>
struct ReserveSlots<Base, From, From> : Base {
  using Base::Reserved;
};

/// Where every interface here starts: IDispatch, and a first overload for those above it to add to.
template <int From>
struct ReserveSlots<IDispatch, From, From> : IDispatch {
  struct NoSlot {};
  void Reserved(NoSlot) = delete;
};

template <class Base, int From, int To>
requires(To - From >= 8) struct ReserveSlots<Base, From, To> : ReserveSlots<Base, From, To - 8> {
  using ReserveSlots<Base, From, To - 8>::Reserved;
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 8>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 7>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 6>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 5>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 4>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 3>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 2>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 1>) { return E_NOTIMPL; }
};
