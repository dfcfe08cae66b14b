/// @file A session of the simulated host in its own folder.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "CComBSTR.h"
#include "cad_host/host.h"
#include "temp_folder.h"

/// Ends the session after each test. The test fails if it has not released an object of the host, or has set
/// a fault that never happened.
class HostTest : public testing::Test {
 protected:
  HostTest() { Restart(); }

  void TearDown() override {
    for (const auto& held : m_host->HeldReferences()) {
      ADD_FAILURE() << "held at the end: " << testing::PrintToString(held.object) << ", " << held.count;
    }
    for (const std::wstring& fault : m_host->GetFaults().Unused())
      ADD_FAILURE() << testing::PrintToString(fault);
  }

  cad_host::Host& Host() { return *m_host; }
  cad_host::Journal& Journal() { return m_host->GetJournal(); }

  /// Ends the session and starts another one with the same state folder.
  void Restart(const std::wstring& revision = L"31.0.0") {
    m_host.reset();
    m_host = std::make_unique<cad_host::Host>(
        cad_host::HostOptions{.state_folder = m_folder.MakeFolder(L"state"), .revision = revision});
  }

  /// A model file in the test's folder.
  std::wstring MakeFile(const std::wstring& name, const cad_host::ModelFile& model) {
    std::wstring path = m_folder.Path(name);
    cad_host::WriteModelFile(path, model);
    return path;
  }
  std::wstring MakePart(const std::wstring& name, long revision = 1) {
    cad_host::ModelFile model;
    model.revision = revision;
    return MakeFile(name, model);
  }
  std::wstring MakeAssembly(const std::wstring& name) {
    cad_host::ModelFile model;
    model.type = swDocASSEMBLY;
    return MakeFile(name, model);
  }

  TempFolder m_folder;

 private:
  std::unique_ptr<cad_host::Host> m_host;
};
