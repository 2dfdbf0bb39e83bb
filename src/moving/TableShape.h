#pragma once

#include "moving/Convert.h"

namespace moving {

/// What of a row decides which record it is.
struct RowFacts {
  qint64 key = 0;            ///< 0 for none.
  quint64 content = 0;       ///< All values but key and references, as a hash.
  QList<qint64> references;  ///< By TableShape::references.
  QStringList match;         ///< By TableRule::MatchColumns, folded; empty for no value.
  QString alike;             ///< Of TableRule::alike, folded; empty where one of them has no value.
  bool isLive = true;
  bool isGranted = false;  ///< Has the right of TableRule::grant there.
  bool isRefused = false;
  bool isSkipped = false;  ///< Deleted, and nothing refers to it.
};

/// A column that names a row of another table.
struct Reference {
  int position = 0;  ///< In the table here.
  const database::Table* target = nullptr;
  bool isOwner = false;
};

/// A matched table's columns, sorted by what they are for. Only those that the file has count, so that a row without
/// the others is still the same.
class TableShape {
 public:
  explicit TableShape(const TableMatch& match);

  /// `values` by the positions of the table's columns here.
  RowFacts FactsOf(const QList<Value>& values) const;
  /// The names of the columns that FactsOf looks at, the key first, and their positions.
  const QList<int>& Positions() const { return m_positions; }
  const database::Table& Here() const { return *m_rule->table; }
  const TableRule& Rule() const { return *m_rule; }
  const QList<Reference>& References() const { return m_references; }
  bool IsReference(int position) const;
  /// The position of a column here, -1 for an empty name.
  int PositionOf(const QString& column) const;
  /// The columns that may be given a file's values: all that the file has but key, owners and marks.
  const QList<int>& Changeable() const { return m_changeable; }
  /// Whether two values of a column are the same, whoever stored them.
  bool AreSame(int position, const Value& one, const Value& other) const;
  /// What a row is, for people: its first texts.
  QString LabelOf(const QList<Value>& values) const;

 private:
  QString Plain(int position, QString text) const;

  const TableRule* m_rule;
  QList<int> m_positions;
  QList<int> m_content;
  QList<int> m_match;
  QList<int> m_alike;
  QList<int> m_changeable;
  QList<int> m_label;
  QList<Reference> m_references;
  int m_deleted = -1;
  int m_beside = -1;
  int m_free = -1;
  int m_grant = -1;
};

}  // namespace moving
