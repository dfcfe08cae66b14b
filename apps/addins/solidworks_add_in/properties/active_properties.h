/// @file The custom properties of the active document, as the reader and the writer find them.
#pragma once

#include <vector>

#include "CComBSTR.h"
#include "diagnostics/log_sites.h"
#include "host/application.h"
#include "host/custom_properties.h"

/// Where the way to the properties can fail.
struct ActivePropertySites {
  const LogSite& document;
  const LogSite& extension;
  const LogSite& manager;
  const LogSite& list;
};

/// The document-level properties of the active document.
struct ActiveProperties {
  ICustomPropertyManagerPtr manager;  // null where no document is open
  std::vector<CComBSTR> names;        // in the host's order; empty where the document has none
};

/// Lists the properties of the active document.
/// @return S_OK, also where no document is open; the host's code, after a log line, where a call fails.
HRESULT ListActiveProperties(const ISldWorksPtr& application, const ActivePropertySites& sites,
                             ActiveProperties& properties);
