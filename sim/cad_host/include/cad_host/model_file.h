/// @file The content of a document's file: an OLE compound file with streams of small text tables and the
/// standard user-defined property set.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "cad_host/custom_property.h"
#include "host/constants.h"

namespace cad_host {

/// A point in model space, in metres.
struct Point {
  double x = 0;
  double y = 0;
  double z = 0;
};

struct ComponentRecord {
  std::wstring name;  ///< of the instance, such as "bolt-1"
  std::wstring path;
  Point position;
  long suppression = swComponentResolved;
};

struct MateRecord {
  std::wstring name;
  std::wstring first;  ///< names of component instances
  std::wstring second;
};

struct ViewRecord {
  std::wstring model;  ///< path
  std::wstring name;   ///< such as "*Front"
  Point position;
};

struct ModelFile {
  swDocumentTypes_e type = swDocPART;
  long revision = 1;                                        ///< grows with each save
  CustomProperties properties;                              ///< of the document
  std::map<std::wstring, CustomProperties> configurations;  ///< each with its own properties
  std::map<std::wstring, std::wstring> quantities;          ///< values for expressions: "SW-Mass" is "1.25"
  std::vector<ComponentRecord> components;
  std::vector<MateRecord> mates;
  std::vector<ViewRecord> views;
};

/// Writes `model` to the file `path`, which is replaced if it exists.
/// @throws HostError naming the file if it cannot be written.
void WriteModelFile(const std::wstring& path, const ModelFile& model);

/// @throws HostError naming the file if it is missing or is not a model file.
ModelFile ReadModelFile(const std::wstring& path);

/// The document type for the extension of a file's name; swDocNONE if the extension is unknown.
swDocumentTypes_e DocumentTypeOfName(const std::wstring& path);

/// "part", "assembly", "drawing" or "document".
std::wstring DocumentTypeName(long type);

}  // namespace cad_host
