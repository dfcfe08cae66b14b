/// @file Reserved vtable slots: they put a method on slot N without declaring the N - 1 methods before it.
#pragma once

#include <windows.h>

#include <oaidl.h>

/// A type for each vtable slot, so that every reserved slot is a separate method.
template <int Slot>
struct SlotTag {};

/// `Base` followed by reserved methods on the slots from `From` up to, but not including, `To`.
///
/// A reserved method returns E_NOTIMPL. On x64 the caller cleans up the stack, so this works with any
/// arguments. Slots are reserved in blocks of 64, in blocks of 8 and singly, because each base class has its
/// own vtable, which takes time to compile.
template <class Base, int From, int To>
struct ReserveSlots : ReserveSlots<Base, From, To - 1> {
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 1>) { return E_NOTIMPL; }
};

template <class Base, int From>
struct ReserveSlots<Base, From, From> : Base {};

template <class Base, int From, int To>
requires(To - From >= 8 && To - From < 64) struct ReserveSlots<Base, From, To>
    : ReserveSlots<Base, From, To - 8> {
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 8>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 7>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 6>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 5>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 4>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 3>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 2>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 1>) { return E_NOTIMPL; }
};

template <class Base, int From, int To>
requires(To - From >= 64) struct ReserveSlots<Base, From, To> : ReserveSlots<Base, From, To - 64> {
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 64>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 63>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 62>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 61>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 60>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 59>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 58>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 57>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 56>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 55>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 54>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 53>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 52>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 51>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 50>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 49>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 48>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 47>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 46>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 45>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 44>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 43>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 42>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 41>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 40>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 39>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 38>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 37>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 36>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 35>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 34>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 33>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 32>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 31>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 30>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 29>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 28>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 27>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 26>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 25>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 24>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 23>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 22>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 21>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 20>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 19>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 18>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 17>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 16>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 15>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 14>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 13>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 12>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 11>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 10>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 9>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 8>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 7>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 6>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 5>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 4>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 3>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 2>) { return E_NOTIMPL; }
  virtual HRESULT STDMETHODCALLTYPE Reserved(SlotTag<To - 1>) { return E_NOTIMPL; }
};
