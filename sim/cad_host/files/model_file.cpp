#include "cad_host/model_file.h"

#include <array>

#include "cad_host/host_error.h"
#include "compound_file.h"
#include "paths.h"
#include "property_set.h"

namespace cad_host {
namespace {

// Streams of a model file. "Model" has the type and the revision; only a file with it is a model file.
constexpr const wchar_t* kModelStream = L"Model";
constexpr const wchar_t* kConfigurationsStream = L"Configurations";
constexpr const wchar_t* kQuantitiesStream = L"Quantities";
constexpr const wchar_t* kComponentsStream = L"Components";
constexpr const wchar_t* kMatesStream = L"Mates";
constexpr const wchar_t* kViewsStream = L"Views";

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

}  // namespace

void WriteModelFile(const std::wstring& path, const ModelFile& model) {
  const CompoundFile file = CompoundFile::Create(path);
  file.WriteTable(kModelStream, {{DocumentTypeName(model.type), std::to_wstring(model.revision)}});
  file.WriteTable(kConfigurationsStream, ConfigurationTable(model));
  file.WriteTable(kQuantitiesStream, QuantityTable(model));
  file.WriteTable(kComponentsStream, ComponentTable(model));
  Records mates;
  for (const MateRecord& mate : model.mates) mates.push_back({mate.name, mate.first, mate.second});
  file.WriteTable(kMatesStream, mates);
  file.WriteTable(kViewsStream, ViewTable(model));
  WriteProperties(file, model.properties);
}

ModelFile ReadModelFile(const std::wstring& path) {
  const CompoundFile file = CompoundFile::OpenToRead(path);
  const Records header = file.ReadTable(kModelStream);
  if (header.empty()) throw HostError(path + L": a compound file, but no model in it");
  ModelFile model;
  for (const TypeNames& type : kTypes) {
    if (FieldOf(header[0], 0) == type.name) model.type = type.type;
  }
  model.revision = NumberOf(header[0], 1);
  model.properties = ReadProperties(file);
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
