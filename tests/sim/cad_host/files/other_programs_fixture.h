/// @file Files that other programs wrote: compound files of libgsf (fixtures/other_programs.c and
/// `gsf createole`) and files in other formats.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

#include "compound_content.h"
#include "host_fixture.h"

using Texts = std::map<std::wstring, std::wstring>;

inline constexpr const wchar_t* kPropertySet = L"\005DocumentSummaryInformation";
inline constexpr const wchar_t* kPartText = L"part.sldprt";

/// The texts of properties by their names.
Texts TextsOf(const cad_host::CustomProperties& properties);

void SetText(cad_host::Document& document, const std::wstring& name, const std::wstring& text);

/// The content of a compound file without its property set, which a save may change.
CompoundElements ContentBesideProperties(const std::wstring& path);

using Strings = std::vector<std::wstring>;

class OtherProgramsTest : public HostTest {
 protected:
  /// Part and assembly with streams and storages that the host does not know.
  std::wstring ChinesePart() { return CopyFixture(L"page936.sldprt", kPartText); }
  std::wstring WesternAssembly() { return CopyFixture(L"page1252.sldasm", L"top.sldasm"); }

  /// A part that `gsf createole` makes of files; the names of the files are those of the streams.
  std::wstring MakeCompound(const std::map<std::wstring, std::string>& streams);

  /// What libgsf reads: "NAME: VALUE" for each name.
  std::string PropertiesByLibgsf(const std::string& file, const std::string& names);

  /// @return the message of the error that saving or opening causes; "no error" if there is none.
  std::wstring ErrorOfSaving(cad_host::Document& document, const std::wstring& path = {});
  std::wstring ErrorOfOpening(const std::wstring& path);

  /// The names of all documents in the test's folder, and of files that replace one.
  std::vector<std::wstring> Files() const;

 private:
  std::wstring CopyFixture(const std::wstring& fixture, const std::wstring& name);
};
