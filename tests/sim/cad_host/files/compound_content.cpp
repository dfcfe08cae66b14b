#include "compound_content.h"

#include <windows.h>

#include <comdef.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include "files/compound_directory.h"
#include "temp_folder.h"

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

void AddContent(const IStoragePtr& storage, const std::wstring& prefix, CompoundElements& content) {
  IEnumSTATSTGPtr elements;
  ASSERT_EQ(storage->EnumElements(0, nullptr, 0, &elements), S_OK);
  STATSTG element{};
  while (elements->Next(1, &element, nullptr) == S_OK) {
    const std::wstring name = element.pwcsName;
    CoTaskMemFree(element.pwcsName);
    if (element.type == STGTY_STREAM) {
      content[prefix + name].bytes = StreamBytes(storage, name.c_str(), element.cbSize.LowPart);
      continue;
    }
    IStoragePtr inner;
    ASSERT_EQ(storage->OpenStorage(name.c_str(), nullptr, kMode, nullptr, 0, &inner), S_OK);
    AddContent(inner, prefix + name + L"\\", content);
  }
}

}  // namespace

CompoundElements CompoundContent(const std::wstring& path) {
  CompoundElements content;
  for (const cad_host::DirectoryEntry& entry : cad_host::DirectoryOf(ReadFileBytes(path))) {
    content[entry.path] = {.bytes = {},
                           .class_id = entry.class_id,
                           .state_bits = entry.state_bits,
                           .created = entry.created,
                           .modified = entry.modified};
  }
  const std::size_t elements = content.size();
  IStoragePtr storage;
  EXPECT_EQ(StgOpenStorageEx(path.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, STGFMT_STORAGE, 0, nullptr,
                             nullptr, IID_PPV_ARGS(&storage)),
            S_OK);
  if (storage) AddContent(storage, L"", content);
  EXPECT_EQ(content.size(), elements) << "in the file's directory and in the storage";
  return content;
}

std::vector<std::wstring> Differences(const CompoundElements& a, const CompoundElements& b) {
  std::vector<std::wstring> differences;
  const auto compare = [&](bool equal, const std::wstring& path, const wchar_t* what) {
    if (!equal) differences.push_back(path + L" " + what);
  };
  for (const auto& [path, element] : a) {
    const auto found = b.find(path);
    compare(found != b.end(), path, L"is gone");
    if (found == b.end()) continue;
    compare(element.bytes == found->second.bytes, path, L"bytes");
    compare(element.class_id == found->second.class_id, path, L"class");
    compare(element.state_bits == found->second.state_bits, path, L"state bits");
    compare(element.created == found->second.created, path, L"created");
    compare(element.modified == found->second.modified, path, L"modified");
  }
  for (const auto& [path, element] : b) compare(a.contains(path), path, L"is new");
  return differences;
}
