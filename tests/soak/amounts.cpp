#include "amounts.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "gui_objects.h"
#include "handle_count.h"
#include "heap_blocks.h"
#include "thread_count.h"
#include "unix_process.h"

namespace {

constexpr int kLeastWidth = 6;

long long References(const cad_host::Host& host) {
  long long count = 0;
  for (const auto& held : host.HeldReferences()) count += static_cast<long long>(held.count);
  return count;
}

template <class Number>
long long Count(Number number) {
  return static_cast<long long>(number);
}

std::string RightAligned(const std::string& text, const Amount& amount) {
  char cell[32];
  const int width = std::max(kLeastWidth, static_cast<int>(std::strlen(amount.name))) + 2;
  std::snprintf(cell, sizeof cell, "%*s", width, text.c_str());
  return cell;
}

}  // namespace

Amounts Measure(Scene& scene, const TaskMemorySpy& spy) {
  // The simulated host and the system take from the process's heaps now and then.
  constexpr long long kSomeKibibytes = 1'024;
  constexpr long long kSomeBlocks = 200;
  cad_host::Host& host = scene.GetHost();
  return {{"private KiB", UnixCount("status", "RssAnon"), kSomeKibibytes},
          {"heap blocks", Count(HeapBlockCount()), kSomeBlocks},
          {"DLL blocks", Count(scene.Blocks().Count())},
          {"BSTRs", spy.Count()},
          {"handles", Count(HandleCount())},
          {"threads", ThreadCount()},
          {"references", References(host)},
          {"sinks", Count(host.AdvisedSinks())},
          {"groups", Count(host.Groups().size())},
          {"tabs", Count(host.Tabs().size())},
          {"GDI", Count(GdiObjectCount())},
          {"USER", Count(UserObjectCount())},
          {"temp files", Count(scene.TemporaryFiles().size())}};
}

std::string Growth(const Amounts& before, const Amounts& after) {
  std::string growth;
  for (std::size_t index = 0; index < before.size(); ++index) {
    const Amount& first = before[index];
    const Amount& last = after[index];
    if (last.count <= first.count + first.tolerance) continue;
    growth += std::string(growth.empty() ? "" : "; ") + first.name + ": " + std::to_string(first.count) +
              ", then " + std::to_string(last.count);
  }
  return growth;
}

std::string HeadOf(const Amounts& amounts) {
  std::string head;
  for (const Amount& amount : amounts) head += RightAligned(amount.name, amount);
  return head;
}

std::string RowOf(const Amounts& amounts) {
  std::string row;
  for (const Amount& amount : amounts) row += RightAligned(std::to_string(amount.count), amount);
  return row;
}
