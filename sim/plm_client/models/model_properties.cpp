#include "models/model_properties.h"

#include "cad_host/host_error.h"
#include "cad_host/model_file.h"
#include "vault/vault_error.h"

namespace plm_models {

plm_vault::Properties ReadModelProperties(const std::filesystem::path& file) {
  plm_vault::Properties properties;
  try {
    for (const cad_host::CustomProperty& property : cad_host::ReadModelFile(file.wstring()).properties) {
      properties.emplace_back(property.name, property.text);
    }
  } catch (const cad_host::HostError& failure) {
    throw plm_vault::VaultError(failure.Message());
  }
  return properties;
}

}  // namespace plm_models
