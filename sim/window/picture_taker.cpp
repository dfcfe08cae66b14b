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

}  // namespace

void PictureTaker::Take(const std::wstring& name) const {
  if (m_folder.empty()) return;
  Repaint();
  GdiFlush();
  std::ofstream(m_folder / (name + L".wanted")).close();
  const std::filesystem::path picture = m_folder / (name + L".png");
  const ULONGLONG end = GetTickCount64() + kPatience;
  std::error_code missing;
  while (!std::filesystem::exists(picture, missing) && GetTickCount64() < end) {
    Repaint();
    Sleep(kBetweenLooks);
  }
}

}  // namespace window
