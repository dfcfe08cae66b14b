/// @file Environment variables of the running test.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <utility>

/// Sets or removes an environment variable of this process, for the life of the object.
class ScopedEnvironment {
 public:
  /// @param value std::nullopt removes the variable.
  ScopedEnvironment(std::wstring name, const std::optional<std::wstring>& value)
      : m_name(std::move(name)), m_before(Get(m_name)) {
    Set(value);
  }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
  ~ScopedEnvironment() { Set(m_before); }

  /// Sets the variable to another value, or removes it.
  void Set(const std::optional<std::wstring>& value) const {
    SetEnvironmentVariableW(m_name.c_str(), value ? value->c_str() : nullptr);
  }

 private:
  static std::optional<std::wstring> Get(const std::wstring& name) {
    SetLastError(ERROR_SUCCESS);
    std::wstring value(GetEnvironmentVariableW(name.c_str(), nullptr, 0), L'\0');
    if (GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    value.resize(GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return value;
  }

  std::wstring m_name;
  std::optional<std::wstring> m_before;
};
