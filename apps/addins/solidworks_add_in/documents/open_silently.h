/// @file Opening a document without a dialog.
#pragma once

#include "CComBSTR.h"
#include "host/application.h"
#include "host/constants.h"
#include "host/model_doc.h"

/// Opens the file `path` as a document of `type`, silently, in the named configuration; an empty or null name
/// means the default configuration.
/// @return the host's result. `document` stays null if the host returned no document, which can happen on
///         success, too. The host's error and warning numbers are ignored.
inline HRESULT OpenSilently(const ISldWorksPtr& application, const CComBSTR& path, long type,
                            BSTR configuration, IModelDoc2Ptr& document) {
  long errors = 0;
  long warnings = 0;
  return application->OpenDoc6(path, type, swOpenDocOptions_Silent, configuration, &errors, &warnings,
                               &document);
}
