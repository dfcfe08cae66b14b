// What a look at the computer sees.
#include <windows.h>

#include <gtest/gtest.h>

#include "base/unique_registry_key.h"
#include "snapshot.h"
#include "temp_folder.h"

namespace {

using Lines = std::vector<std::wstring>;

const std::wstring kKey = L"Software\\Tavo snapshot test";

class SnapshotTest : public testing::Test {
 protected:
  SnapshotTest() {
    HKEY key = nullptr;
    RegCreateKeyW(HKEY_CURRENT_USER, kKey.c_str(), &key);
    m_key.reset(key);
  }
  ~SnapshotTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey.c_str()); }

  Snapshot Take() const { return TakeSnapshot({{m_folder.Path()}, {L"HKCU\\" + kKey}, m_leftOut}); }

  /// What `change` changes in the folder and the key.
  template <class Change>
  Lines After(Change change) const {
    const Snapshot before = Take();
    change();
    return Changes(before, Take());
  }

  void SetNumber(const wchar_t* name, DWORD number) const {
    RegSetValueExW(m_key.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
  }
  void SetText(const wchar_t* name, const std::wstring& text, DWORD type) const {
    RegSetValueExW(m_key.get(), name, 0, type, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }

  TempFolder m_folder;
  Lines m_leftOut;

 private:
  UniqueRegistryKey m_key;
};

TEST_F(SnapshotTest, IsTheSameWhileNothingChanges) {
  m_folder.Write(L"a\\b.txt", "x");
  SetNumber(L"Number", 1);
  EXPECT_FALSE(Take().empty());
  EXPECT_EQ(After([] {}), Lines{});
}

TEST_F(SnapshotTest, FindsAFileAndItsFolders) {
  const Lines found = After([this] { m_folder.Write(L"a\\b.txt", "123"); });
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0], L"+ " + m_folder.Path(L"a") + L"\\ = folder");
  EXPECT_EQ(found[1].find(L"+ " + m_folder.Path(L"a\\b.txt") + L" = 3 bytes, time "), 0u);
}

TEST_F(SnapshotTest, FindsAFileThatChangedOrIsGone) {
  m_folder.Write(L"changed", "1");
  const std::wstring gone = m_folder.Write(L"gone", "1");
  const Lines found = After([&] {
    m_folder.Write(L"changed", "12");
    DeleteFileW(gone.c_str());
  });
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].find(L"- " + gone), 0u);
  EXPECT_EQ(found[1].find(L"~ " + m_folder.Path(L"changed") + L" = 2 bytes"), 0u);
}

TEST_F(SnapshotTest, FindsAKeyWithoutValues) {
  EXPECT_EQ(After([] {
              HKEY key = nullptr;
              RegCreateKeyW(HKEY_CURRENT_USER, (kKey + L"\\Empty").c_str(), &key);
              RegCloseKey(key);
            }),
            Lines{L"+ HKCU\\" + kKey + L"\\Empty\\ = key"});
}

TEST_F(SnapshotTest, FindsAValueWithItsType) {
  SetNumber(L"Changed", 1);
  SetText(L"Retyped", L"x", REG_SZ);
  EXPECT_EQ(After([this] {
              SetNumber(L"Changed", 2);
              SetText(L"Retyped", L"x", REG_EXPAND_SZ);
              SetText(L"", L"default", REG_SZ);
            }),
            (Lines{L"+ HKCU\\" + kKey + L"\\\\ = REG_SZ default",
                   L"~ HKCU\\" + kKey + L"\\\\Changed = REG_DWORD 2, was REG_DWORD 1",
                   L"~ HKCU\\" + kKey + L"\\\\Retyped = REG_EXPAND_SZ x, was REG_SZ x"}));
}

TEST_F(SnapshotTest, PassesOverWhatIsLeftOut) {
  m_leftOut = {m_folder.Path(L"NOISE"), L"HKCU\\" + kKey + L"\\\\Clock"};
  EXPECT_EQ(After([this] {
              m_folder.Write(L"noise\\a.txt", "x");
              SetNumber(L"Clock", 1);
            }),
            Lines{});
}

TEST_F(SnapshotTest, TellsWhereAChangeIs) {
  const Lines changes = {L"+ C:\\a\\b = folder", L"- HKLM\\Software\\X\\\\ = REG_SZ 1"};
  EXPECT_EQ(ChangesBelow(changes, {L"hklm\\software\\x"}), Lines{changes[1]});
  EXPECT_EQ(ChangesNotBelow(changes, {L"hklm\\software\\x"}), Lines{changes[0]});
}

}  // namespace
