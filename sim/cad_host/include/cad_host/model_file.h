/// @file The content of a document's file. A file of this host is an OLE compound file with streams of small
/// text tables and the standard user-defined property set. Files of other programs open too, but show no more
/// than their custom properties.
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

/// Who wrote a file.
enum class FileKind {
  kModel,     ///< this host
  kCompound,  ///< another program, as a compound file: its custom properties can be read and saved
  kOpaque,    ///< another program, in another format: nothing can be read, so it cannot be saved
};

struct ModelFile {
  swDocumentTypes_e type = swDocPART;
  FileKind kind = FileKind::kModel;
  /// Grows with each save. For a file of another program it is computed from the bytes, so that it changes
  /// with them; it is never negative.
  long revision = 1;
  CustomProperties properties;                              ///< of the document
  std::map<std::wstring, CustomProperties> configurations;  ///< each with its own properties
  std::map<std::wstring, std::wstring> quantities;          ///< values for expressions: "SW-Mass" is "1.25"
  std::vector<ComponentRecord> components;
  std::vector<MateRecord> mates;
  std::vector<ViewRecord> views;
};

/// Writes `model` as a file of this host to `path`. An existing file is replaced when the new one is whole.
/// @throws HostError naming the file if it cannot be written; an existing file stays as it was.
void WriteModelFile(const std::wstring& path, const ModelFile& model);

/// Saves a model that was read from the file `source` to `path`, which may be the same file. What this host
/// does not know in `source` keeps its bytes. A file of another program gets the streams of this host only if
/// `model` has more than properties, such as components. Sets the kind and the revision that the file has
/// then.
/// @throws HostError naming the file if it cannot be written, is opaque, or has streams of other
///         programs with the names of this host's streams; an existing file stays as it was.
void SaveModelFile(const std::wstring& path, const std::wstring& source, ModelFile& model);

/// Reads a file of any program. The type of another program's file is that of its extension.
/// @throws HostError naming the file if it is missing, damaged, in a code page that is unknown, or
///         not a file of this host and has no extension of a document.
ModelFile ReadModelFile(const std::wstring& path);

/// The document type for the extension of a file's name; swDocNONE if the extension is unknown.
swDocumentTypes_e DocumentTypeOfName(const std::wstring& path);

/// "part", "assembly", "drawing" or "document".
std::wstring DocumentTypeName(long type);

}  // namespace cad_host
