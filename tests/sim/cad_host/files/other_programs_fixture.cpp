#include "other_programs_fixture.h"

#include "program_folder.h"
#include "unix_program.h"

using cad_host::HostError;

Texts TextsOf(const cad_host::CustomProperties& properties) {
  Texts texts;
  for (const auto& property : properties) texts[property.name] = property.text;
  return texts;
}

void SetText(cad_host::Document& document, const std::wstring& name, const std::wstring& text) {
  for (auto& property : document.model.properties) {
    if (property.name == name) property.text = text;
  }
}

CompoundElements ContentBesideProperties(const std::wstring& path) {
  auto content = CompoundContent(path);
  content.erase(kPropertySet);
  return content;
}

std::wstring OtherProgramsTest::MakeCompound(const std::map<std::wstring, std::string>& streams) {
  for (const auto& [name, bytes] : streams) {
    // Windows files cannot have the control character.
    const std::wstring file = name == kPropertySet ? L"@" + name.substr(1) : name;
    m_folder.Write(L"streams\\" + file, bytes);
  }
  RunShell(m_folder,
           "cd streams && for file in @*; do [ ! -e \"$file\" ] || mv \"$file\" \"$(printf "
           "'\\005')${file#@}\"; done; gsf createole ../part.sldprt * 2>&1");
  return m_folder.Path(kPartText);
}

std::string OtherProgramsTest::PropertiesByLibgsf(const std::string& file, const std::string& names) {
  return RunShell(m_folder, "export LC_ALL=C.UTF-8; gsf props " + file + " " + names);
}

std::wstring OtherProgramsTest::ErrorOfSaving(cad_host::Document& document, const std::wstring& path) {
  try {
    Host().Save(document, path);
  } catch (const HostError& error) {
    return error.Message();
  }
  return L"no error";
}

std::wstring OtherProgramsTest::ErrorOfOpening(const std::wstring& path) {
  try {
    Host().Open(path);
  } catch (const HostError& error) {
    return error.Message();
  }
  return L"no error";
}

std::vector<std::wstring> OtherProgramsTest::Files() const {
  std::vector<std::wstring> files = m_folder.List();
  std::erase_if(files, [](const std::wstring& name) { return name.find(L".sld") == std::wstring::npos; });
  return files;
}

std::wstring OtherProgramsTest::CopyFixture(const std::wstring& fixture, const std::wstring& name) {
  std::wstring path = m_folder.Path(name);
  WriteFileBytes(path, ReadFileBytes(BesideTests(L"data\\" + fixture)));
  return path;
}
