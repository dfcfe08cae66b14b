#include <windows.h>

#include "window/picture_taker.h"

#include <fstream>

namespace window {
namespace {

constexpr ULONGLONG kPatience = 10'000;  // milliseconds
constexpr DWORD kBetweenLooks = 20;

void Repaint() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE)) {
    DispatchMessageW(&message);
  }
}

/// Where the window is on the display that has the keyboard, in pixels: WIDTHxHEIGHT+LEFT+TOP.
std::string ActiveWindowPlace() {
  RECT place{};
  GetWindowRect(GetForegroundWindow(), &place);
  return std::to_string(place.right - place.left) + "x" + std::to_string(place.bottom - place.top) + "+" +
         std::to_string(place.left) + "+" + std::to_string(place.top);
}

}  // namespace

void PictureTaker::Take(const std::wstring& name) const {
  if (m_folder.empty()) return;
  Repaint();
  GdiFlush();
  const std::filesystem::path request = m_folder / (name + L".wanted");
  const std::filesystem::path unfinished = m_folder / (name + L".request");
  std::ofstream(unfinished) << ActiveWindowPlace() << '\n';
  std::filesystem::rename(unfinished, request);
  const std::filesystem::path picture = m_folder / (name + L".png");
  const ULONGLONG end = GetTickCount64() + kPatience;
  std::error_code missing;
  while (!std::filesystem::exists(picture, missing) && GetTickCount64() < end) {
    Repaint();
    Sleep(kBetweenLooks);
  }
}

}  // namespace window
