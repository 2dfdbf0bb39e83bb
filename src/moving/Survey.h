#pragma once

#include "moving/ImportReport.h"
#include "moving/ImportWishes.h"
#include "moving/KeptFacts.h"

#include <memory>
#include <vector>

namespace moving {

/// A table of the file with the facts of all its rows.
struct SurveyedTable {
  SourceTable source;
  std::unique_ptr<TableMatch> match;  ///< Null for a table that does not come in.
  std::unique_ptr<TableShape> shape;
  KeptFacts rows;
  TableReport report;

  /// A table without keys, or with only some: a sheet or a list.
  bool IsList() const { return !source.count; }
};

/// The first reading of a file: which tables fit, and what decides about each row. Nothing is asked of the database.
class Survey : public SourceListener {
 public:
  /// Borrows the wishes.
  explicit Survey(const ImportWishes& wishes) : m_wishes(&wishes) {}

  void BeginTable(const SourceTable& table) override;
  void Row(const SourceRow& row) override;
  void EndTable(qint64 missing) override;
  void Linked(const QString& name) override { elsewhere.append(name); }
  void Unreadable(const QString& name) override { unreadable.append(name); }

  std::vector<SurveyedTable> tables;  ///< In the file's order.
  QStringList elsewhere;
  QStringList unreadable;

 private:
  const ImportWishes* m_wishes;
  qint64 m_read = 0;
};

/// "IDBanco 5", for people.
QString RowName(const SurveyedTable& table, qsizetype row);
/// "41", "fila-3": as answers name the row.
QString RowWord(const SurveyedTable& table, qsizetype row);
/// A note on the row.
Finding NoteOn(const SurveyedTable& table, qsizetype row, const QString& what);

}  // namespace moving
