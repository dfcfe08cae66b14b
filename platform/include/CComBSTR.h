/// @file A BSTR with an owner.
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
  /// @throws _com_error E_OUTOFMEMORY where it cannot be allocated.
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

  /// For an out argument: frees what is held and gives the place.
  BSTR* operator&() noexcept {
    SysFreeString(std::exchange(m_string, nullptr));
    return &m_string;
  }

  /// Takes over `string`.
  void Attach(BSTR string) noexcept { SysFreeString(std::exchange(m_string, string)); }

  /// Gives the string to the caller, who frees it.
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(m_string, nullptr); }

  /// The characters; empty for a null BSTR.
  std::wstring_view View() const noexcept { return {m_string ? m_string : L"", SysStringLen(m_string)}; }

 private:
  BSTR m_string = nullptr;
};
