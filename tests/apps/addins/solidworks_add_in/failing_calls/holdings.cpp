#include "holdings.h"

#include <atomic>
#include <stdexcept>

#include "handle_count.h"

namespace {

std::atomic<long> task_blocks = 0;

// Lives as long as the program; the system holds it while it is registered.
class Spy final : public IMallocSpy {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = iid == IID_IUnknown || iid == IID_IMallocSpy ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    if (block) ++task_blocks;
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override {
    if (block && spied) --task_blocks;
    return block;
  }
  STDMETHODIMP_(void) PostFree(BOOL) override {}
  STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** passed, BOOL spied) override {
    *passed = block;
    if (block && spied) --task_blocks;
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override {
    if (block) ++task_blocks;
    return block;
  }
  STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int result) override { return result; }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}
};

Spy spy_object;

}  // namespace

extern "C" void WINAPI SetOaNoCache();

TaskMemorySpy::TaskMemorySpy() {
  SetOaNoCache();
  task_blocks = 0;
  if (FAILED(CoRegisterMallocSpy(&spy_object))) throw std::runtime_error("the system takes no spy");
}

TaskMemorySpy::~TaskMemorySpy() { CoRevokeMallocSpy(); }

long TaskMemorySpy::Count() const { return task_blocks; }

const char* NameOf(Held held) {
  switch (held) {
    case Held::kBlocks:
      return "blocks of the C runtime";
    case Held::kTaskBlocks:
      return "blocks of the task allocator";
    case Held::kHandles:
      return "handles";
    case Held::kReferences:
      return "references to the host";
    case Held::kTemporaryFiles:
      return "temporary files";
  }
  return "";
}

std::vector<Held> Holdings::MoreThan(const Holdings& before) const {
  std::vector<Held> more;
  for (std::size_t kind = 0; kind < kHeldKinds; ++kind) {
    if (counts[kind] > before.counts[kind]) more.push_back(static_cast<Held>(kind));
  }
  return more;
}

Holdings CountHoldings(Stage& stage, const TaskMemorySpy& spy) {
  Holdings now;
  now.Of(Held::kBlocks) = static_cast<long>(stage.Blocks().Count());
  now.Of(Held::kTaskBlocks) = spy.Count();
  now.Of(Held::kHandles) = static_cast<long>(HandleCount());
  for (const auto& held : stage.GetHost().HeldReferences()) {
    now.Of(Held::kReferences) += static_cast<long>(held.count);
  }
  now.Of(Held::kTemporaryFiles) = static_cast<long>(stage.TemporaryFiles().size());
  return now;
}
