#pragma once

#include "moving/Survey.h"
#include "platform/adodb/Connection.h"

#include <functional>

namespace moving {

/// What becomes of a row.
struct Fate {
  enum class Kind : quint8 { New, Known, Revived, LeftOut };
  Kind kind = Kind::LeftOut;
  bool isDemoted = false;  ///< Comes in as deleted, for its number is taken.
  int number = 0;          ///< Goes behind the name, which is taken; 0 for none.
  qint64 key = 0;          ///< Here; 0 for one that is left out.

  QString Suffix() const { return number == 0 ? QString() : QStringLiteral(" (%1)").arg(number); }
};

/// Decides for every row of a survey whether it is a record that is here already, under which number it comes in
/// otherwise, and what its references become. The numbers of a table's new rows are kept where all can be: from 1 to
/// 2,000,000,000, none twice, none of a record here; otherwise new ones begin after the highest, in the file's order.
class Plan {
 public:
  /// Reads the tables that the file has, and the keys of those that it refers to. Completes the tables' reports.
  Plan(Survey& survey, adodb::Connection& connection, const std::function<QString(const QString&)>& identifier);

  const Fate& FateOf(const SurveyedTable& table, std::size_t row) const;
  /// The key here of a row of `target` that the file calls `key`; 0 for none.
  qint64 KeyHere(const database::Table& target, qint64 key);

 private:
  class TableDecision;

  void Decide(SurveyedTable& table);

  adodb::Connection* m_connection;
  std::function<QString(const QString&)> m_identifier;
  QHash<QString, std::vector<Fate>> m_fates;        ///< By names of tables here.
  QHash<QString, QHash<qint64, qint64>> m_numbers;  ///< Keys of the file to keys here; of other tables their own.
};

}  // namespace moving
