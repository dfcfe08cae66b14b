/// @file The rows of the component tree.
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "cad_host/document.h"
#include "window/texts.h"

namespace cad_host {

struct TreeRow {
  enum class Kind { kDocument, kComponents, kComponent, kMates, kMate, kViews, kView };

  Kind kind = Kind::kDocument;
  int depth = 0;
  std::size_t index = 0;  ///< in the document's components, mates or views

  bool operator==(const TreeRow&) const = default;
};

/// A document as a tree in rows from top to bottom: the document, then folders with their content. A folder
/// that is closed has no rows for its content.
class TreeRows {
 public:
  explicit TreeRows(const window::Texts& texts) : m_texts(texts) {}

  /// Makes the rows anew; without a document there are none.
  void Show(std::shared_ptr<const Document> document);

  std::size_t Count() const { return m_rows.size(); }
  const TreeRow& At(std::size_t row) const { return m_rows[row]; }

  std::wstring Name(std::size_t row) const;

  /// "suppressed" or the revision of a component; what a mate joins; the model of a view.
  std::wstring State(std::size_t row) const;

  /// The place of the row's icon in the list of DrawHostIcons.
  int Icon(std::size_t row) const;

  /// The component of the row; null if it is another row.
  std::shared_ptr<Component> ComponentAt(std::size_t row) const;

  /// The row of the component; -1 if it has none.
  int RowOf(const Component* component) const;

  bool IsFolder(std::size_t row) const;
  bool IsOpen(std::size_t row) const;

  /// Opens or closes a folder and makes the rows anew.
  void SetOpen(std::size_t row, bool open);

 private:
  void AddFolder(TreeRow::Kind folder, TreeRow::Kind content, std::size_t count);
  const Component* ComponentOf(const TreeRow& row) const;

  const window::Texts& m_texts;
  std::shared_ptr<const Document> m_document;
  std::vector<TreeRow> m_rows;
  std::set<TreeRow::Kind> m_closed;
};

}  // namespace cad_host
