#pragma once

#include "moving/Source.h"

namespace moving {

/// Tells sheets and lists on as tables: their first row that is not empty has the names of the columns. Tables of
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
  SourceListener* m_listener;
  SourceTable m_sheet;
  bool m_waitsForHeadings = false;
};

}  // namespace moving
