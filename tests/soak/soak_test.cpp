// A short soak, and the proof that it sees what is wrong.
#include <gtest/gtest.h>

#include <windows.h>

#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "host/application.h"
#include "soak.h"
#include "solidworks_add_in_h.h"

namespace {

void Print(const std::string& line) { std::cout << line << "\n"; }

TEST(Soak, IsFlatInAShortTime) {
  Soak soak(1, Print);
  soak.RunCommands(150);
  soak.RunWithKilledClient(10);
  soak.RunConnections(10);
  EXPECT_EQ(soak.Faults(), std::vector<std::string>{});
}

TEST(Soak, SeesAWrongOutcome) {
  Soak soak(1, Print);
  soak.AfterEach([](Scene& scene) {
    scene.GetHost().GetFaults().Clear();
    scene.GetHost().GetFaults().Fail(L"ISldWorks::OpenDoc6", 1, E_FAIL);
  });
  soak.RunCommands(1);
  ASSERT_FALSE(soak.Faults().empty());
  EXPECT_NE(soak.Faults()[0].find("Open: "), std::string::npos) << soak.Faults()[0];
}

/// Leaves one of everything behind. The add-in's objects go with this one, so that the DLL can be unloaded.
class Leaks {
 public:
  void Leave(Scene& scene) {
    LeaveMemory();
    IUnknownPtr handler;
    EXPECT_EQ(CoCreateInstance(CLSID_BitmapHandler, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&handler)),
              S_OK);
    m_objects.push_back(handler);
    m_objects.push_back(scene.GetHost().Application());
    SysAllocString(L"left behind");
    CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread([] { Sleep(INFINITE); }).detach();
    CreateBitmap(1, 1, 1, 1, nullptr);
    CreatePopupMenu();
    wchar_t folder[MAX_PATH];
    wchar_t file[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"lef", 0, file);
  }

 private:
  static void LeaveMemory() {
    constexpr int kBlocks = 50;
    constexpr std::size_t kPageSize = 4'096;
    for (int block = 0; block < kBlocks; ++block) {
      static_cast<char*>(HeapAlloc(GetProcessHeap(), 0, kPageSize))[0] = 1;
    }
  }

  std::vector<IUnknownPtr> m_objects;
};

TEST(Soak, SeesWhatIsLeftBehind) {
  Soak soak(1, Print);
  Leaks leaks;
  soak.AfterEach([&leaks](Scene& scene) { leaks.Leave(scene); });
  soak.RunCommands(3);
  ASSERT_EQ(soak.Faults().size(), 1U);
  for (const char* const amount : {"private KiB", "heap blocks", "DLL blocks", "BSTRs", "handles", "threads",
                                   "references", "GDI", "USER", "temp files"}) {
    EXPECT_NE(soak.Faults()[0].find(amount), std::string::npos) << amount << " in " << soak.Faults()[0];
  }
}

TEST(Growth, IsToldBeyondTheTolerance) {
  EXPECT_EQ(Growth({{"a", 5, 0}, {"b", 5, 10}}, {{"a", 4, 0}, {"b", 15, 10}}), "");
  EXPECT_EQ(Growth({{"a", 5, 0}, {"b", 5, 10}}, {{"a", 6, 0}, {"b", 16, 10}}), "a: 5, then 6; b: 5, then 16");
}

}  // namespace
