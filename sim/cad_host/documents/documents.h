/// @file The documents that are open in the host.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "cad_host/document.h"
#include "cad_host/journal.h"
#include "cad_host/quirks.h"
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
  std::shared_ptr<Document> document;  ///< null if it cannot be opened
  long errors = 0;                     ///< swFileLoadError_e
  std::wstring reason;                 ///< why it cannot be opened
};

/// The active document is the last of the list: closing it makes the one before it active.
class Documents {
 public:
  /// The arguments must outlive the object.
  Documents(Journal& journal, const Quirks& quirks, DocumentObserver& observer)
      : m_journal(journal), m_quirks(quirks), m_observer(observer) {}

  /// Opens a file and makes its document the active one; type, name and content must agree. If the document
  /// is open already, it is returned unchanged.
  OpenResult Open(const OpenRequest& request);

  std::shared_ptr<Document> New(swDocumentTypes_e type);

  /// @throws HostError naming the file if it cannot be written.
  void Save(Document& document, const std::wstring& path);

  std::shared_ptr<Document> Find(const std::wstring& name) const;
  std::shared_ptr<Document> Active() const { return m_open.empty() ? nullptr : m_open.back(); }
  const std::vector<std::shared_ptr<Document>>& All() const { return m_open; }

  void Activate(const std::shared_ptr<Document>& document);
  void Close(const std::shared_ptr<Document>& document);

  /// Loads the component's file as it is now and keeps it open.
  /// @throws HostError naming the file if it cannot be loaded; then the component is suppressed.
  void Resolve(Component& component);

  /// Suppresses the component and closes its file.
  static void Suppress(Component& component);

 private:
  // By lower-case path.
  using Revisions = std::map<std::wstring, long>;

  OpenResult Load(const OpenRequest& request);
  void LoadComponents(Document& document);

  /// Like the public one; a file whose revision is in `known` is not read again.
  void Resolve(Component& component, Revisions& known);

  /// Keeps the file open; null if this host does not.
  std::shared_ptr<FileHold> Hold(const std::wstring& path);

  Journal& m_journal;
  const Quirks& m_quirks;
  DocumentObserver& m_observer;
  FileHolds m_holds;
  std::vector<std::shared_ptr<Document>> m_open;
  int m_created = 0;  // documents created in this session
};

}  // namespace cad_host
