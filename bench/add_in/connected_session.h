/// @file The add-in from its DLL in the simulated host, with a bare pipe in the place of the PLM client.
#pragma once

#include <stdexcept>
#include <string>

#include "bench_home.h"
#include "cad_host/host.h"
#include "peers/pipe_peer.h"

/// A host, and a server that answers every command with one text. The DLL must be registered.
class ConnectedSession {
 public:
  /// @param pipe a name that no other session of this program has.
  /// @param answer as JSON text within quotes.
  ConnectedSession(const std::string& pipe, std::string answer)
      : m_server(std::wstring(pipe.begin(), pipe.end()), std::move(answer)) {
    m_home.Configure(L"PlmClient.json", "{\"pipe\":\"" + pipe + "\"}");
  }
  ConnectedSession(const ConnectedSession&) = delete;
  ConnectedSession& operator=(const ConnectedSession&) = delete;
  ~ConnectedSession() {
    if (m_addIn) m_host.Disconnect(*m_addIn);
  }

  /// Loads the DLL and connects the add-in.
  void Connect() { m_addIn = &m_host.Connect(L"TAVO SolidWorks Integration"); }

  /// The user picks an item. @throws std::runtime_error if it does not succeed.
  void Pick(const std::wstring& item) {
    if (!m_host.Pick(*m_addIn, item).Succeeded()) throw std::runtime_error("a command fails");
  }

  cad_host::Host& Host() { return m_host; }

  /// A folder for files of the host.
  const TempFolder& Folder() const { return m_home.Folder(); }

 private:
  PipeServer m_server;
  BenchHome m_home;
  cad_host::Host m_host;
  cad_host::AddIn* m_addIn = nullptr;
};
