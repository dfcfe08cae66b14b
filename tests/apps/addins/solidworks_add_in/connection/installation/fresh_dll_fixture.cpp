#include "fresh_dll_fixture.h"

#include <sstream>

namespace {

constexpr const wchar_t* kConfiguration = L"config\\New TAVO SolidWorks AddOn\\";

}  // namespace

FreshDllFixture::FreshDllFixture() : m_home(L"TAVO_HOME", m_folder.Path()) {
  m_folder.WriteText(std::wstring(kConfiguration) + L"PlmClient.json", LR"({"pipe":"tavo-no-plm-client"})");
}

void FreshDllFixture::TearDown() {
  if (m_host) {
    EXPECT_TRUE(m_host->HeldReferences().empty());
  }
  m_host.reset();
  if (m_isCopy) {
    EXPECT_EQ(m_dll->UnregisterServer(), S_OK);
  }
  m_dll.reset();
  CoFreeUnusedLibrariesEx(0, 0);
  EXPECT_EQ(GetModuleHandleW(L"solidworks_add_in.dll"), nullptr);
}

void FreshDllFixture::Load(const std::wstring& path) {
  m_dll.emplace(path);
  EXPECT_EQ(m_dll->RegisterServer(), S_OK);
  m_host.emplace(cad_host::HostOptions{.state_folder = m_folder.Path(L"host")});
}

std::wstring FreshDllFixture::LoadCopy() {
  std::wstring path = m_folder.MakeFolder(L"add-in") + L"\\solidworks_add_in.dll";
  EXPECT_TRUE(CopyFileW(AddInDll::BuiltPath().c_str(), path.c_str(), TRUE));
  Load(path);
  m_isCopy = true;
  return path;
}

std::vector<std::wstring> FreshDllFixture::LogFileLines(const std::wstring& name) const {
  std::vector<std::wstring> lines;
  std::wistringstream text(m_folder.ReadText(L"log\\" + name));
  for (std::wstring line; std::getline(text, line); lines.push_back(line)) {
    if (line.ends_with(L'\r')) line.pop_back();
  }
  return lines;
}

std::wstring FreshDllFixture::ConfigurationPath(const std::wstring& name) const {
  return m_folder.Path(kConfiguration + name);
}
