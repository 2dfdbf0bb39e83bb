#pragma once

#include "moving/Source.h"

namespace moving {

/// Tells sheets and lists on as tables: the first row of which half names columns here has the names of the columns,
/// for above it there may be a title; where none of the first rows does, it is the first that is not empty. Tables of
/// databases go on as they are.
class HeadedRows : public SourceListener {
 public:
  explicit HeadedRows(SourceListener& listener) : m_listener(&listener) {}

  void BeginTable(const SourceTable& table) override;
  void Row(const SourceRow& row) override;
  void EndTable(qint64 missing) override;
  void Linked(const QString& name) override { m_listener->Linked(name); }
  void Unreadable(const QString& name) override { m_listener->Unreadable(name); }

 private:
  void Begin();

  SourceListener* m_listener;
  SourceTable m_sheet;
  QList<SourceRow> m_first;  ///< Rows that wait for the headings, which may be among them.
  bool m_waitsForHeadings = false;
};

}  // namespace moving
