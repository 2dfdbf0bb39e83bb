#pragma once

#include "moving/ImportReport.h"
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
};

/// The first reading of a file: which tables fit, and what decides about each row. Nothing is asked of the database.
class Survey : public SourceListener {
 public:
  explicit Survey(const NameWishes& names) : m_names(&names) {}

  void BeginTable(const SourceTable& table) override;
  void Row(const SourceRow& row) override;
  void EndTable(qint64 missing) override;
  void Linked(const QString& name) override { elsewhere.append(name); }
  void Unreadable(const QString& name) override { unreadable.append(name); }

  std::vector<SurveyedTable> tables;  ///< In the file's order.
  QStringList elsewhere;
  QStringList unreadable;

 private:
  const NameWishes* m_names;
};

/// "IDBanco 5", for people.
QString RowName(const SurveyedTable& table, qsizetype row);

}  // namespace moving
