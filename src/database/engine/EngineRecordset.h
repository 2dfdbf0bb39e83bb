#pragma once

#include "database/dialect/Plan.h"
#include "database/engine/Rows.h"
#include "platform/adodb/Recordset.h"

#include <exception>
#include <memory>
#include <vector>

namespace database {

class EngineConnection;

/// The rows of one SELECT, stepped through as they are read. Before its connection writes, what is left of them
/// is read into memory, so that the recordset shows the rows as they were and keeps nobody's write waiting.
class EngineRecordset : public adodb::Recordset {
 public:
  /// The closed recordset of a statement without rows.
  EngineRecordset() = default;
  /// Takes the rows and steps to the first one. Raises the engine's refusal.
  EngineRecordset(EngineConnection& connection, const std::vector<ResultColumn>& columns,
                  std::unique_ptr<Rows> engineRows);
  ~EngineRecordset() override;

  int State() const override;
  bool AtEnd() const override;
  void MoveNext() override;
  QVariant Field(QStringView name) override;
  QVariant Field(int position) override;
  int FieldCount() const override;
  QString FieldName(int position) const override;
  void Close() override;

  /// Reads the remaining rows into memory and gives the engine's back.
  void Buffer();

 private:
  using Row = std::vector<QVariant>;

  void CheckOpen() const;
  void Step();
  void ReadRest();
  int Find(QStringView name);
  int Search(QStringView name) const;
  QVariant CurrentValue(int position) const;
  /// The value of the engine's current row.
  QVariant Value(int position) const;
  void Release();

  EngineConnection* m_connection = nullptr;
  std::vector<ResultColumn> m_columns;
  std::unique_ptr<Rows> m_engineRows;  ///< Null behind the last one.
  bool m_atEnd = true;
  /// The spellings that were asked for so far, in the order of the asking, with what they mean.
  struct Asked {
    QString name;
    int column = 0;
  };
  std::vector<Asked> m_asked;
  std::size_t m_nextAsked = 0;
  std::vector<Row> m_rows;
  std::size_t m_row = 0;
  std::exception_ptr m_failure;  ///< Of the reading behind the last of the rows.
};

}  // namespace database
