/// @file Opening a document without a dialog.
#pragma once

#include "CComBSTR.h"
#include "host/application.h"
#include "host/constants.h"
#include "host/model_doc.h"

/// Opens the file `path` as a document of `type`, silently, in the named configuration; an empty or null
/// name stands for the default one.
/// @return the host's result. `document` stays null where the host gave none, also on a success. The
///         host's error and warning numbers are not told.
inline HRESULT OpenSilently(const ISldWorksPtr& application, const CComBSTR& path, long type,
                            BSTR configuration, IModelDoc2Ptr& document) {
  long errors = 0;
  long warnings = 0;
  return application->OpenDoc6(path, type, swOpenDocOptions_Silent, configuration, &errors, &warnings,
                               &document);
}
