#pragma once

#include <QList>
#include <QString>

namespace host {

class OfficeConnection;

/// A row that was written.
struct WrittenRow {
  QString table;   ///< As the schema spells it.
  qint64 key = 0;  ///< 0 where one statement wrote several rows.

  bool operator==(const WrittenRow&) const = default;
};

/// What is written and committed over a connection while this object lives: during one request, for example. Several
/// may live at once, one inside the other; each sees everything of its time. The host's own tables don't count.
class WriteWatch {
 public:
  /// `connection` outlives the watch.
  explicit WriteWatch(OfficeConnection& connection);
  WriteWatch(const WriteWatch&) = delete;
  WriteWatch& operator=(const WriteWatch&) = delete;
  ~WriteWatch();

  /// In the order of their commits, each row once.
  const QList<WrittenRow>& Rows() const { return m_rows; }
  void Add(const QList<WrittenRow>& rows);

 private:
  OfficeConnection& m_connection;
  QList<WrittenRow> m_rows;
};

}  // namespace host
