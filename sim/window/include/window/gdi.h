/// @file Owners of what a program draws with.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <type_traits>

namespace window {

template <auto Function>
struct Deleter {
  template <class Handle>
  void operator()(Handle handle) const noexcept {
    Function(handle);
  }
};

template <class Handle, auto Function>
using UniqueGdi = std::unique_ptr<std::remove_pointer_t<Handle>, Deleter<Function>>;

using UniqueFont = UniqueGdi<HFONT, DeleteObject>;
using UniqueBrush = UniqueGdi<HBRUSH, DeleteObject>;
using UniquePen = UniqueGdi<HPEN, DeleteObject>;
using UniqueBitmap = UniqueGdi<HBITMAP, DeleteObject>;
using UniqueDc = UniqueGdi<HDC, DeleteDC>;
using UniqueMenu = UniqueGdi<HMENU, DestroyMenu>;
using UniqueAccelerators = UniqueGdi<HACCEL, DestroyAcceleratorTable>;
using UniqueImageList = UniqueGdi<HIMAGELIST, ImageList_Destroy>;

/// Draws with `object` for the life of this one, and with what was there before afterwards.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : m_dc(dc), m_before(SelectObject(dc, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() { SelectObject(m_dc, m_before); }

 private:
  HDC m_dc;
  HGDIOBJ m_before;
};

/// Begins and ends the painting of a window, in answer to WM_PAINT.
class Painting {
 public:
  explicit Painting(HWND handle) : m_handle(handle), m_dc(BeginPaint(handle, &m_paint)) {}
  Painting(const Painting&) = delete;
  Painting& operator=(const Painting&) = delete;
  ~Painting() { EndPaint(m_handle, &m_paint); }

  HDC Dc() const { return m_dc; }
  const RECT& Place() const { return m_paint.rcPaint; }

 private:
  HWND m_handle;
  PAINTSTRUCT m_paint{};
  HDC m_dc;
};

/// The device context of a window, outside of WM_PAINT.
class WindowDc {
 public:
  explicit WindowDc(HWND handle) : m_handle(handle), m_dc(GetDC(handle)) {}
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() { ReleaseDC(m_handle, m_dc); }

  HDC Get() const { return m_dc; }

 private:
  HWND m_handle;
  HDC m_dc;
};

}  // namespace window
