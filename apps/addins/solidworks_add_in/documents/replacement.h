/// @file The common steps of replace_component.cpp and cover_component.cpp.
#pragma once

#include <string_view>

#include "diagnostics/diagnostics.h"
#include "host/application.h"
#include "host/assembly.h"
#include "host/model_doc.h"

/// Shows the user that the replacement failed, then logs why.
/// @return false.
bool FailReplacement(const LogSite& site, HRESULT code, std::wstring_view detail = {});

/// The log sites for the steps of GetActiveAssembly that can fail.
struct ActiveAssemblySites {
  const LogSite& document;
  const LogSite& type;
  const LogSite& assembly;
};

/// The active assembly, as a document and as an assembly.
struct ActiveAssembly {
  IModelDoc2Ptr document;
  IAssemblyDocPtr assembly;

  explicit operator bool() const { return assembly != nullptr; }
};

/// @return the active assembly; an empty result, after a message box and a log line, if the active document
///         is not an assembly or the host fails.
/// @throws _com_error E_POINTER if no document is open; the host's code if the query for the assembly fails
///         with anything but E_NOINTERFACE.
ActiveAssembly GetActiveAssembly(const ISldWorksPtr& application, const ActiveAssemblySites& sites);

/// Makes the host replace all instances of the selected component with the file `path`.
/// @return whether the host did; if not, this was logged and shown to the user, and the host was asked to
///         close `downloaded`.
/// @param host_major the host's major version, 0 if it is not known. A host before release 2018 does not have
///        the method: the replacement fails with E_NOTIMPL.
bool ReplaceSelectedComponent(const ISldWorksPtr& application, long host_major,
                              const IAssemblyDocPtr& assembly, const std::wstring& path,
                              const std::wstring& downloaded, const LogSite& site);
