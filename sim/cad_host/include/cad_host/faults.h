/// @file Faults that a test or a script injects into the host, by the name of a method.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

/// Every interface method checks for a fault first. A method is named "ISldWorks::OpenDoc6", or "OpenDoc6"
/// for that method of any interface; a query for an interface is named
/// "IModelDoc2::QueryInterface(IAssemblyDoc)". `nth` counts calls from when the fault is set; kEvery means
/// all of them.
class Faults {
 public:
  static constexpr int kEvery = 0;

  /// The method does not run. Its results are cleared (null, false, 0) and it returns `result`.
  void Fail(std::wstring method, int nth, HRESULT result);

  /// The method does not run. Its results are cleared and it returns S_OK.
  void ReturnNothing(std::wstring method, int nth = 1) { Fail(std::move(method), nth, S_OK); }

  /// The method does not run. Its results are cleared and it returns S_FALSE.
  void ReturnFalse(std::wstring method, int nth = 1) { Fail(std::move(method), nth, S_FALSE); }

  /// The method runs, but then its results are cleared and it returns S_OK.
  void HideResult(std::wstring method, int nth = 1);

  /// The method runs, and then `change` changes its results. `results` has the addresses of the results in
  /// the order of the arguments: `*static_cast<long*>(results[3]) += 2` changes a fourth result of type long.
  using Change = std::function<void(const std::vector<void*>& results)>;
  void ChangeResults(std::wstring method, int nth, Change change);

  /// The method runs and its results are returned, but it returns `result`, a failure.
  void FailWithResults(std::wstring method, int nth, HRESULT result);

  /// The method runs as usual, after `action`.
  void Before(std::wstring method, int nth, std::function<void()> action);

  /// The `index`-th call from now on, counted from 1 over all methods, fails.
  void FailCall(int index, HRESULT result) { Fail(L"", index, result); }

  /// Sets the fault that a line of text describes:
  ///
  ///     fail the 3rd OpenDoc6 with 80004005
  ///     fail every ISldWorks::CloseDoc with 8000ffff
  ///     OpenDoc6 returns no document
  ///     the 2nd ReplaceComponents2 returns S_FALSE
  ///     RemoveCommandTab hides its result
  ///
  /// Without a number, the next call is meant. "returns no ..." means the same as "returns nothing".
  /// @throws HostError quoting the text if it does not have one of these forms.
  void Add(std::wstring_view text);

  /// The faults that never happened, as lines of text; for example because the method is misspelt.
  std::vector<std::wstring> Unused() const;

  void Clear() { m_faults.clear(); }

  /// What a fault does to a call.
  struct Effect {
    bool runs = false;           ///< the method runs
    bool keeps_results = false;  ///< the caller gets the results unchanged
    HRESULT result = S_OK;       ///< what the method returns; with `change` only if it is a failure
    Change change = nullptr;     ///< changes the results of a method that runs
  };

  /// Counts a call of `method` and returns the effect of its fault; empty if there is no fault for this call.
  std::optional<Effect> Take(std::wstring_view method);

 private:
  struct Fault {
    std::wstring method;  ///< empty: any method
    int nth = 1;          ///< kEvery, or the number of the call that it happens at
    Effect effect;
    std::function<void()> action;
    int seen = 0;
    bool used = false;
  };

  void Set(std::wstring method, int nth, Effect effect, std::function<void()> action = nullptr);

  std::vector<Fault> m_faults;
};

}  // namespace cad_host
