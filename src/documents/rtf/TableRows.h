#pragma once

#include "documents/rtf/TablePath.h"

#include <QHash>
#include <QList>
#include <QTextBlock>

class QTextFrame;
class QTextTable;
class QTextTableCell;

namespace rtf {

/// Where the paragraphs of a document's tables stand, as the writer needs it. A row whose cells are as its definition
/// has them keeps that to the letter; for others (a piece of a row, a table from elsewhere) one is made.
class TableRows {
 public:
  explicit TableRows(const QTextDocument& document) : m_document(document) {}

  /// Empty outside tables.
  TablePath PathOf(const QTextBlock& block);
  /// The document has changed.
  void Forget();

 private:
  struct Table {
    int first = 0;
    int last = 0;
    const QTextTable* table = nullptr;
    QList<TablePath> paths = {};  ///< Of its paragraphs; empty until one of them is asked for.
  };

  void FindTables();
  static void Collect(Table& into, const QTextTable& table, const TablePath& outer);
  static void CollectCell(Table& into, const QTextTableCell& cell, const TablePath& path);

  const QTextDocument& m_document;
  bool m_known = false;
  QList<Table> m_tables;  ///< The outermost ones, by their place.
};

}  // namespace rtf
