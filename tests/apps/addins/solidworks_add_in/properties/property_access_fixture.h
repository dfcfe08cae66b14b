/// @file The class of the add-in, connected to the simulated host, for methods that no command calls.
#pragma once

#include "class_under_test.h"
#include "properties_fixture.h"

class PropertyAccessFixture : public PropertiesFixture {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// The JSON object that `text` describes.
  static std::shared_ptr<CJsonObject> Json(const std::wstring& text = L"{}");

  /// The interface of the active document. Clears the journal.
  IModelDoc2Ptr ActiveModel() const;

  CSolidWorksAddIn* m_class = nullptr;
};
