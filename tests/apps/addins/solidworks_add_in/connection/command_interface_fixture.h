/// @file The command interface that the add-in has built in the host.
#pragma once

#include <string_view>

#include "add_in_fixture.h"

class CommandInterfaceFixture : public AddInFixture {
 protected:
  void ConnectWith(std::string_view view) {
    m_home.WriteConfiguration(L"View.json", view);
    Connect();
  }

  const cad_host::CommandGroup& Group() const { return *m_host->Groups().at(0); }

  /// The arguments of each call of the method.
  Texts ArgumentsOf(std::wstring_view method) const {
    Texts arguments;
    for (const auto& call : m_host->GetJournal().Calls(method)) arguments.push_back(call.arguments);
    return arguments;
  }
};
