/// @file The type of document that a path names.
///
/// All functions search the whole path, including folders, and ignore case.
#pragma once

#include <string_view>

#include "host/constants.h"

/// The type of the document `path`, by the first of ".sldprt", ".sldasm" and ".slddrw" that occurs in it,
/// checked in this order; swDocNONE if none of them occurs.
swDocumentTypes_e GetDocumentType(std::wstring_view path);

/// Whether ".sldprt" occurs in `path`.
bool NamesPart(std::wstring_view path);

/// Whether ".sldasm" occurs in `path`, even if ".sldprt" occurs as well.
bool NamesAssembly(std::wstring_view path);
