// A large document in the window.
#include <algorithm>
#include <functional>

#include "window_fixture.h"

namespace {

constexpr std::size_t kComponents = 5000;
constexpr std::size_t kProperties = 10000;
constexpr std::size_t kModels = 50;
constexpr std::size_t kComponentsInRow = 71;

constexpr double kLongestOpening = 2000;  // milliseconds
constexpr double kLongestStep = 50;
constexpr int kSteps = 200;

double MillisecondsOf(const std::function<void()>& action) {
  LARGE_INTEGER frequency{}, begin{}, end{};
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&begin);
  action();
  QueryPerformanceCounter(&end);
  return 1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) /
         static_cast<double>(frequency.QuadPart);
}

class SpeedTest : public WindowTest {
 protected:
  std::wstring MakeLargeAssembly() const {
    Texts models;
    for (std::size_t number = 0; number < kModels; ++number) {
      models.push_back(MakeModel(L"part " + std::to_wstring(number) + L".sldprt"));
    }
    cad_host::ModelFile model;
    model.type = swDocASSEMBLY;
    for (std::size_t number = 0; number < kComponents; ++number) {
      cad_host::ComponentRecord component;
      component.name = L"part-" + std::to_wstring(number + 1);
      component.path = models[number % kModels];
      const std::size_t row = number / kComponentsInRow;
      const std::size_t column = number % kComponentsInRow;
      component.position = {0.1 * static_cast<double>(column), 0.1 * static_cast<double>(row), 0};
      model.components.push_back(component);
    }
    for (std::size_t number = 0; number < kProperties; ++number) {
      model.properties.push_back({.name = L"Property " + std::to_wstring(number), .text = L"螺栓 M8×40"});
    }
    return MakeModel(L"large.sldasm", model);
  }

  /// The smallest of some measurements: other programs may use the processors meanwhile. Ends early when one
  /// is within the limit.
  static double Best(double limit, const std::function<double()>& measure) {
    constexpr int kMost = 5;
    double best = measure();
    for (int more = 1; more < kMost && best > limit; ++more) best = std::min(best, measure());
    return best;
  }

  /// The median time of a step that scrolls the list by a line and draws it.
  static double MedianStep(HWND list) {
    std::vector<double> times;
    for (int step = 0; step < kSteps; ++step) {
      times.push_back(MillisecondsOf([list] {
        SendMessageW(list, WM_VSCROLL, SB_LINEDOWN, 0);
        UpdateWindow(list);
      }));
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
  }
};

TEST_F(SpeedTest, ALargeDocumentOpensAndScrollsWithoutDelay) {
  ShowWithAddIn();
  const std::wstring path = MakeLargeAssembly();
  const double opening = Best(kLongestOpening, [&] {
    if (m_host->ActiveDocument()) Do({L"close", path});
    return MillisecondsOf([&] {
      Do({L"open", path});
      UpdateWindow(Window().Handle());
    });
  });
  HWND tree = Window().Tree().List();
  HWND properties = Window().Properties().List();
  EXPECT_EQ(ListView_GetItemCount(tree), static_cast<int>(kComponents) + 3);
  EXPECT_EQ(ListView_GetItemCount(properties), static_cast<int>(kProperties));
  const double tree_step = Best(kLongestStep, [&] { return MedianStep(tree); });
  const double property_step = Best(kLongestStep, [&] { return MedianStep(properties); });
  EXPECT_GE(ListView_GetTopIndex(properties), kSteps);
  const double selecting = MillisecondsOf([&] {
    Do({L"select", L"component", L"part-2500"});
    UpdateWindow(Window().Handle());
  });
  RecordProperty("opening_us", static_cast<int>(opening * 1000));
  RecordProperty("tree_step_us", static_cast<int>(tree_step * 1000));
  RecordProperty("property_step_us", static_cast<int>(property_step * 1000));
  RecordProperty("selecting_us", static_cast<int>(selecting * 1000));
  EXPECT_LE(opening, kLongestOpening);
  EXPECT_LE(tree_step, kLongestStep);
  EXPECT_LE(property_step, kLongestStep);
}

}  // namespace
