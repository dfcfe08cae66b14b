/// @file Changes of documents as events of the application.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "base/com_pointers.h"
#include "documents/document_observer.h"
#include "event_source.h"
#include "services.h"

namespace cad_host {

/// Returns the COM object of an open document.
using DocumentServer =
    std::function<IDispatchPtr(const std::shared_ptr<Services>&, const std::shared_ptr<Document>&)>;

/// Raises the application's events when documents change.
class DocumentNotifications : public DocumentObserver {
 public:
  /// @param events must outlive the object.
  DocumentNotifications(std::shared_ptr<Services> services, ApplicationEvents& events, DocumentServer serve)
      : m_services(std::move(services)), m_events(events), m_serve(std::move(serve)) {}

  void OnFileOpenPre(const std::wstring& path) override;
  void OnFileOpenPost(const std::wstring& path) override;
  void OnDocumentLoad(const Document& document) override;
  void OnFileNew(const std::shared_ptr<Document>& document) override;
  void OnFileClose(const Document& document) override;
  void OnActiveDocumentChange() override;

 private:
  std::shared_ptr<Services> m_services;
  ApplicationEvents& m_events;
  DocumentServer m_serve;
};

}  // namespace cad_host
