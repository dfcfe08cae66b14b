/// @file Faults of the host, switched on by name.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

/// Every call of an interface method asks here first. A method is named "ISldWorks::OpenDoc6", or
/// "OpenDoc6" for that method of any interface; a query for an interface is named
/// "IModelDoc2::QueryInterface(IAssemblyDoc)". `nth` counts calls from when the fault is set; kEvery means
/// all of them.
class Faults {
 public:
  static constexpr int kEvery = 0;

  /// The call does nothing, gives nothing and answers `result`.
  void Fail(std::wstring method, int nth, HRESULT result);

  /// The call does nothing, gives nothing (null, false, 0) and answers S_OK.
  void ReturnNothing(std::wstring method, int nth = 1) { Fail(std::move(method), nth, S_OK); }

  /// The call does nothing, gives nothing and answers S_FALSE.
  void ReturnFalse(std::wstring method, int nth = 1) { Fail(std::move(method), nth, S_FALSE); }

  /// The call does what it should and then hides it: it gives nothing and answers S_OK.
  void HideResult(std::wstring method, int nth = 1);

  /// The call does what it should, and then `change` changes what it gives: `results` are the places of the
  /// results in the order of the arguments, so that `*static_cast<long*>(results[3]) += 2` makes a fourth
  /// result of type long wrong.
  using Change = std::function<void(const std::vector<void*>& results)>;
  void ChangeResults(std::wstring method, int nth, Change change);

  /// The call answers as ever, after `action`.
  void Before(std::wstring method, int nth, std::function<void()> action);

  /// The `index`-th call from now on, counted from 1 over all methods, fails.
  void FailCall(int index, HRESULT result) { Fail(L"", index, result); }

  /// Sets the fault that a line of text tells:
  ///
  ///     fail the 3rd OpenDoc6 with 80004005
  ///     fail every ISldWorks::CloseDoc with 8000ffff
  ///     OpenDoc6 returns no document
  ///     the 2nd ReplaceComponents2 returns S_FALSE
  ///     RemoveCommandTab hides its result
  ///
  /// Without a number, the next call is meant. "returns no ..." and "returns nothing" are one.
  /// @throws HostError that quotes a text that is none of these.
  void Add(std::wstring_view text);

  /// The faults that have not happened, as lines: a misspelt method shows here.
  std::vector<std::wstring> Unused() const;

  void Clear() { m_faults.clear(); }

  /// What a call is to do; nothing where no fault is set for it.
  struct Effect {
    bool runs = false;   ///< the method itself runs
    bool gives = false;  ///< what it gives reaches the caller
    HRESULT result = S_OK;
    Change change = nullptr;  ///< where the method runs: what is done to what it gives
  };

  /// Counts a call of `method` and gives the fault that is due.
  std::optional<Effect> Take(std::wstring_view method);

 private:
  struct Fault {
    std::wstring method;  ///< empty for any
    int nth = 1;          ///< kEvery, or the call that it happens at
    Effect effect;
    std::function<void()> action;
    int seen = 0;
    bool used = false;
  };

  void Set(std::wstring method, int nth, Effect effect, std::function<void()> action = nullptr);

  std::vector<Fault> m_faults;
};

}  // namespace cad_host
