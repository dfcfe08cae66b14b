/// @file An OLE compound file: streams of text tables and the user-defined property set.
#pragma once

#include <string>
#include <string_view>

#include "base/com_pointers.h"
#include "records.h"

namespace cad_host {

/// The stream of the summary information that has the section for user-defined properties.
inline constexpr const wchar_t* kPropertiesStream = L"\005DocumentSummaryInformation";

class CompoundFile {
 public:
  /// Whether the file exists and is a compound file.
  static bool IsOne(const std::wstring& path);

  /// Errors name the file `shown`, for which the file `path` is written.
  /// @throws HostError if the file cannot be created or opened.
  static CompoundFile Create(const std::wstring& path, const std::wstring& shown);
  static CompoundFile OpenToChange(const std::wstring& path, const std::wstring& shown);

  /// @throws HostError naming the file if it cannot be opened.
  static CompoundFile OpenToRead(const std::wstring& path);

  /// Whether the file has a stream or a storage `name`.
  bool Has(const wchar_t* name) const;

  /// The table in the stream `name`; empty if there is no such stream. A stream that is not a table of this
  /// host reads as any table.
  Records ReadTable(const wchar_t* name) const;

  void WriteTable(const wchar_t* name, const Records& records) const;

  /// The bytes of the stream with the property set of the document; empty if there is no such stream.
  std::string ReadPropertySet() const { return ReadStream(kPropertiesStream); }

  /// Writes the stream with the property set of the document.
  void WritePropertySet(std::string_view bytes) const { WriteStream(kPropertiesStream, bytes); }

  /// Ends the writing. @throws HostError naming the file if something was not written.
  void Commit() const { Check(m_storage->Commit(STGC_DEFAULT), L"cannot write"); }

  /// @throws HostError naming the file and the failed step if `result` is a failure.
  void Check(HRESULT result, const wchar_t* step) const;

 private:
  std::string ReadStream(const wchar_t* name) const;
  void WriteStream(const wchar_t* name, std::string_view bytes) const;

  CompoundFile(std::wstring path, DWORD mode, HRESULT result, const IStoragePtr& storage);

  std::wstring m_path;
  DWORD m_mode;
  IStoragePtr m_storage;
};

}  // namespace cad_host
