#include "pane.h"

namespace cad_host {
namespace {

constexpr int kIconSize = 16;

BOOL CALLBACK TakeFont(HWND control, LPARAM font) {
  SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
  return TRUE;
}

}  // namespace

void Desk::UseDpi(window::Dpi value) {
  dpi = value;
  font = window::MessageFont(dpi);
  icons = DrawHostIcons(Scale(kIconSize));
}

void Pane::TakeOnDensity() {
  EnumChildWindows(Handle(), TakeFont, reinterpret_cast<LPARAM>(m_desk.font.get()));
  RECT area{};
  GetClientRect(Handle(), &area);
  Layout({area.right, area.bottom});
  InvalidateRect(Handle(), nullptr, TRUE);
}

void Pane::CreatePane(HWND parent, const wchar_t* class_name, int id, HBRUSH background) {
  Create({.class_name = class_name,
          .extended_style = WS_EX_CONTROLPARENT,
          .parent = parent,
          .id = id,
          .background = background});
}

LRESULT Pane::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_SIZE) {
    Layout({LOWORD(lparam), HIWORD(lparam)});
    return 0;
  }
  return Window::OnMessage(message, wparam, lparam);
}

HWND Pane::Control(const wchar_t* class_name, int id, DWORD style, DWORD extended_style,
                   const wchar_t* text) const {
  return window::MakeControl(Handle(), class_name, id, style, m_desk.font.get(), extended_style, text);
}

}  // namespace cad_host
