#pragma once

#include "database/Maintenance.h"
#include "reader/FrameFormat.h"

#include <QList>
#include <QString>

#include <optional>

/// Files of other programs as rows. Errors: 5 with a Spanish text that says what the file is or what to do, 18 where
/// the reading was stopped.
namespace moving {

using reader::Cell;

struct SourceColumn {
  QString name;
  Cell kind = Cell::Text;
};

/// A cell; `text` is its value as FrameFormat.h writes it.
struct SourceCell {
  Cell kind = Cell::None;
  QString text;

  bool operator==(const SourceCell&) const = default;
};
using SourceRow = QList<SourceCell>;

/// A table of a file as its definition has it.
struct SourceTable {
  QString name;
  std::optional<qint64> count;  ///< Rows that it says it has.
  QList<SourceColumn> columns;  ///< None for a spreadsheet or a list, whose headings are a row like any other.
  bool isText = false;          ///< A list: its rows are as long as its headings where nothing is wrong.
  QList<SourceRow> above = {};  ///< What stands above the headings, a title for example; it does not come in.
};

/// Hears what is read, table by table, row by row.
class SourceListener {
 public:
  virtual ~SourceListener();

  virtual void BeginTable(const SourceTable& table) = 0;
  virtual void Row(const SourceRow& row) = 0;
  /// `missing` rows that the table says it has were not there.
  virtual void EndTable(qint64 missing) = 0;
  /// A table that is in another file.
  virtual void Linked(const QString& name) = 0;
  /// A table whose definition is damaged.
  virtual void Unreadable(const QString& name) = 0;
};

/// What a file is, by its first bytes and, for a text, its ending.
enum class FileKind { Desktop, Spreadsheet, List };
/// Raises 5 for anything else, saying what it is.
FileKind KindOfFile(const QString& path);

/// Reads a file of KindOfFile Desktop or Spreadsheet by kel-lector. What that sends is believed in nothing: it may have
/// been taken over by a hostile file.
void ReadForeignFile(const QString& path, SourceListener& listener, const database::Stop& stop);

/// kel-lector beside this program, or where it is installed.
QString ReaderProgram();

}  // namespace moving
