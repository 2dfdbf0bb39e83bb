#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

namespace support {

/// A desktop database file made from nothing, page by page, for tests of what reads such files: no library writes them.
/// Tables have up to some twenty columns; what a page of 4 kB can't hold of a row is the caller's mistake.
class DesktopFile {
 public:
  /// The format's own numbers.
  enum Type {
    Bool = 1,
    Byte = 2,
    Int = 3,
    Long = 4,
    Money = 5,
    Float = 6,
    Double = 7,
    Date = 8,
    Text = 10,
    Ole = 11,
    Memo = 12
  };
  enum class Kind { Mdb, Accdb };
  struct Column {
    QString name;
    Type type = Text;
  };
  /// Numbers as such, money in ten-thousandths (qint64), dates as days since 1899-12-30 (double), texts as QString
  /// (with bytes that a test damaged as QByteArray), memos of more than 60 characters on pages of their own; Null is an
  /// invalid value.
  using Row = QList<QVariant>;

  explicit DesktopFile(Kind kind = Kind::Mdb);

  /// Ends the table before.
  void AddTable(const QString& name, const QList<Column>& columns);
  void AddRow(const Row& row);
  /// Marked as deleted: what a reader must not see.
  void AddDeletedRow(const Row& row);
  /// A row that lies on another page than the one that points to it.
  void AddMovedRow(const Row& row);
  /// A row from before the last `missing` columns were added.
  void AddOlderRow(const Row& row, int missing);
  void AddLinkedTable(const QString& name);
  /// What the header says instead of the rows that there are.
  void SayCount(int rows) { m_said = rows; }

  /// The whole file; nothing can be added afterwards.
  QByteArray Bytes();

 private:
  QByteArray RowBytes(const Row& row, int missing = 0);
  QByteArray Stored(const QVariant& value, Type type);
  QByteArray Memorandum(const QByteArray& bytes);
  int NewPage();
  quint32 AddToPage(int page, const QByteArray& row, int flags = 0);
  int PageFor(const QByteArray& row);
  void EndTable();
  void Define(int page, const QList<Column>& columns, int rows, const QList<int>& pages);
  void Catalogue(const QString& name, int page, int type);
  void Put(int page, int at, quint32 value, int bytes);

  QList<QByteArray> m_pages;
  QHash<int, int> m_free;  ///< Where the rows of a page end.
  QList<Row> m_catalogue;
  QList<Column> m_columns;
  QList<int> m_dataPages;
  int m_table = 0;  ///< The page of the table that rows go to.
  int m_rows = 0;
  int m_said = -1;
};

}  // namespace support
