#include "property_access_fixture.h"

#include "views.h"

void PropertyAccessFixture::SetUp() {
  m_home.WriteConfiguration(L"View.json", ViewWithItems(1));
  const ClassUnderTest made = MakeClassUnderTest();
  m_class = made.object;
  m_addIn = &m_host->Connect(made.held, L"class");
}

void PropertyAccessFixture::TearDown() {
  PropertiesFixture::TearDown();
  m_class = nullptr;
}

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
