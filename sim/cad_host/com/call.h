/// @file What every interface call has in common: the journal entry and the check for faults.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include "argument.h"
#include "services.h"

namespace cad_host {

/// Runs `body` as the method `method` of an interface: clears the results, writes the journal, checks for
/// faults, and turns exceptions into codes.
/// @return the result for the caller of the method; E_POINTER if the pointer for a result is null.
HRESULT RunCall(Services& services, const std::wstring& method, std::initializer_list<Argument> arguments,
                const std::function<HRESULT()>& body) noexcept;

}  // namespace cad_host
