/// @file The custom properties of the active document, for reading and writing.
#pragma once

#include <vector>

#include "CComBSTR.h"
#include "diagnostics/log_sites.h"
#include "host/application.h"
#include "host/custom_properties.h"

/// The log sites for the steps of ListActiveProperties that can fail.
struct ActivePropertySites {
  const LogSite& document;
  const LogSite& extension;
  const LogSite& manager;
  const LogSite& list;
};

/// The document-level properties of the active document.
struct ActiveProperties {
  ICustomPropertyManagerPtr manager;  // null if no document is open
  std::vector<CComBSTR> names;        // in the host's order; empty if the document has none
};

/// Lists the properties of the active document.
/// @return S_OK, also if no document is open; the host's code, after a log line, if a call fails.
HRESULT ListActiveProperties(const ISldWorksPtr& application, const ActivePropertySites& sites,
                             ActiveProperties& properties);
