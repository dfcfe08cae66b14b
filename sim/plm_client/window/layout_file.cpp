#include "layout_file.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "CStringHelper.h"

namespace plm_window {

void LayoutFile::Add(const std::wstring& name, HWND control) {
  RECT place{};
  GetWindowRect(control, &place);
  m_lines += m_title + L"\t" + name;
  for (const LONG number : {place.left, place.top, place.right - place.left, place.bottom - place.top}) {
    m_lines += L"\t" + std::to_wstring(number);
  }
  m_lines += L"\n";
}

void LayoutFile::Write() const {
  std::ofstream file(std::filesystem::path(m_path), std::ios::binary | std::ios::trunc);
  file << CStringHelper::UnicodeToUTF8(m_lines) << std::flush;
  if (!file) throw std::runtime_error(CStringHelper::UnicodeToUTF8(m_path) + " cannot be written");
}

}  // namespace plm_window
