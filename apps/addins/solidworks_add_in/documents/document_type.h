/// @file Which type of document a path names.
///
/// All tests look anywhere in the path, folders included, and without regard to case.
#pragma once

#include <string_view>

#include "host/constants.h"

/// The type of document that `path` names: by ".sldprt", ".sldasm", ".slddrw", looked for in that order;
/// swDocNONE without any of them.
swDocumentTypes_e GetDocumentType(std::wstring_view path);

/// Whether ".sldprt" occurs in `path`.
bool NamesPart(std::wstring_view path);

/// Whether ".sldasm" occurs in `path`, also where ".sldprt" does.
bool NamesAssembly(std::wstring_view path);
