/// @file The documents that are open in the host.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cad_host/document.h"
#include "cad_host/journal.h"
#include "document_observer.h"
#include "files/file_hold.h"

namespace cad_host {

struct OpenRequest {
  std::wstring path;
  long type = 0;
  long options = 0;
  std::wstring configuration;
};

struct OpenResult {
  std::shared_ptr<Document> document;  ///< null where it cannot be opened
  long errors = 0;                     ///< swFileLoadError_e
  std::wstring reason;                 ///< why it cannot
};

/// The active document is the last of the list: closing it makes the one before it active.
class Documents {
 public:
  /// Both must outlive the documents.
  Documents(Journal& journal, DocumentObserver& observer) : m_journal(journal), m_observer(observer) {}

  /// Opens a file whose type, name and content agree and makes its document the active one. A document
  /// that is open already is handed back as it is.
  OpenResult Open(const OpenRequest& request);

  std::shared_ptr<Document> New(swDocumentTypes_e type);

  /// @throws HostError naming the file where it cannot be written.
  void Save(Document& document, const std::wstring& path);

  std::shared_ptr<Document> Find(const std::wstring& name) const;
  std::shared_ptr<Document> Active() const { return m_open.empty() ? nullptr : m_open.back(); }
  const std::vector<std::shared_ptr<Document>>& All() const { return m_open; }

  void Activate(const std::shared_ptr<Document>& document);
  void Close(const std::shared_ptr<Document>& document);

  /// Loads the component's file as it is now and keeps it open.
  /// @throws HostError naming the file where it cannot be loaded; the component is suppressed then.
  void Resolve(Component& component);

  /// Lets go of the component's file.
  static void Suppress(Component& component);

 private:
  OpenResult Load(const OpenRequest& request);
  void LoadComponents(Document& document);

  Journal& m_journal;
  DocumentObserver& m_observer;
  FileHolds m_holds;
  std::vector<std::shared_ptr<Document>> m_open;
  int m_made = 0;  // documents made in this session
};

}  // namespace cad_host
