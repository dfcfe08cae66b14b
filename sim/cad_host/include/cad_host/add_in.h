/// @file Add-ins as the host registers, loads and calls them.
#pragma once

#include <memory>
#include <string>

#include "cad_host/commands.h"
#include "host/application.h"

namespace cad_host {

/// An add-in of the registry, HKLM\SOFTWARE\SolidWorks\AddIns\{CLSID}.
struct AddInEntry {
  std::wstring clsid;  ///< as text, with braces
  std::wstring title;
  std::wstring description;
  bool loads_at_start = false;
};

/// The command manager that one add-in gets; everything in it is found by the add-in's key.
struct AddInCommands {
  std::wstring add_in;
};

/// A loaded and connected add-in.
struct AddIn {
  AddInEntry entry;
  long cookie = 0;
  ISwAddinPtr object;
  IDispatchPtr callbacks;  ///< what SetAddinCallbackInfo gave
  long module_handle = 0;
  std::shared_ptr<AddInCommands> commands;

  /// What the host remembers it by: the class id, or the title where there is none.
  const std::wstring& Key() const { return entry.clsid.empty() ? entry.title : entry.clsid; }
};

/// What became of calling a callback.
struct PickResult {
  bool enabled = false;   ///< false: the item was greyed out, and nothing was called
  HRESULT result = S_OK;  ///< of Invoke
  HRESULT code = S_OK;    ///< the exception's, where `result` is DISP_E_EXCEPTION
  std::wstring source;
  std::wstring description;

  bool Succeeded() const { return enabled && SUCCEEDED(result); }
};

}  // namespace cad_host
