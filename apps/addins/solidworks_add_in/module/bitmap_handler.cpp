#include "bitmap_handler.h"

#include <cstring>
#include <exception>
#include <vector>

#include "CComBSTR.h"
#include "base/com_pointers.h"
#include "base/unique_handle.h"
#include "exception_info.h"
#include "type_library.h"

namespace {

/// The bitmap resource `id` of the DLL as the bytes of a bitmap file: the resource plus the missing file
/// header. Empty if there is no such bitmap.
std::vector<BYTE> BitmapFile(WORD id) {
  HINSTANCE module = CSolidWorksAddInModule::Instance().ModuleHandle();
  HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), RT_BITMAP);
  if (!resource) return {};
  const auto* const bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
  const DWORD size = SizeofResource(module, resource);
  BITMAPINFOHEADER info;
  if (!bytes || size < sizeof info) return {};
  std::memcpy(&info, bytes, sizeof info);

  const DWORD all_colors = info.biBitCount <= 8 ? 1u << info.biBitCount : 0;
  const DWORD colors = info.biClrUsed ? info.biClrUsed : all_colors;
  const DWORD masks = info.biCompression == BI_BITFIELDS && info.biSize == sizeof info ? 3 : 0;
  const DWORD pixels = info.biSize + (colors + masks) * DWORD{sizeof(RGBQUAD)};

  BITMAPFILEHEADER header{};
  header.bfType = 0x4D42;  // "BM"
  header.bfSize = DWORD{sizeof header} + size;
  header.bfOffBits = DWORD{sizeof header} + pixels;
  std::vector<BYTE> file(header.bfSize);
  std::memcpy(file.data(), &header, sizeof header);
  std::memcpy(file.data() + sizeof header, bytes, size);
  return file;
}

/// Creates an empty file with a new name in the temporary folder. @return its path; empty after a failure.
std::wstring MakeTemporaryFile() {
  wchar_t folder[MAX_PATH];
  const DWORD length = GetTempPathW(MAX_PATH, folder);
  wchar_t path[MAX_PATH];
  if (length == 0 || length > MAX_PATH || GetTempFileNameW(folder, L"swt", 0, path) == 0) return {};
  return path;
}

/// @return whether every byte was written.
bool WriteWhole(const std::wstring& path, const std::vector<BYTE>& bytes) {
  const UniqueHandle file = OwnHandle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  return file && WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
         written == bytes.size();
}

/// The handler as the system's dispatcher calls it: an exception is kept until the dispatcher has returned,
/// for it is not built to pass one on.
class DispatchedHandler final : public GuardBase<IBitmapHandler> {
 public:
  using GuardBase::GuardBase;

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP CreateBitmapFileFromResource(LONG resID, BSTR* retval) override {
    return Keep([&] { return Target().CreateBitmapFileFromResource(resID, retval); });
  }
  STDMETHODIMP Dispose() override {
    return Keep([&] { return Target().Dispose(); });
  }

  /// Throws what a method threw.
  void Rethrow() const {
    if (m_thrown) std::rethrow_exception(m_thrown);
  }

 private:
  template <class Call>
  HRESULT Keep(Call&& call) noexcept {
    try {
      return call();
    } catch (...) {
      m_thrown = std::current_exception();
      return E_UNEXPECTED;
    }
  }

  std::exception_ptr m_thrown;
};

}  // namespace

CBitmapHandler::~CBitmapHandler() { Dispose(); }

STDMETHODIMP CBitmapHandler::CreateBitmapFileFromResource(LONG resID, BSTR* retval) {
  if (!retval) return E_POINTER;
  *retval = nullptr;
  const std::vector<BYTE> bitmap = BitmapFile(LOWORD(resID));
  const std::wstring path = MakeTemporaryFile();
  CComBSTR result(path);
  if (path.empty() || bitmap.empty() || !WriteWhole(path, bitmap)) return E_FAIL;
  m_files.push_back(path);
  *retval = result.Detach();
  return S_OK;
}

STDMETHODIMP CBitmapHandler::Dispose() {
  for (; !m_files.empty(); m_files.pop_front()) DeleteFileW(m_files.front().c_str());
  return S_OK;
}

STDMETHODIMP CBitmapHandler::GetTypeInfoCount(UINT* count) { return type_library::CountInterfaceInfo(count); }

STDMETHODIMP CBitmapHandler::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  return index == 0 ? type_library::GetInterfaceInfo(__uuidof(IBitmapHandler), info) : DISP_E_BADINDEX;
}

STDMETHODIMP CBitmapHandler::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  ITypeInfoPtr info;
  const HRESULT found = type_library::GetInterfaceInfo(__uuidof(IBitmapHandler), &info);
  return FAILED(found) ? found : DispGetIDsOfNames(info, names, count, ids);
}

STDMETHODIMP CBitmapHandler::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters,
                                    VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  ITypeInfoPtr info;
  const HRESULT found = type_library::GetInterfaceInfo(__uuidof(IBitmapHandler), &info);
  if (FAILED(found)) return found;
  try {
    DispatchedHandler handler(*this);
    const HRESULT called = DispInvoke(static_cast<IBitmapHandler*>(&handler), info, id, flags, parameters,
                                      result, exception, bad_argument);
    handler.Rethrow();
    return called;
  } catch (...) {
    return ReturnException(L"IBitmapHandler", L"CreateBitmapFileFromResource", exception);
  }
}
