/// @file The COM object of a part of the host's state.
#pragma once

#include <memory>
#include <string>
#include <tuple>
#include <utility>

#include "call.h"
#include "full_size.h"
#include "host_object.h"

namespace cad_host {

/// A COM object that implements `Interfaces` for a `State` that it does not own. The first interface is the
/// object's identity. When the state is gone (a closed document, an ended session), every call returns
/// RPC_E_DISCONNECTED.
template <class State, class... Interfaces>
class ComObject : public HostObject, public FullSize<Interfaces>... {
 public:
  using Identity = std::tuple_element_t<0, std::tuple<Interfaces...>>;

  ComObject(std::shared_ptr<Services> services, const std::shared_ptr<State>& state)
      : HostObject(std::move(services)), m_state(state) {}

  /// Whether this is the object of `state`.
  bool IsOf(const std::shared_ptr<State>& state) const { return m_state.lock() == state; }

  /// The state; null if it is gone.
  std::shared_ptr<State> GetState() const { return m_state.lock(); }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid == kId) {
      *object = static_cast<HostObject*>(this);
      return S_OK;
    }
    const std::wstring method =
        InterfaceName(__uuidof(Identity)) + L"::QueryInterface(" + InterfaceName(iid) + L")";
    return RunCall(*SharedServices(), method, {Out(reinterpret_cast<IUnknown**>(object))}, [&] {
      *object = Find(iid);
      if (!*object) return E_NOINTERFACE;
      AddReference();
      return S_OK;
    });
  }
  STDMETHODIMP_(ULONG) AddRef() override { return AddReference(); }
  STDMETHODIMP_(ULONG) Release() override { return DropReference(); }

 protected:
  /// Runs `body`, which takes the state and returns an HRESULT, as the method `method`; see RunCall.
  template <class Body>
  HRESULT Call(const wchar_t* method, std::initializer_list<Argument> arguments, Body&& body) {
    return RunCall(*SharedServices(), method, arguments, [&]() -> HRESULT {
      const std::shared_ptr<State> state = m_state.lock();
      return state ? body(*state) : RPC_E_DISCONNECTED;
    });
  }

  /// The session; it exists as long as the state exists.
  std::shared_ptr<HostState> Session() const { return SharedServices()->host.lock(); }

 private:
  void* Find(REFIID iid) {
    auto* const identity = static_cast<FullSize<Identity>*>(this);
    if (iid == __uuidof(IUnknown)) return identity;
    if constexpr (std::is_base_of_v<IDispatch, Identity>) {
      if (iid == __uuidof(IDispatch)) return identity;
    }
    void* found = nullptr;
    ((iid == __uuidof(Interfaces) && (found = static_cast<FullSize<Interfaces>*>(this))), ...);
    return found;
  }

  std::weak_ptr<State> m_state;
};

/// The object of `state`, with a reference for the caller. An existing object is used again, so that a state
/// has one identity.
template <class ObjectType, class State>
ObjectType* ObjectFor(const std::shared_ptr<Services>& services, const std::shared_ptr<State>& state) {
  for (HostObject* const living : services->objects) {
    auto* const object = dynamic_cast<ObjectType*>(living);
    if (!object || !object->IsOf(state)) continue;
    object->AddRef();
    return object;
  }
  auto* const object = new ObjectType(services, state);
  object->AddRef();
  return object;
}

}  // namespace cad_host
