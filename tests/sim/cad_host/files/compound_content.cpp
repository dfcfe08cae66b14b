#include "compound_content.h"

#include <windows.h>

#include <comdef.h>
#include <gtest/gtest.h>
#include <ole2.h>

namespace {

_COM_SMARTPTR_TYPEDEF(IStorage, IID_IStorage);
_COM_SMARTPTR_TYPEDEF(IStream, IID_IStream);
_COM_SMARTPTR_TYPEDEF(IEnumSTATSTG, IID_IEnumSTATSTG);

constexpr DWORD kMode = STGM_READ | STGM_SHARE_EXCLUSIVE;

std::string StreamBytes(const IStoragePtr& storage, const wchar_t* name, ULONG size) {
  IStreamPtr stream;
  EXPECT_EQ(storage->OpenStream(name, nullptr, kMode, 0, &stream), S_OK);
  std::string bytes(size, '\0');
  ULONG read = 0;
  EXPECT_EQ(stream->Read(bytes.data(), size, &read), S_OK);
  EXPECT_EQ(read, size);
  return bytes;
}

void AddContent(const IStoragePtr& storage, const std::wstring& prefix,
                std::map<std::wstring, std::string>& content) {
  IEnumSTATSTGPtr elements;
  ASSERT_EQ(storage->EnumElements(0, nullptr, 0, &elements), S_OK);
  STATSTG element{};
  while (elements->Next(1, &element, nullptr) == S_OK) {
    const std::wstring name = element.pwcsName;
    CoTaskMemFree(element.pwcsName);
    if (element.type == STGTY_STREAM) {
      content[prefix + name] = StreamBytes(storage, name.c_str(), element.cbSize.LowPart);
      continue;
    }
    IStoragePtr inner;
    ASSERT_EQ(storage->OpenStorage(name.c_str(), nullptr, kMode, nullptr, 0, &inner), S_OK);
    content[prefix + name + L"\\"];
    AddContent(inner, prefix + name + L"\\", content);
  }
}

}  // namespace

std::map<std::wstring, std::string> CompoundContent(const std::wstring& path) {
  std::map<std::wstring, std::string> content;
  IStoragePtr storage;
  EXPECT_EQ(StgOpenStorageEx(path.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, STGFMT_STORAGE, 0, nullptr,
                             nullptr, IID_PPV_ARGS(&storage)),
            S_OK);
  if (storage) AddContent(storage, L"", content);
  return content;
}
