/// @file The one way of every interface call: into the journal, past the faults, to the method.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include "argument.h"
#include "services.h"

namespace cad_host {

/// Runs `body` as the method `method` of an interface: clears the results, writes the journal, asks for
/// faults, and turns exceptions into codes.
/// @return what the caller of the method gets; E_POINTER where a place for a result is missing.
HRESULT RunCall(Services& services, const std::wstring& method, std::initializer_list<Argument> arguments,
                const std::function<HRESULT()>& body) noexcept;

}  // namespace cad_host
