#include "window/window.h"

#include <stdexcept>
#include <string>

namespace window {
namespace {

HINSTANCE Module() { return GetModuleHandleW(nullptr); }

std::wstring FromUtf8(const std::string& text) {
  const auto size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

[[noreturn]] void Fail() {
  throw std::runtime_error("a window cannot be made: error " + std::to_string(GetLastError()));
}

}  // namespace

Window::~Window() {
  if (!m_handle) return;
  // The derived object is gone: nothing of it may be called any more.
  SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
  DestroyWindow(m_handle);
}

void Window::Create(const Creation& creation) {
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  if (!GetClassInfoExW(Module(), creation.class_name, &window_class)) {
    window_class.style = CS_DBLCLKS;
    window_class.lpfnWndProc = Procedure;
    window_class.hInstance = Module();
    window_class.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    window_class.hbrBackground =
        creation.background ? creation.background : reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    window_class.lpszClassName = creation.class_name;
    if (!RegisterClassExW(&window_class)) Fail();
  }
  const bool is_child = (creation.style & WS_CHILD) != 0;
  const int place = is_child ? 0 : CW_USEDEFAULT;
  const auto menu = reinterpret_cast<HMENU>(static_cast<INT_PTR>(is_child ? creation.id : 0));
  if (!CreateWindowExW(creation.extended_style, creation.class_name, creation.title.c_str(), creation.style,
                       place, place, creation.size.cx, creation.size.cy, creation.parent, menu, Module(),
                       this)) {
    Fail();
  }
}

LRESULT Window::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefWindowProcW(m_handle, message, wparam, lparam);
}

void Window::OnError(const std::wstring& text) {
  MessageBoxW(m_handle, text.c_str(), TextOfWindow(GetAncestor(m_handle, GA_ROOT)).c_str(),
              MB_OK | MB_ICONERROR);
}

LRESULT CALLBACK Window::Procedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* const created =
        static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    created->m_handle = handle;
    SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  if (!window) return DefWindowProcW(handle, message, wparam, lparam);
  LRESULT result = 0;
  try {
    result = window->OnMessage(message, wparam, lparam);
  } catch (...) {
    window->OnError(TextOfCaughtException());
  }
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    window->m_handle = nullptr;
  }
  return result;
}

HWND MakeControl(HWND parent, const wchar_t* class_name, int id, DWORD style, HFONT font,
                 DWORD extended_style, const wchar_t* text) {
  HWND control =
      CreateWindowExW(extended_style, class_name, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Module(), nullptr);
  if (!control) Fail();
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return control;
}

std::wstring TextOfWindow(HWND handle) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(handle)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(handle, text.data(), static_cast<int>(text.size()))));
  return text;
}

std::wstring TextOfCaughtException() {
  try {
    throw;
  } catch (const std::exception& error) {
    return FromUtf8(error.what());
  } catch (...) {
    return L"an exception of an unknown kind";
  }
}

}  // namespace window
