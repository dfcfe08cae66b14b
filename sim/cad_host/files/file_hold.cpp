#include "file_hold.h"

#include <utility>

#include "CStringHelper.h"
#include "cad_host/host_error.h"

namespace cad_host {

FileHold::FileHold(std::wstring path) : m_path(std::move(path)) {
  if (!Take()) {
    const DWORD error = GetLastError();
    throw HostError(L"cannot open " + m_path + L": error " + std::to_wstring(error),
                    HRESULT_FROM_WIN32(error));
  }
}

bool FileHold::Take() {
  m_file = OwnHandle(CreateFileW(m_path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
  return static_cast<bool>(m_file);
}

std::shared_ptr<FileHold> FileHolds::Hold(const std::wstring& path) {
  if (auto hold = Find(path)) return hold;
  auto hold = std::make_shared<FileHold>(path);
  m_holds[CStringHelper::ToLower(path)] = hold;
  return hold;
}

std::shared_ptr<FileHold> FileHolds::Find(const std::wstring& path) const {
  const auto found = m_holds.find(CStringHelper::ToLower(path));
  return found == m_holds.end() ? nullptr : found->second.lock();
}

}  // namespace cad_host
