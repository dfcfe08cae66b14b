/// @file Watching and failing the calls of all functions that a module imports.
#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Stands between a loaded module and the functions that it imports by name. It counts the module's calls,
/// and makes one of them fail. It need not know the functions' types: a few bytes of code for each function
/// choose what runs, and then that runs in the function's stead, with the arguments where they are.
///
/// Only the calls of the thread that opened the gate are counted and fail; others pass.
class ImportGate {
 public:
  explicit ImportGate(HMODULE module);
  ImportGate(const ImportGate&) = delete;
  ImportGate& operator=(const ImportGate&) = delete;
  ~ImportGate();

  /// The names of the functions, each once.
  std::vector<std::string> Functions() const;

  /// From now on the module calls `target`, of the same type, instead of `function`.
  /// @throws std::runtime_error with the name of the function if the module does not import it.
  template <class Function>
  void Redirect(std::string_view function, Function* target) {
    Find(function).target = reinterpret_cast<const void*>(target);
  }

  /// Counts from 0; no call fails.
  void Open();

  /// Counts from 0. Instead of the `nth` call of `function` runs `failing`, which answers as the function
  /// does when it fails. It may take the same arguments.
  void Open(std::string_view function, int nth, const void* failing);

  /// Calls pass uncounted.
  void Close();

  /// Whether the call that was to fail came.
  bool HasFailed() const { return m_hasFailed; }

  /// How often `function` was called since the gate was opened.
  int CallsOf(std::string_view function) const { return Find(function).calls; }

 private:
  struct Function {
    std::string name;
    ImportGate* gate;
    ULONGLONG original;
    const void* target;
    int calls = 0;
    std::vector<ULONGLONG*> slots;
  };

  static const void* Choose(Function& called) noexcept;

  Function& Find(std::string_view name) const;
  void Add(const char* name, ULONGLONG* slot);
  void Write(unsigned char* code, const Function& function) const;

  std::vector<std::unique_ptr<Function>> m_functions;
  unsigned char* m_code = nullptr;
  DWORD m_thread = 0;  // no thread has this id
  const Function* m_failed = nullptr;
  int m_nth = 0;
  const void* m_failing = nullptr;
  bool m_hasFailed = false;
};
