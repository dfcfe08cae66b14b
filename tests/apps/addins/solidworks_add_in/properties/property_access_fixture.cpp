#include "property_access_fixture.h"

std::shared_ptr<CJsonObject> PropertyAccessFixture::Json(const std::wstring& text) {
  auto json = std::make_shared<CJsonObject>();
  EXPECT_TRUE(json->CreateFrom(text));
  return json;
}

IModelDoc2Ptr PropertyAccessFixture::ActiveModel() const {
  IModelDoc2Ptr document;
  m_host->Application()->get_IActiveDoc2(&document);
  m_host->GetJournal().Clear();
  return document;
}

cad_host::Faults::Change NamesOfType(VARTYPE type) {
  return [type](const std::vector<void*>& results) {
    auto* const names = static_cast<VARIANT*>(results[0]);
    VariantClear(names);
    if (type & VT_ARRAY) {
      names->parray = SafeArrayCreateVector(static_cast<VARTYPE>(type & VT_TYPEMASK), 0, 3);
    }
    names->vt = type;
  };
}
