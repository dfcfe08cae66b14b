// Opening a document with thousands of components and properties.
#include <objbase.h>

#include "call_count.h"
#include "host_fixture.h"

namespace {

constexpr std::size_t kComponents = 5'000;
constexpr std::size_t kProperties = 10'000;

class LargeDocument : public HostTest {
 protected:
  /// An assembly with many properties, and with many components that share one part.
  std::wstring MakeLargeAssembly() {
    const std::wstring part = MakePart(L"bolt.sldprt", 3);
    cad_host::ModelFile model;
    model.type = swDocASSEMBLY;
    for (std::size_t index = 0; index < kProperties; ++index) {
      const std::wstring number = std::to_wstring(index);
      model.properties.push_back({.name = L"Property " + number, .text = L"value " + number});
    }
    for (std::size_t index = 1; index <= kComponents; ++index) {
      model.components.push_back({.name = L"bolt-" + std::to_wstring(index), .path = part, .position = {}});
    }
    return MakeFile(L"large.sldasm", model);
  }

  /// The time that the process has worked so far, in seconds.
  static double ProcessorTime() {
    FILETIME created{}, ended{}, kernel{}, user{};
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    double seconds = 0;
    for (const FILETIME& time : {kernel, user}) {
      const ULARGE_INTEGER steps = {{time.dwLowDateTime, time.dwHighDateTime}};
      seconds += static_cast<double>(steps.QuadPart) / 1e7;
    }
    return seconds;
  }
};

TEST_F(LargeDocument, OpensWithinTwoSecondsAndReadsASharedFileOnce) {
  const std::wstring path = MakeLargeAssembly();
  const CallCount<0, decltype(StgOpenStorageEx)> files_read("StgOpenStorageEx");
  const double before = ProcessorTime();
  const auto document = Host().Open(path);
  EXPECT_LT(ProcessorTime() - before, 2.0);
  EXPECT_EQ(files_read.Count(), 2) << "the assembly and the part";
  ASSERT_EQ(document->components.size(), kComponents);
  EXPECT_EQ(document->model.properties.size(), kProperties);
  for (const auto& component : document->components) {
    ASSERT_FALSE(component->IsSuppressed());
    ASSERT_EQ(component->loaded_revision, 3);
  }
}

}  // namespace
