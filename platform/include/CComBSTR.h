/// @file An owner for a BSTR.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <oleauto.h>

#include <string_view>
#include <utility>

/// Owns one BSTR, possibly null. Copies are deep.
class CComBSTR {
 public:
  CComBSTR() = default;

  /// A BSTR of the text's full length, embedded nulls included.
  /// @throws _com_error E_OUTOFMEMORY if it cannot be allocated.
  explicit CComBSTR(std::wstring_view text)
      : m_string(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!m_string) _com_issue_error(E_OUTOFMEMORY);
  }

  CComBSTR(const CComBSTR& other) : CComBSTR() {
    if (other.m_string) *this = CComBSTR(other.View());
  }
  CComBSTR(CComBSTR&& other) noexcept : m_string(std::exchange(other.m_string, nullptr)) {}
  CComBSTR& operator=(CComBSTR other) noexcept {
    std::swap(m_string, other.m_string);
    return *this;
  }
  ~CComBSTR() { SysFreeString(m_string); }

  operator BSTR() const noexcept { return m_string; }

  /// For an out argument: frees the current string and returns the address of the pointer.
  BSTR* operator&() noexcept {
    SysFreeString(std::exchange(m_string, nullptr));
    return &m_string;
  }

  /// Takes ownership of `string`.
  void Attach(BSTR string) noexcept { SysFreeString(std::exchange(m_string, string)); }

  /// Passes ownership of the string to the caller.
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(m_string, nullptr); }

  /// The characters; empty for a null BSTR.
  std::wstring_view View() const noexcept { return {m_string ? m_string : L"", SysStringLen(m_string)}; }

 private:
  BSTR m_string = nullptr;
};
