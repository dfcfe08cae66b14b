#include "cad_host/model_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>

#include "base/file_attributes.h"
#include "base/system_path.h"
#include "cad_host/host_error.h"
#include "compound_file.h"
#include "directory_fields.h"
#include "paths.h"
#include "property_set.h"
#include "replacement_file.h"

namespace cad_host {
namespace {

// Streams of a file of this host. "Model" has the type and the revision; only a file with it is a file of
// this host.
constexpr const wchar_t* kModelStream = L"Model";
constexpr const wchar_t* kConfigurationsStream = L"Configurations";
constexpr const wchar_t* kQuantitiesStream = L"Quantities";
constexpr const wchar_t* kComponentsStream = L"Components";
constexpr const wchar_t* kMatesStream = L"Mates";
constexpr const wchar_t* kViewsStream = L"Views";

constexpr std::array kOwnStreams = {kModelStream, kConfigurationsStream, kQuantitiesStream, kComponentsStream,
                                    kMatesStream, kViewsStream,          kAsTypedStream};

struct TypeNames {
  swDocumentTypes_e type;
  const wchar_t* name;
  const wchar_t* extension;
};

constexpr std::array kTypes = {
    TypeNames{swDocPART, L"part", L".sldprt"},
    TypeNames{swDocASSEMBLY, L"assembly", L".sldasm"},
    TypeNames{swDocDRAWING, L"drawing", L".slddrw"},
};

void Append(Record& record, const Point& point) {
  for (const double value : {point.x, point.y, point.z}) record.push_back(DoubleText(value));
}

Point PointOf(const Record& record, std::size_t first) {
  return {DoubleOf(record, first), DoubleOf(record, first + 1), DoubleOf(record, first + 2)};
}

Records ConfigurationTable(const ModelFile& model) {
  Records records;
  for (const auto& [name, properties] : model.configurations) {
    records.push_back({name});
    for (const CustomProperty& property : properties) {
      records.push_back({name, property.name, property.text, std::to_wstring(property.type)});
    }
  }
  return records;
}

void ReadConfigurations(const Records& records, ModelFile& model) {
  for (const Record& record : records) {
    CustomProperties& properties = model.configurations[FieldOf(record, 0)];
    if (record.size() == 1) continue;
    properties.push_back({.name = FieldOf(record, 1),
                          .text = FieldOf(record, 2),
                          .type = static_cast<swCustomInfoType_e>(NumberOf(record, 3))});
  }
}

Records QuantityTable(const ModelFile& model) {
  Records records;
  for (const auto& [name, value] : model.quantities) records.push_back({name, value});
  return records;
}

Records ComponentTable(const ModelFile& model) {
  Records records;
  for (const ComponentRecord& component : model.components) {
    records.push_back({component.name, component.path, std::to_wstring(component.suppression)});
    Append(records.back(), component.position);
  }
  return records;
}

Records ViewTable(const ModelFile& model) {
  Records records;
  for (const ViewRecord& view : model.views) {
    records.push_back({view.model, view.name});
    Append(records.back(), view.position);
  }
  return records;
}

void WriteTables(const CompoundFile& file, const ModelFile& model) {
  file.WriteTable(kModelStream, {{DocumentTypeName(model.type), std::to_wstring(model.revision)}});
  file.WriteTable(kConfigurationsStream, ConfigurationTable(model));
  file.WriteTable(kQuantitiesStream, QuantityTable(model));
  file.WriteTable(kComponentsStream, ComponentTable(model));
  Records mates;
  for (const MateRecord& mate : model.mates) mates.push_back({mate.name, mate.first, mate.second});
  file.WriteTable(kMatesStream, mates);
  file.WriteTable(kViewsStream, ViewTable(model));
  WritePropertiesAsTyped(file, model.properties);
  file.Commit();
}

void ReadTables(const CompoundFile& file, ModelFile& model) {
  model.properties = ReadPropertiesAsTyped(file);
  ReadConfigurations(file.ReadTable(kConfigurationsStream), model);
  for (const Record& record : file.ReadTable(kQuantitiesStream)) {
    model.quantities[FieldOf(record, 0)] = FieldOf(record, 1);
  }
  for (const Record& record : file.ReadTable(kComponentsStream)) {
    model.components.push_back(
        {FieldOf(record, 0), FieldOf(record, 1), PointOf(record, 3), NumberOf(record, 2)});
  }
  for (const Record& record : file.ReadTable(kMatesStream)) {
    model.mates.push_back({FieldOf(record, 0), FieldOf(record, 1), FieldOf(record, 2)});
  }
  for (const Record& record : file.ReadTable(kViewsStream)) {
    model.views.push_back({FieldOf(record, 0), FieldOf(record, 1), PointOf(record, 2)});
  }
}

/// Reads type and revision. @return false if no program of this kind wrote the file.
bool ReadHeader(const CompoundFile& file, ModelFile& model) {
  const Records header = file.ReadTable(kModelStream);
  if (header.empty()) return false;
  for (const TypeNames& type : kTypes) {
    if (FieldOf(header[0], 0) != type.name) continue;
    model.type = type.type;
    model.revision = NumberOf(header[0], 1);
    return true;
  }
  return false;
}

/// A number that changes with the file's bytes (FNV-1a).
long RevisionOfBytes(const std::wstring& path) {
  constexpr std::uint32_t kStart = 2166136261;
  constexpr std::uint32_t kFactor = 16777619;
  constexpr std::uint32_t kNotNegative = 0x7fffffff;
  std::ifstream file(SystemPath(path).c_str(), std::ios::binary);
  std::uint32_t hash = kStart;
  std::array<char, 64 * 1024> bytes;
  while (file) {
    file.read(bytes.data(), bytes.size());
    std::for_each(bytes.begin(), bytes.begin() + file.gcount(),
                  [&](char byte) { hash = (hash ^ static_cast<unsigned char>(byte)) * kFactor; });
  }
  if (!file.eof()) throw HostError(path + L": cannot be read");
  return static_cast<long>(hash & kNotNegative);
}

/// A file of another program, without its properties.
ModelFile ForeignModel(const std::wstring& path, FileKind kind) {
  const swDocumentTypes_e type = DocumentTypeOfName(path);
  if (type == swDocNONE) throw HostError(path + L": is not a document");
  ModelFile model;
  model.type = type;
  model.kind = kind;
  model.revision = RevisionOfBytes(path);
  return model;
}

/// Whether a file of another program cannot keep everything in `model`.
bool NeedsTables(const ModelFile& model) {
  return !model.configurations.empty() || !model.quantities.empty() || !model.components.empty() ||
         !model.mates.empty() || !model.views.empty();
}

/// Changes the properties of another program's file, and adds the streams of this host if they are needed.
void SaveForeign(const CompoundFile& file, const std::wstring& path, ModelFile& model) {
  if (!NeedsTables(model)) {
    WriteProperties(file, model.properties);
    return file.Commit();
  }
  for (const wchar_t* const name : kOwnStreams) {
    if (!file.Has(name)) continue;
    throw HostError(path + L": cannot be saved with components or quantities: another program's \"" + name +
                    L"\" is in the file");
  }
  model.kind = FileKind::kModel;
  model.revision = 1;
  WriteTables(file, model);
}

}  // namespace

void WriteModelFile(const std::wstring& path, const ModelFile& model) {
  ReplacementFile replacement(path);
  WriteTables(CompoundFile::Create(replacement.Path(), path), model);
  replacement.Replace();
}

void SaveModelFile(const std::wstring& path, const std::wstring& source, ModelFile& model) {
  if (model.kind == FileKind::kOpaque) {
    throw HostError(source +
                    L": cannot be saved, because it is not a compound file: this host cannot change it");
  }
  ModelFile saved = model;
  ReplacementFile replacement(path);
  replacement.CopyFrom(source);
  {
    const CompoundFile file = CompoundFile::OpenToChange(replacement.Path(), path);
    if (saved.kind == FileKind::kModel) {
      ++saved.revision;
      WriteTables(file, saved);
    } else {
      SaveForeign(file, source, saved);
    }
  }
  KeepStateBitsAndTimes(source, replacement.Path(), path);
  if (saved.kind == FileKind::kCompound) saved.revision = RevisionOfBytes(replacement.Path());
  replacement.Replace();
  model.kind = saved.kind;
  model.revision = saved.revision;
}

ModelFile ReadModelFile(const std::wstring& path) {
  if (IsFile(path) && !CompoundFile::IsOne(path)) return ForeignModel(path, FileKind::kOpaque);
  const CompoundFile file = CompoundFile::OpenToRead(path);
  ModelFile model;
  if (ReadHeader(file, model)) {
    ReadTables(file, model);
  } else {
    model = ForeignModel(path, FileKind::kCompound);
    model.properties = ReadProperties(file);
  }
  return model;
}

swDocumentTypes_e DocumentTypeOfName(const std::wstring& path) {
  const std::wstring name = FileNameOf(path);
  const std::size_t dot = name.rfind(L'.');
  if (dot == std::wstring::npos) return swDocNONE;
  for (const TypeNames& type : kTypes) {
    if (SameName(name.substr(dot), type.extension)) return type.type;
  }
  return swDocNONE;
}

std::wstring DocumentTypeName(long type) {
  for (const TypeNames& known : kTypes) {
    if (known.type == type) return known.name;
  }
  return L"document";
}

}  // namespace cad_host
