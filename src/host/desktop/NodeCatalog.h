#pragma once

#include <QList>
#include <QString>

#include <vector>

namespace host {

/// How the values of a list column are shown, sorted and aligned.
enum class ColumnKind {
  Text,
  Number,      ///< A number without thousands points.
  Percentage,  ///< "20 %"
  Amount,      ///< "1.234,50 €"
  YesNo,       ///< "Sí" or "No"
};

/// One column of a record list.
struct ListColumn {
  QString title;
  ColumnKind kind = ColumnKind::Text;
};

/// A node of the tree: one kind of record, and what the window needs to list it.
struct Node {
  int id = 0;      ///< Its number, see cConstNodo.
  QString group;   ///< The tree's branch, "Tablas".
  QString title;   ///< "Países"
  QString record;  ///< One record with its article, as a question names it: "el país".
  QString table;
  QString key;
  /// Selects the key, then one value for each of `columns`, without a condition.
  QString select;
  QString order;             ///< By the first column, then by the key.
  bool marksDeleted = true;  ///< Whether the table has the column Eliminado; the list shows live rows.
  QList<ListColumn> columns;
  int nameColumns = 1;  ///< How many of the first columns name a record.
  bool hasDialog = true;
  bool canAdd = true;
  bool canDelete = true;

  /// The node's place in the tree, "Tablas\Países".
  QString Path() const;
};

/// Every node of the tree, grouped and in the tree's order.
const std::vector<Node>& NodeCatalog();

/// The node of that number, nullptr for one that the tree does not have.
const Node* FindNode(int id);

}  // namespace host
