#include "document_type.h"

#include <string>

#include "CStringHelper.h"

namespace {

bool Contains(std::wstring_view path, std::wstring_view pattern) {
  return CStringHelper::FindStringNoCase(path, pattern) != std::wstring::npos;
}

}  // namespace

bool NamesPart(std::wstring_view path) { return Contains(path, L".sldprt"); }

bool NamesAssembly(std::wstring_view path) { return Contains(path, L".sldasm"); }

swDocumentTypes_e GetDocumentType(std::wstring_view path) {
  if (NamesPart(path)) return swDocPART;
  if (NamesAssembly(path)) return swDocASSEMBLY;
  if (Contains(path, L".slddrw")) return swDocDRAWING;
  return swDocNONE;
}
