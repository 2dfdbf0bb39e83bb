#pragma once

#include "moving/ImportWishes.h"
#include "moving/TableShape.h"
#include "platform/adodb/Connection.h"

#include <QSet>

namespace moving {

/// The records of a table here, to be found by what decides that a row of a file is the same one.
class KnownRecords {
 public:
  /// Reads the whole table. Borrows shape and wishes.
  KnownRecords(adodb::Connection& connection, const TableShape& shape, const ImportWishes& wishes);

  struct Found {
    qint64 key = 0;       ///< 0 for none.
    bool isSame = false;  ///< All values are the same.
  };
  /// The record that is this row. `facts` has its references as they are here. A record whose values are all the same
  /// is given once only, so that two rows that look alike are two records.
  Found Find(const RowFacts& facts);
  /// The live record of that text in the column of `beside`, folded; 0 for none.
  qint64 Named(const QString& folded) const { return m_names.value(folded); }
  /// The live record with the same texts of `alike`; 0 for none.
  qint64 Alike(const RowFacts& facts) const { return facts.alike.isEmpty() ? 0 : m_alike.value(facts.alike); }
  /// The live records of a table that asks, by their labels in order.
  const QList<Choice>& Live() const { return m_live; }
  bool IsDeleted(qint64 key) const { return m_deleted.contains(key); }
  bool HasKey(qint64 key) const { return m_keys.contains(key); }
  qint64 HighestKey() const { return m_highest; }

 private:
  void Take(const RowFacts& facts, bool isLive);

  /// What row and record must have in common by each rule; empty texts where a rule can't say.
  QStringList MatchTexts(const RowFacts& facts) const;
  QString PartOf(const RowFacts& facts, const QString& column) const;

  const TableShape* m_shape;
  const ImportWishes* m_wishes;
  QStringList m_columns;
  QHash<quint64, QList<qint64>> m_same;
  QList<QHash<QString, qint64>> m_matches;
  QSet<qint64> m_keys;
  QSet<qint64> m_deleted;
  QHash<QString, qint64> m_names;
  QHash<QString, qint64> m_alike;
  QList<Choice> m_live;
  qint64 m_highest = 0;
};

/// The values of a record in the columns that the file has; Null for one that is gone.
QList<Value> ReadRecord(adodb::Connection& connection, const TableShape& shape, qint64 key);

}  // namespace moving
