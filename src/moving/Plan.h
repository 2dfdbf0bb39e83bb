#pragma once

#include "moving/Survey.h"
#include "platform/adodb/Connection.h"

namespace moving {

/// What becomes of a row.
struct Fate {
  enum class Kind { New, Known, Revived, LeftOut };
  Kind kind = Kind::LeftOut;
  qint64 key = 0;           ///< Here; 0 for one that is left out.
  bool isDemoted = false;   ///< Comes in as deleted, for its number is taken.
  bool isGranted = false;   ///< Gets the right that it has there.
  bool isCompared = false;  ///< The record here may have other values.
  QString suffix;           ///< " (2)": goes behind the name.
};

/// Decides for every row of a survey whether it is a record that is here already, under which number it comes in
/// otherwise, and what its references become. The numbers of a table's new rows are kept where all can be: from 1 to
/// 2,000,000,000, none twice, none of a record here; otherwise new ones begin after the highest, in the file's order.
class Plan {
 public:
  /// Reads the tables that the file has, and the keys of those that it refers to. Completes the tables' reports.
  /// Borrows the wishes while it is made.
  Plan(Survey& survey, adodb::Connection& connection, const ImportWishes& wishes);

  /// By the rows of a matched table.
  const std::vector<Fate>& FatesOf(const SurveyedTable& table) const;
  /// Whether nobody had worked with the database here before.
  bool IsFirst() const { return m_isFirst; }
  /// The key here of a row of `target` that the file calls `key`; 0 for none.
  qint64 KeyHere(const database::Table& target, qint64 key);

 private:
  friend class TableDecision;

  adodb::Connection* m_connection;
  bool m_isFirst = false;
  QHash<QString, std::vector<Fate>> m_fates;        ///< By names of tables here.
  QHash<QString, QHash<qint64, qint64>> m_numbers;  ///< Keys of the file to keys here; of other tables their own.
};

/// The question on a row with these choices, answered as the wishes say, else by the choice `usual`.
Finding Ask(const SurveyedTable& table, qsizetype row, const QString& word, const QString& what,
            const QList<Choice>& choices, const Answers& answers, qsizetype usual = 0);

}  // namespace moving
