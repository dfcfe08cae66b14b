// That nothing is left out of the sweeps, and that they see what they are to see.
#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "expectations.h"
#include "import_patch.h"
#include "slot_table.h"
#include "solidworks_add_in_h.h"
#include "sweep.h"

_COM_SMARTPTR_TYPEDEF(ISolidWorksAddIn, __uuidof(ISolidWorksAddIn));

namespace {

/// The calls of a good run of each scenario.
struct AllCalls {
  AllCalls() {
    for (const Scenario& scenario : AllScenarios()) {
      const Sweep sweep(scenario);
      for (const auto& [function, calls] : sweep.CallsOfImports()) imports[function] += calls;
      host.insert(sweep.CallsOfHost().begin(), sweep.CallsOfHost().end());
      AddNames(scenario.name, sweep);
      functions = sweep.Functions();
    }
  }

  /// Notes the calls as tables name them: "call 2 of CopyFileW".
  void AddNames(const char* scenario, const Sweep& sweep) {
    std::map<std::string, int> counts = sweep.CallsOfImports();
    for (const std::wstring& method : sweep.CallsOfHost())
      ++counts[std::string(method.begin(), method.end())];
    for (const auto& [function, count] : counts) {
      for (int nth = 1; nth <= count; ++nth) {
        named[scenario].insert("call " + std::to_string(nth) + " of " + function);
      }
    }
  }

  std::map<std::string, int> imports;
  std::set<std::wstring> host;
  std::map<std::string, std::set<std::string>> named;
  std::vector<std::string> functions;
};

const AllCalls& Calls() {
  static const AllCalls calls;
  return calls;
}

std::set<std::string> NamesIn(std::span<const UnsweptFunctions> groups) {
  std::set<std::string> names;
  for (const UnsweptFunctions& group : groups) names.insert(group.functions.begin(), group.functions.end());
  return names;
}

std::set<std::string> FunctionsThatFail() {
  std::set<std::string> names;
  for (const auto failures : {SystemFailures(), MemoryFailures()}) {
    for (const CallFailure& failure : failures) names.insert(failure.function);
  }
  return names;
}

TEST(FailingCalls, LeaveOutNoFunctionThatTheDllImports) {
  const auto fails = FunctionsThatFail();
  const auto cannot_fail = NamesIn(FunctionsThatCannotFail());
  const auto not_called = NamesIn(FunctionsThatAreNotCalled());
  for (const std::string& function : Calls().functions) {
    const bool is_called = Calls().imports.contains(function);
    EXPECT_EQ(fails.contains(function) + cannot_fail.contains(function) + not_called.contains(function), 1)
        << function << ", which is " << (is_called ? "called" : "not called")
        << ", has not one row in the tables";
    EXPECT_FALSE(is_called && not_called.contains(function)) << function << " is called";
    EXPECT_FALSE(!is_called && fails.contains(function)) << function << " is not called, so it never fails";
  }
}

TEST(FailingCalls, NameOnlyFunctionsThatTheDllImports) {
  const std::set<std::string> imported(Calls().functions.begin(), Calls().functions.end());
  for (const auto& names :
       {FunctionsThatFail(), NamesIn(FunctionsThatCannotFail()), NamesIn(FunctionsThatAreNotCalled())}) {
    for (const std::string& name : names) EXPECT_TRUE(imported.contains(name)) << name;
  }
}

TEST(FailingCalls, LeaveOutNoMethodOfTheHost) {
  std::set<std::string> not_called;
  for (const char* method : HostMethodsThatAreNotCalled()) not_called.insert(method);
  for (const SlotRow& row : SlotTable()) {
    const std::string name = std::string(row.interface_name) + "::" + row.method;
    const bool is_called = Calls().host.contains(std::wstring(name.begin(), name.end()));
    EXPECT_NE(is_called, not_called.contains(name)) << name << (is_called ? " is called" : " is not called");
  }
}

TEST(FailingCalls, AreThereForEachPrescribedOutcome) {
  for (const Prescribed& row : PrescribedOutcomes()) {
    std::istringstream scenarios{std::string(row.scenarios)};
    for (std::string scenario; scenarios >> scenario;) {
      EXPECT_TRUE(Calls().named.contains(scenario)) << scenario;
      EXPECT_TRUE(Calls().named.at(scenario).contains(std::string(row.call))) << scenario << ": " << row.call;
    }
  }
}

/// While it lives, the DLL has no memory for the exception that it throws next.
class NoMemoryForException {
 public:
  explicit NoMemoryForException(HMODULE dll) : m_patch(dll, "malloc", Refuse) { refused = 0; }

 private:
  static void* Refuse(std::size_t size) {
    constexpr int kAllocations = 1;  // the exception itself, which the runtime keeps a place for
    return ++refused > kAllocations ? std::malloc(size) : nullptr;
  }

  static inline int refused = 0;
  const ImportPatch m_patch;
};

/// The first exception of a thread needs memory beside that of the exception.
TEST(FirstException, DoesNotEndTheHostIfThereIsNoMemoryForIt) {
  Stage stage;
  stage.Reload();
  ISolidWorksAddInPtr add_in;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in)), S_OK);
  const NoMemoryForException fault(stage.Dll().Handle());
  EXPECT_EQ(add_in->PlmWf(), E_POINTER);
}

TEST(TaskMemorySpy, CountsTextsThatAreHeld) {
  const TaskMemorySpy spy;
  BSTR text = SysAllocString(L"a text of no special size");
  EXPECT_EQ(spy.Count(), 1);
  SysFreeString(text);
  EXPECT_EQ(spy.Count(), 0);
}

TEST(BlockLedger, ListsWhatTheDllHolds) {
  Stage stage;
  const std::size_t mark = stage.Blocks().Mark();
  stage.BeLoggedIn();
  EXPECT_GT(stage.Blocks().Count(), 0u);
  EXPECT_NE(stage.Blocks().Since(mark), "");
}

}  // namespace
