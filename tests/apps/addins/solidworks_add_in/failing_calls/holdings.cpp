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

std::string Holdings::MoreThan(const Holdings& before) const {
  std::string text;
  const auto compare = [&text](const char* what, long now, long then) {
    if (now > then) text += std::string(text.empty() ? "" : ", ") + std::to_string(now - then) + " " + what;
  };
  compare("blocks of the C runtime", static_cast<long>(blocks), static_cast<long>(before.blocks));
  compare("blocks of the task allocator", task_blocks, before.task_blocks);
  compare("handles", static_cast<long>(handles), static_cast<long>(before.handles));
  compare("references to the host", static_cast<long>(host_objects), static_cast<long>(before.host_objects));
  compare("temporary files", static_cast<long>(temporary_files), static_cast<long>(before.temporary_files));
  return text;
}

Holdings CountHoldings(Stage& stage, const TaskMemorySpy& spy) {
  std::size_t references = 0;
  for (const auto& held : stage.GetHost().HeldReferences()) references += held.count;
  return {stage.Blocks().Count(), spy.Count(), HandleCount(), references, stage.TemporaryFiles().size()};
}
