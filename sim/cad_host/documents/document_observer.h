/// @file The interface for reacting to changes of documents.
#pragma once

#include <memory>
#include <string>

#include "cad_host/document.h"

namespace cad_host {

/// Called when the host raises an event.
class DocumentObserver {
 public:
  virtual ~DocumentObserver() = default;

  /// Before and after the file at `path` is opened.
  virtual void OnFileOpenPre(const std::wstring& path) = 0;
  virtual void OnFileOpenPost(const std::wstring& path) = 0;

  /// After the document's file has been read.
  virtual void OnDocumentLoad(const Document& document) = 0;

  /// After a document without a file was created.
  virtual void OnFileNew(const std::shared_ptr<Document>& document) = 0;

  /// Before the document is closed.
  virtual void OnFileClose(const Document& document) = 0;

  /// After another document has become the active one.
  virtual void OnActiveDocumentChange() = 0;
};

}  // namespace cad_host
