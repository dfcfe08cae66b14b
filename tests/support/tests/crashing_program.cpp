// A test program with tests that crash or hang, for crash_report_test.cpp.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <thread>

#include "program_folder.h"

namespace {

// Volatile, so that neither the compiler nor the static analysis sees the faults.
int* volatile null_pointer = nullptr;
void (*volatile null_function)() = nullptr;
volatile bool always = true;

// Not checked by the compiler in the hardened build: the system shall meet it.
__attribute__((no_sanitize("undefined"))) int ReadDeepest(const int* number) { return *number; }
int ReadDeeper(const int* number) { return ReadDeepest(number) + 1; }
int ReadDeep(const int* number) { return ReadDeeper(number) + 1; }

TEST(Fault, ReadsNull) { EXPECT_EQ(ReadDeep(null_pointer), 2); }

// The DLL writes the result to the address.
TEST(Fault, IsInTheAddIn) {
  const HMODULE dll = LoadLibraryW(InBin(L"solidworks_add_in.dll").c_str());
  const auto get = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(dll, "DllGetClassObject")));
  const GUID none{};
  EXPECT_EQ(get(none, none, reinterpret_cast<void**>(always ? 8 : 0)), S_OK);
}

void CallNull() { null_function(); }

TEST(Fault, CallsNull) { CallNull(); }

void ThrowDeepest() { throw std::runtime_error("an exception that nothing catches"); }

TEST(Fault, ThrowsOutOfAThread) { std::thread(ThrowDeepest).join(); }

void Abort() { std::abort(); }

TEST(Fault, Aborts) { Abort(); }

void SleepDeepest() { Sleep(INFINITE); }

TEST(Fault, SleepsForEver) { SleepDeepest(); }

TEST(Fault, WaitsForAThreadThatSleepsForEver) { std::thread(SleepDeepest).join(); }

TEST(Fault, SleepsForEverWithTheHeapLocked) {
  HeapLock(GetProcessHeap());
  SleepDeepest();
}

int Recurse(int depth) { return always ? Recurse(depth + 1) + 1 : depth; }

TEST(Fault, OverflowsTheStack) { EXPECT_EQ(Recurse(0), 0); }

// What the heap keeps for itself lies before the block.
void FreeDamagedBlock() {
  char* volatile block = new char[40];
  std::fill_n(block - 8, 8, '\xFF');
  delete[] block;
}

TEST(Fault, DamagesABlock) { FreeDamagedBlock(); }

TEST(Fault, WritesIntoAFreedBlock) {
  char* volatile block = new char[64];
  delete[] block;
  block[40] = 'x';
}

void FreeBlock(const char* block) { delete[] block; }

TEST(Fault, FreesABlockTwice) {
  const char* volatile block = new char[64];
  FreeBlock(block);
  FreeBlock(block);
}

TEST(Fault, IsMissing) { EXPECT_TRUE(always); }

}  // namespace
