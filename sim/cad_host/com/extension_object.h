/// @file A document's extension and its custom properties.
#pragma once

#include "cad_host/document.h"
#include "com_object.h"

namespace cad_host {

class ExtensionObject : public ComObject<Document, IModelDocExtension> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"a document's extension"; }

  STDMETHODIMP get_CustomPropertyManager(BSTR ConfigName, ICustomPropertyManager** retval) override;
};

/// The properties of the document, or of one configuration.
class PropertyManagerObject : public ComObject<Document, ICustomPropertyManager> {
 public:
  PropertyManagerObject(std::shared_ptr<Services> services, const std::shared_ptr<Document>& document,
                        std::wstring configuration)
      : ComObject(std::move(services), document), m_configuration(std::move(configuration)) {}

  std::wstring Describe() const override;

  STDMETHODIMP get_Count(long* retval) override;
  STDMETHODIMP GetNames(VARIANT* retval) override;
  STDMETHODIMP Set(BSTR FieldName, BSTR FieldValue, long* retval) override;
  STDMETHODIMP Get2(BSTR FieldName, BSTR* ValOut, BSTR* ReesolvedValOut) override;
  STDMETHODIMP GetAll(VARIANT* PropNames, VARIANT* PropTypes, VARIANT* PropValues, long* retval) override;
  STDMETHODIMP Get3(BSTR FieldName, VARIANT_BOOL UseCached, BSTR* ValOut, BSTR* ResolvedValOut,
                    VARIANT_BOOL* retval) override;

 private:
  CustomProperties& PropertiesOf(Document& document) const;
  /// @return false if there is no such property; then both texts are empty.
  bool GiveValues(Document& document, BSTR name, BSTR* text, BSTR* resolved);

  std::wstring m_configuration;  // empty: the document itself
  std::size_t m_next = 0;        // index of the next property, if they are read in their order
};

}  // namespace cad_host
