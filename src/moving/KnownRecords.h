#pragma once

#include "moving/TableShape.h"
#include "platform/adodb/Connection.h"

#include <QSet>

#include <functional>

namespace moving {

/// The records of a table here, to be found by what decides that a row of a file is the same one.
class KnownRecords {
 public:
  /// Reads the whole table. `identifier`: see ImportWishes.
  KnownRecords(adodb::Connection& connection, const TableShape& shape,
               const std::function<QString(const QString&)>& identifier);

  /// The record that is this row, 0 for none. `facts` has its references as they are here. A record whose values are
  /// all the same is given once only, so that two rows that look alike are two records.
  qint64 Find(const RowFacts& facts);
  bool IsDeleted(qint64 key) const { return m_deleted.contains(key); }
  bool HasKey(qint64 key) const { return m_keys.contains(key); }
  qint64 HighestKey() const { return m_highest; }
  /// Of the column of `beside`, folded, of live records.
  const QSet<QString>& TakenNames() const { return m_names; }

 private:
  /// What row and record must have in common by each rule; empty texts where a rule can't say.
  QStringList MatchTexts(const RowFacts& facts) const;
  QString PartOf(const RowFacts& facts, const QString& column) const;

  const TableShape* m_shape;
  std::function<QString(const QString&)> m_identifier;
  QStringList m_columns;
  QHash<quint64, QList<qint64>> m_same;
  QList<QHash<QString, qint64>> m_matches;
  QSet<qint64> m_keys;
  QSet<qint64> m_deleted;
  QSet<QString> m_names;
  qint64 m_highest = 0;
};

}  // namespace moving
