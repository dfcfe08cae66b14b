#include "clipboard.h"

#include <cstring>
#include <memory>

#include "cad_host/host_error.h"

namespace cad_host {
namespace {

struct GlobalFreer {
  void operator()(HGLOBAL memory) const noexcept { GlobalFree(memory); }
};

/// The clipboard, open for this program.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) : m_isOpen(OpenClipboard(owner)) {}
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() {
    if (m_isOpen) CloseClipboard();
  }

  bool IsOpen() const { return m_isOpen; }

 private:
  bool m_isOpen;
};

}  // namespace

void SetClipboardText(HWND owner, const std::wstring& text) {
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  std::unique_ptr<void, GlobalFreer> memory(GlobalAlloc(GMEM_MOVEABLE, size));
  void* const place = memory ? GlobalLock(memory.get()) : nullptr;
  if (place) {
    std::memcpy(place, text.c_str(), size);
    GlobalUnlock(memory.get());
    const OpenedClipboard clipboard(owner);
    if (clipboard.IsOpen() && EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory.get())) {
      static_cast<void>(memory.release());  // the clipboard's from now on
      return;
    }
  }
  throw HostError(L"the clipboard does not take the text: error " + std::to_wstring(GetLastError()));
}

}  // namespace cad_host
