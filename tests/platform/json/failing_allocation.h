/// @file Simulates a lack of memory at every allocation of a call in turn. A program that uses this has its
/// own operators new and delete.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

/// How many more blocks this thread has allocated with `new` than freed.
std::ptrdiff_t AllocatedBlocks();

/// Which allocations of a call fail.
struct AllocationFault {
  std::size_t first = 0;  ///< counted from 1; 0: none fails
  bool all_later = false;
};

/// One attempt of a test. It runs the code under test with `attempt([&] { ... })`; only there, allocations by
/// `new` of this thread fail.
class Attempt {
 public:
  explicit Attempt(AllocationFault fault) : m_fault(fault) {}

  bool Fails() const { return m_fault.first != 0; }
  bool AllLaterFail() const { return m_fault.all_later; }

  /// How many allocations the code under test has tried.
  std::size_t Count() const { return m_count; }

  template <typename Call>
  decltype(auto) operator()(Call&& call) {
    const Armed armed(m_fault, m_count);
    return call();
  }

 private:
  class Armed {
   public:
    Armed(AllocationFault fault, std::size_t& count);
    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;
    ~Armed();

   private:
    std::size_t& m_count;
  };

  AllocationFault m_fault;
  std::size_t m_count = 0;
};

/// Calls `test` with an attempt without a fault; then with attempts whose first, second, ... and last
/// allocation fails, alone and together with all later ones. Expects that the code under test allocates, and
/// that no attempt leaks.
template <typename Test>
void FailEachAllocation(Test&& test) {
  Attempt good({});
  test(good);
  EXPECT_GT(good.Count(), 0u);

  for (const bool all_later : {false, true}) {
    for (std::size_t first = 1; first <= good.Count() && !testing::Test::HasFailure(); ++first) {
      SCOPED_TRACE("allocation " + std::to_string(first) + " of " + std::to_string(good.Count()) +
                   (all_later ? " and all later ones fail" : " fails"));
      const std::ptrdiff_t before = AllocatedBlocks();
      Attempt attempt({first, all_later});
      test(attempt);
      EXPECT_EQ(AllocatedBlocks(), before) << "memory is leaked";
    }
  }
}
