/// @file The steps that replacing a component and covering it have in common.
#pragma once

#include <string_view>

#include "diagnostics/diagnostics.h"
#include "host/application.h"
#include "host/assembly.h"
#include "host/model_doc.h"

/// Tells the user that the replacement failed, then the log why.
/// @return false.
bool FailReplacement(const LogSite& site, HRESULT code, std::wstring_view detail = {});

/// Where the way to the active assembly can fail.
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

/// @return the active assembly; nothing, after a message and a log line, where another document is active
///         or the host fails.
/// @throws _com_error E_POINTER where no document is open; the host's code where its answer to the query
///         for the assembly is any failure but that there is none.
ActiveAssembly GetActiveAssembly(const ISldWorksPtr& application, const ActiveAssemblySites& sites);

/// Lets the host replace the selected component, in all its instances, by the file `path`.
/// @return whether the host did; where not, the user and the log have been told and the host has been
///         asked to close `downloaded`.
bool ReplaceSelectedComponent(const ISldWorksPtr& application, const IAssemblyDocPtr& assembly,
                              const std::wstring& path, const std::wstring& downloaded, const LogSite& site);
