/// @file The class of the add-in, connected to the simulated host, for methods that no command calls.
#pragma once

#include "class_under_test.h"
#include "properties_fixture.h"

class PropertyAccessFixture : public ConnectedClass<PropertiesFixture> {
 protected:
  /// The JSON object that `text` describes.
  static std::shared_ptr<CJsonObject> Json(const std::wstring& text = L"{}");

  /// The interface of the active document. Clears the journal.
  IModelDoc2Ptr ActiveModel() const;
};

/// Puts a value of the type `type` in the place of the names that GetNames or GetAll returns, their first
/// result.
cad_host::Faults::Change NamesOfType(VARTYPE type);
