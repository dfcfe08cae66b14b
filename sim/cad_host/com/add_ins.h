/// @file Loading, connecting and calling add-ins.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cad_host/add_in.h"
#include "services.h"

namespace cad_host {

class AddIns {
 public:
  explicit AddIns(std::shared_ptr<Services> services) : m_services(std::move(services)) {}

  /// The add-ins in the registry.
  static std::vector<AddInEntry> Registered();

  /// Creates the object of a registered add-in.
  /// @throws HostError naming the add-in and the code.
  static ISwAddinPtr Load(const AddInEntry& entry);

  /// Assigns a cookie to the object and connects it; see Host::Connect.
  AddIn& Connect(const ISwAddinPtr& object, const AddInEntry& entry, IDispatch* application);

  /// Disconnects and removes the add-in. @return whether it reported that it has disconnected.
  bool Disconnect(AddIn& add_in);

  AddIn* Find(long cookie) const;
  const std::vector<std::unique_ptr<AddIn>>& All() const { return m_addIns; }

  /// Calls an enable method by name. Enabled if the name is empty or the add-in has no such method.
  ItemState StateOf(AddIn& add_in, const std::wstring& method);

  /// Calls a callback by name.
  PickResult Call(AddIn& add_in, const std::wstring& method);

 private:
  void Remove(const AddIn& add_in);

  std::shared_ptr<Services> m_services;
  std::vector<std::unique_ptr<AddIn>> m_addIns;
  long m_lastCookie = 0;
};

}  // namespace cad_host
