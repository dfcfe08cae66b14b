/// @file The items of the sample vault.
#pragma once

#include <string>
#include <vector>

namespace plm_models {

struct SampleModel {
  const wchar_t* file_name;
  const wchar_t* name;
  const wchar_t* material;  ///< text of the property "Material"
  const wchar_t* mass;      ///< in kilograms
  int revisions = 1;
};

struct SamplePlacement {
  const wchar_t* file_name;
  int count;
};

struct SampleAssembly {
  const wchar_t* file_name;
  const wchar_t* name;
  int revisions;
  std::vector<SamplePlacement> parts;
};

struct SampleDrawing {
  const wchar_t* file_name;
  const wchar_t* name;
  const wchar_t* model;  ///< the file name of what it shows
};

/// Parts first: assemblies refer to them, and drawings to both.
const std::vector<SampleModel>& SampleParts();
const std::vector<SampleAssembly>& SampleAssemblies();
const std::vector<SampleDrawing>& SampleDrawings();

}  // namespace plm_models
