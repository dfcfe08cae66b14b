#include "call.h"

#include <comdef.h>

#include <algorithm>
#include <new>
#include <vector>

#include "cad_host/host_error.h"

namespace cad_host {
namespace {

using Arguments = std::initializer_list<Argument>;

std::wstring TextOf(Arguments arguments, bool results) {
  std::wstring text;
  for (const Argument& argument : arguments) {
    if (argument.is_result != results) continue;
    text += (text.empty() ? L"" : L", ") + argument.text();
  }
  return text;
}

std::vector<void*> ResultPlaces(Arguments arguments) {
  std::vector<void*> places;
  for (const Argument& argument : arguments) {
    if (argument.is_result) places.push_back(argument.place);
  }
  return places;
}

HRESULT WithoutExceptions(Services& services, const std::function<HRESULT()>& body) {
  try {
    return body();
  } catch (const HostError& error) {
    services.journal.Note(error.Message());
    return error.Result();
  } catch (const _com_error& error) {
    return error.Error();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

HRESULT RunWithFaults(Services& services, const std::wstring& method, Arguments arguments,
                      const std::function<HRESULT()>& body, bool& fault) {
  const auto effect = services.faults.Take(method);
  fault = effect.has_value();
  if (!fault) return WithoutExceptions(services, body);
  if (effect->change) {
    const HRESULT result = WithoutExceptions(services, body);
    effect->change(ResultPlaces(arguments));
    return FAILED(effect->result) ? effect->result : result;
  }
  if (effect->runs) {
    WithoutExceptions(services, body);
    for (const Argument& argument : arguments) {
      if (argument.is_result) argument.take_back();
    }
  }
  return effect->result;
}

}  // namespace

HRESULT RunCall(Services& services, const std::wstring& method, Arguments arguments,
                const std::function<HRESULT()>& body) noexcept {
  Journal& journal = services.journal;
  const std::size_t entry = journal.Begin(JournalEntry::Kind::kCall, method, TextOf(arguments, false));
  if (!std::all_of(arguments.begin(), arguments.end(), [](const Argument& a) { return a.is_given; })) {
    journal.End(entry, E_POINTER, L"");
    return E_POINTER;
  }
  for (const Argument& argument : arguments) {
    if (argument.is_result) argument.clear();
  }
  bool fault = false;
  const HRESULT result = RunWithFaults(services, method, arguments, body, fault);
  journal.End(entry, result, TextOf(arguments, true), fault);
  return result;
}

}  // namespace cad_host
