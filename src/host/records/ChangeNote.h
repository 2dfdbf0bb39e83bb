#pragma once

#include "database/Schema.h"
#include "database/WrittenRecord.h"
#include "host/records/ChangeLog.h"

#include <QVariant>

namespace host {

/// The note of one write in the making: looks at the row before the statement runs, and again afterwards. The
/// connection is the engine's, inside the transaction of the write. Errors of the database leave it.
class ChangeNote {
 public:
  ChangeNote(adodb::Connection& engine, const database::WrittenRecord& written);

  /// What the statement, which wrote `rows` rows, changed; nothing where it changed no value. A long text counts as
  /// changed whenever it is set.
  std::optional<Change> After(qint64 rows);
  /// The key of the only row that was written, 0 for several; known after that.
  qint64 Key() const { return m_key; }

 private:
  /// The values of a row in the order of the schema's columns, lengths for those of long texts; none for a row that is
  /// not there.
  using Row = QList<QVariant>;

  Row Read() const;
  QString Name(const Row& row) const;
  void FindNewKey();
  ChangeKind KindOf(const Row& now) const;
  bool MayDiffer(const database::Column& column) const;
  QList<ColumnChange> Differences(const Row& now) const;

  adodb::Connection& m_engine;
  const database::WrittenRecord& m_written;
  const database::Table& m_table;
  qint64 m_key = 0;
  Row m_before;
  QString m_name;
};

/// The statements that are sent one after the other where `statement` is noted, itself among them: what a note of it
/// reads before and behind it. None where that depends on its outcome.
QStringList NotedCourse(const QString& statement, const database::WrittenRecord& written);

/// Writes a note into the log; its number is given by the database.
QString NoteStatement(const Change& change);

}  // namespace host
