// Hundreds of connections in one process, through COM and the registry, leave nothing behind. The counters
// are tested first: each sees one object that is left behind on purpose.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "add_in_fixture.h"
#include "folder_tree.h"
#include "gui_objects.h"
#include "handle_count.h"
#include "heap_blocks.h"
#include "thread_count.h"
#include "views.h"

namespace {

TEST(Counters, SeeAGdiObject) {
  const std::size_t before = GdiObjectCount();
  HBITMAP bitmap = CreateBitmap(1, 1, 1, 1, nullptr);
  EXPECT_EQ(GdiObjectCount(), before + 1);
  DeleteObject(bitmap);
  EXPECT_EQ(GdiObjectCount(), before);
}

TEST(Counters, SeeAMenu) {
  const std::size_t before = UserObjectCount();
  HMENU menu = CreatePopupMenu();
  EXPECT_EQ(UserObjectCount(), before + 1);
  DestroyMenu(menu);
  EXPECT_EQ(UserObjectCount(), before);
}

TEST(Counters, SeeAnIcon) {
  const std::size_t before = UserObjectCount();
  const std::vector<BYTE> bits(32);
  HICON icon = CreateIcon(nullptr, 16, 16, 1, 1, bits.data(), bits.data());
  EXPECT_EQ(UserObjectCount(), before + 1);
  DestroyIcon(icon);
  EXPECT_EQ(UserObjectCount(), before);
}

HWND MakeWindow(HWND parent) {
  return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, parent, nullptr, nullptr, nullptr);
}

TEST(Counters, SeeAWindow) {
  HWND first = MakeWindow(nullptr);  // with the first one of a thread, the system makes one of its own
  for (HWND parent : {HWND{nullptr}, HWND_MESSAGE}) {
    const std::size_t before = UserObjectCount();
    HWND window = MakeWindow(parent);
    EXPECT_EQ(UserObjectCount(), before + 1) << "parent " << parent;
    DestroyWindow(window);
    EXPECT_EQ(UserObjectCount(), before) << "parent " << parent;
  }
  DestroyWindow(first);
}

TEST(Counters, SeeAHandle) {
  const std::size_t before = HandleCount();
  {
    const UniqueHandle event = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    EXPECT_EQ(HandleCount(), before + 1);
  }
  EXPECT_EQ(HandleCount(), before);
}

/// Something that connections could leave behind, and how much of it there is.
struct Amount {
  const char* what;
  std::size_t count;
};
using Amounts = std::vector<Amount>;

class RepeatedConnection : public AddInFixture {
 protected:
  RepeatedConnection() { m_home.WriteConfiguration(L"View.json", ViewWithItems(2)); }

  /// Connects and disconnects `count` times, with `action` in between.
  void Repeat(int count, const std::function<void()>& action) {
    for (int round = 0; round < count; ++round) {
      Connect();
      action();
      ASSERT_TRUE(Disconnect());
      m_host->GetJournal().Clear();
    }
  }

  /// Ends the PLM client, which remembers all requests, and starts another; so it does not count.
  Amounts Measure() {
    ServeWith(std::ref(m_script));
    return {{"references to the host", m_host->HeldReferences().size()},
            {"event sinks", m_host->AdvisedSinks()},
            {"command groups", m_host->Groups().size()},
            {"command tabs", m_host->Tabs().size()},
            {"GDI objects", GdiObjectCount()},
            {"USER objects", UserObjectCount()},
            {"temporary files", ListTree(m_home.Folder(), L"tmp").size()},
            {"threads", static_cast<std::size_t>(ThreadCount())},
            {"handles", HandleCount()},
            {"blocks of memory", HeapBlockCount()}};
  }

  /// One more than what is no leak, which is one for each round: the system's libraries keep some memory now
  /// and then, and a lock makes its event when two threads meet in it for the first time.
  static std::size_t MayGrow(std::string_view what, std::size_t rounds) {
    constexpr std::size_t kLocks = 5;
    if (what == "blocks of memory") return rounds;
    return what == "handles" ? 1 + kLocks : 1;
  }

  /// The first connections set up what stays for the whole process, such as the log. After them, nothing may
  /// grow.
  void ExpectNothingLeftBy(const std::function<void()>& action) {
    constexpr int kFirst = 20;
    constexpr int kRounds = 500;
    Repeat(kFirst, action);
    const Amounts before = Measure();
    Repeat(kRounds, action);
    const Amounts after = Measure();
    std::cout << "after " << kFirst << " connections and after " << kRounds << " more:\n";
    for (std::size_t index = 0; index < before.size(); ++index) {
      const Amount& first = before[index];
      const Amount& last = after[index];
      std::cout << "  " << first.what << ": " << first.count << ", " << last.count << "\n";
      EXPECT_LT(last.count, first.count + MayGrow(first.what, kRounds)) << first.what;
    }
  }
};

TEST_F(RepeatedConnection, LeavesNothingBehind) {
  ExpectNothingLeftBy([] {});
}

TEST_F(RepeatedConnection, LeavesNothingBehindWithACommandPickedInEach) {
  ExpectNothingLeftBy([this] { EXPECT_TRUE(Pick(L"PlmLogin").Succeeded()); });
}

}  // namespace
