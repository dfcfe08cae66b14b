#include "property_access_fixture.h"

#include "views.h"

void PropertyAccessTest::SetUp() {
  m_home.WriteConfiguration(L"View.json", ViewWithItems(1));
  const ClassUnderTest made = MakeClassUnderTest();
  m_class = made.object;
  m_addIn = &m_host->Connect(made.held, L"class");
}

void PropertyAccessTest::TearDown() {
  PropertiesTest::TearDown();
  m_class = nullptr;
}

std::shared_ptr<CJsonObject> PropertyAccessTest::Json(const std::wstring& text) {
  auto json = std::make_shared<CJsonObject>();
  EXPECT_TRUE(json->CreateFrom(text));
  return json;
}

IModelDoc2Ptr PropertyAccessTest::ActiveFace() const {
  IModelDoc2Ptr document;
  m_host->Application()->get_IActiveDoc2(&document);
  m_host->GetJournal().Clear();
  return document;
}
