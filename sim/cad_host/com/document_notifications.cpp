#include "document_notifications.h"

namespace cad_host {
namespace {

constexpr long kClosedByCommand = 0;

_variant_t TextVariant(const std::wstring& text) { return _variant_t(text.c_str()); }

}  // namespace

void DocumentNotifications::OnFileOpenPre(const std::wstring& path) {
  m_events.Fire(kFileOpenPre, {TextVariant(path)});
}

void DocumentNotifications::OnFileOpenPost(const std::wstring& path) {
  m_events.Fire(kFileOpenPost, {TextVariant(path)});
}

void DocumentNotifications::OnDocumentLoad(const Document& document) {
  m_events.Fire(kDocumentLoad, {TextVariant(document.title), TextVariant(document.path)});
}

void DocumentNotifications::OnFileNew(const std::shared_ptr<Document>& document) {
  const IDispatchPtr object = m_serve(m_services, document);
  m_events.Fire(kFileNew2,
                {_variant_t(object.GetInterfacePtr()), _variant_t(document->Type()), _variant_t(L"")});
}

void DocumentNotifications::OnFileClose(const Document& document) {
  const std::wstring& name = document.path.empty() ? document.title : document.path;
  m_events.Fire(kFileClose, {TextVariant(name), _variant_t(kClosedByCommand)});
}

void DocumentNotifications::OnActiveDocumentChange() {
  m_events.Fire(kActiveDocChange, {});
  m_events.Fire(kActiveModelDocChange, {});
}

}  // namespace cad_host
