/// @file The add-in's class itself, connected to the simulated host, for what no command reaches.
#pragma once

#include "class_under_test.h"
#include "properties_fixture.h"

class PropertyAccessTest : public PropertiesTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// An object with these members, which are texts.
  static std::shared_ptr<CJsonObject> Json(const std::wstring& text = L"{}");

  /// The active document as the host serves it.
  IModelDoc2Ptr ActiveFace() const;

  CSolidWorksAddIn* m_class = nullptr;
};

/// The code of the COM error that `call` raises; S_OK where it raises none.
template <class Call>
HRESULT RaisedBy(Call&& call) {
  try {
    call();
  } catch (const _com_error& error) {
    return error.Error();
  }
  return S_OK;
}
