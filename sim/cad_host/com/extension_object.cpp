#include "extension_object.h"

#include "documents/custom_properties.h"
#include "host_values.h"

namespace cad_host {
namespace {

/// An array of `count` elements, each stored by `put` with its index.
template <class Put>
VARIANT MakeArray(VARTYPE type, std::size_t count, Put&& put) {
  VARIANT array;
  VariantInit(&array);
  array.vt = static_cast<VARTYPE>(VT_ARRAY | type);
  array.parray = SafeArrayCreateVector(type, 0, static_cast<ULONG>(count));
  if (!array.parray) throw std::bad_alloc();
  for (std::size_t index = 0; index < count; ++index) put(array.parray, static_cast<LONG>(index));
  return array;
}

VARIANT MakeTextArray(const CustomProperties& properties, std::wstring CustomProperty::*member) {
  return MakeArray(VT_BSTR, properties.size(), [&](SAFEARRAY* array, LONG index) {
    _bstr_t text((properties[static_cast<std::size_t>(index)].*member).c_str());
    SafeArrayPutElement(array, &index, text.GetBSTR());
  });
}

VARIANT MakeTypeArray(const CustomProperties& properties) {
  return MakeArray(VT_I4, properties.size(), [&](SAFEARRAY* array, LONG index) {
    long type = properties[static_cast<std::size_t>(index)].type;
    SafeArrayPutElement(array, &index, &type);
  });
}

}  // namespace

STDMETHODIMP ExtensionObject::get_CustomPropertyManager(BSTR ConfigName, ICustomPropertyManager** retval) {
  return Call(L"IModelDocExtension::get_CustomPropertyManager", {In(ConfigName), Out(retval)},
              [&](Document& document) {
                const std::wstring name = Text(ConfigName);
                if (!name.empty() && !document.model.configurations.contains(name)) return S_OK;
                auto* const manager = new PropertyManagerObject(SharedServices(), GetState(), name);
                manager->AddRef();
                *retval = manager;
                return S_OK;
              });
}

std::wstring PropertyManagerObject::Describe() const {
  return m_configuration.empty() ? L"a document's custom properties"
                                 : L"custom properties of configuration \"" + m_configuration + L"\"";
}

CustomProperties& PropertyManagerObject::PropertiesOf(Document& document) const {
  return m_configuration.empty() ? document.model.properties : document.model.configurations[m_configuration];
}

bool PropertyManagerObject::GiveValues(Document& document, BSTR name, BSTR* text, BSTR* resolved) {
  const CustomProperty* const property = FindProperty(PropertiesOf(document), Text(name), m_next);
  Give(text, property ? property->text : L"");
  Give(resolved, property ? ResolveExpressions(property->text, document.model) : L"");
  return property != nullptr;
}

STDMETHODIMP PropertyManagerObject::get_Count(long* retval) {
  return Call(L"ICustomPropertyManager::get_Count", {Out(retval)}, [&](Document& document) {
    *retval = static_cast<long>(PropertiesOf(document).size());
    return S_OK;
  });
}

STDMETHODIMP PropertyManagerObject::GetNames(VARIANT* retval) {
  return Call(L"ICustomPropertyManager::GetNames", {Out(retval)}, [&](Document& document) {
    const CustomProperties& properties = PropertiesOf(document);
    if (!properties.empty()) *retval = MakeTextArray(properties, &CustomProperty::name);
    return S_OK;
  });
}

STDMETHODIMP PropertyManagerObject::Set(BSTR FieldName, BSTR FieldValue, long* retval) {
  return Call(
      L"ICustomPropertyManager::Set", {In(FieldName), In(FieldValue), Out(retval)}, [&](Document& document) {
        if (document.read_only || document.view_only) return E_ACCESSDENIED;
        *retval = SetProperty(document, PropertiesOf(document), Text(FieldName), Text(FieldValue), m_next);
        return S_OK;
      });
}

STDMETHODIMP PropertyManagerObject::Get2(BSTR FieldName, BSTR* ValOut, BSTR* ReesolvedValOut) {
  return Call(L"ICustomPropertyManager::Get2", {In(FieldName), Out(ValOut), Out(ReesolvedValOut)},
              [&](Document& document) {
                GiveValues(document, FieldName, ValOut, ReesolvedValOut);
                return S_OK;
              });
}

STDMETHODIMP PropertyManagerObject::GetAll(VARIANT* PropNames, VARIANT* PropTypes, VARIANT* PropValues,
                                           long* retval) {
  return Call(L"ICustomPropertyManager::GetAll",
              {InOut(PropNames), InOut(PropTypes), InOut(PropValues), Out(retval)}, [&](Document& document) {
                const CustomProperties& properties = PropertiesOf(document);
                if (properties.empty()) return S_OK;
                *PropNames = MakeTextArray(properties, &CustomProperty::name);
                *PropTypes = MakeTypeArray(properties);
                *PropValues = MakeTextArray(properties, &CustomProperty::text);
                *retval = static_cast<long>(properties.size());
                return S_OK;
              });
}

STDMETHODIMP PropertyManagerObject::Get3(BSTR FieldName, VARIANT_BOOL UseCached, BSTR* ValOut,
                                         BSTR* ResolvedValOut, VARIANT_BOOL* retval) {
  return Call(L"ICustomPropertyManager::Get3",
              {In(FieldName), In(UseCached), Out(ValOut), Out(ResolvedValOut), Out(retval)},
              [&](Document& document) {
                Give(retval, GiveValues(document, FieldName, ValOut, ResolvedValOut));
                return S_OK;
              });
}

}  // namespace cad_host
