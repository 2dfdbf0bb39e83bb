#pragma once

#include "moving/Source.h"

#include <QMap>

#include <utility>

namespace moving {

/// Which row of a sheet or list has the names of its columns, by the sheet's name, "*" for any other: counted from 1
/// among the rows with something in them.
using Headings = QMap<QString, int>;

/// How far down headings are looked for.
constexpr int mostRowsAbove = 20;

/// Tells sheets and lists on as tables: the first row of which half names columns here has the names of the columns,
/// for above it there may be a title; where none of the first rows does, it is the first that is not empty. A wish
/// goes before. Tables of databases go on as they are.
class HeadedRows : public SourceListener {
 public:
  HeadedRows(Headings wished, SourceListener& listener) : m_wished(std::move(wished)), m_listener(&listener) {}

  void BeginTable(const SourceTable& table) override;
  void Row(const SourceRow& row) override;
  void EndTable(qint64 missing) override;
  void Linked(const QString& name) override { m_listener->Linked(name); }
  void Unreadable(const QString& name) override { m_listener->Unreadable(name); }

 private:
  /// 0 for none.
  int Wished() const;
  void Begin(qsizetype headings);

  Headings m_wished;
  SourceListener* m_listener;
  SourceTable m_sheet;
  QList<SourceRow> m_first;  ///< Rows that wait for the headings, which may be among them.
  bool m_waitsForHeadings = false;
};

}  // namespace moving
