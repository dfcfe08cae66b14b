/// @file Add-ins as the host registers, loads and calls them.
#pragma once

#include <memory>
#include <string>

#include "cad_host/commands.h"
#include "host/application.h"

namespace cad_host {

/// An add-in in the registry, HKLM\SOFTWARE\SolidWorks\AddIns\{CLSID}.
struct AddInEntry {
  std::wstring clsid;  ///< as text, with braces
  std::wstring title;
  std::wstring description;
  bool loads_at_start = false;
};

/// The command manager of one add-in; its groups and tabs are found by the add-in's key.
struct AddInCommands {
  std::wstring add_in;
};

/// A loaded and connected add-in.
struct AddIn {
  AddInEntry entry;
  long cookie = 0;
  ISwAddinPtr object;
  IDispatchPtr callbacks;  ///< the object passed to SetAddinCallbackInfo
  long module_handle = 0;
  std::shared_ptr<AddInCommands> commands;

  /// The key under which the host stores its data: the class id, or the title if there is no class id.
  const std::wstring& Key() const { return entry.clsid.empty() ? entry.title : entry.clsid; }
};

/// The result of calling a callback.
struct PickResult {
  bool enabled = false;   ///< false: the item was greyed out, and nothing was called
  HRESULT result = S_OK;  ///< of Invoke
  HRESULT code = S_OK;    ///< of the exception, if `result` is DISP_E_EXCEPTION
  std::wstring source;
  std::wstring description;

  bool Succeeded() const { return enabled && SUCCEEDED(result); }
};

}  // namespace cad_host
