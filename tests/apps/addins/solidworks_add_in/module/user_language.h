/// @file The language of the user interface.
#pragma once

#include <windows.h>

/// Sets the language of this thread's user interface while it lives.
class UserLanguage {
 public:
  explicit UserLanguage(LANGID language) : m_before(GetThreadUILanguage()) { Set(language); }
  UserLanguage(const UserLanguage&) = delete;
  UserLanguage& operator=(const UserLanguage&) = delete;
  ~UserLanguage() { Set(m_before); }

 private:
  static void Set(LANGID language) {
    SetThreadUILanguage(language);
    if (GetThreadUILanguage() == language) return;
    // Wine has one language for the whole process, set by another function.
    FARPROC set = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtSetDefaultUILanguage");
    reinterpret_cast<LONG(WINAPI*)(LANGID)>(reinterpret_cast<void*>(set))(language);
  }

  LANGID m_before;
};
