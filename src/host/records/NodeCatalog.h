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
  Moment,      ///< A time in ISO format, shown as the local "21/11/2026 13:03".
};

/// One column of a record list.
struct ListColumn {
  /// The node's select, or what OptionalColumns.h adds to it.
  enum class Source { Select, Uses, LastChange };

  QString title;
  ColumnKind kind = ColumnKind::Text;
  Source source = Source::Select;

  /// Only in sight where the user wants it.
  bool IsOptional() const { return source != Source::Select; }
};

/// A node of the tree: one kind of record, and what the window needs to list it.
struct Node {
  int id = 0;      ///< Its number, see cConstNodo.
  QString group;   ///< The tree's branch, "Tablas".
  QString title;   ///< "Países"
  QString record;  ///< One record with its article, as a question names it: "el país".
  QString icon;    ///< The name of its icon in the themes.
  QString table;
  QString key;
  /// Selects the key, then one value for each of `columns` but the optional ones, without a condition.
  QString select;
  QString order;             ///< By the first column, then by the key.
  QString condition = {};    ///< On the rows that the list shows besides; empty for none.
  bool marksDeleted = true;  ///< Whether the table has the column Eliminado; the list shows live rows.
  QList<ListColumn> columns;
  int nameColumns = 1;  ///< How many of the first columns name a record.
  /// The column of the table whose value no two live records share, which is the list's first one; empty for none.
  QString unique = {};
  int sortColumn = 0;  ///< How a list is sorted until the user sorts it otherwise.
  Qt::SortOrder sortOrder = Qt::AscendingOrder;
  int typedColumn = 0;  ///< The one that is searched by typing in the list: the name.
  bool hasDialog = true;
  bool dialogLocks = true;  ///< The dialog asks for the lock of its record; the others don't know of locks.
  bool canAdd = true;
  bool canDelete = true;
  bool canRecover = false;          ///< The records are deletions, which can be undone.
  bool administratorsOnly = false;  ///< Nobody else sees the node.
  // Whether the optional columns are read.
  bool readsUses = false;
  bool readsLastChange = false;

  /// The node's place in the tree, "Tablas\Países".
  QString Path() const;
};

/// The number of the node of deleted records, which the component does not know.
constexpr int deletedRecordsNode = 1000;

/// What stands for no node, where the page that everything begins with is meant.
constexpr int homeNode = 1002;

/// That of the change log.
constexpr int changesNode = 1001;

/// Every node of the tree, grouped and in the tree's order.
const std::vector<Node>& NodeCatalog();

/// Those that a user sees, with the lists that the user may see.
std::vector<Node> NodesFor(bool administrator);

/// The node of that number, nullptr for one that the tree does not have.
const Node* FindNode(int id);
/// The node whose records have that key column or stand in that table, without regard to case; nullptr for none.
const Node* FindNodeByKey(const QString& keyColumn);
const Node* FindNodeByTable(const QString& table);

}  // namespace host
