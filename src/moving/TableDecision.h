#pragma once

#include "moving/KnownRecords.h"
#include "moving/Plan.h"

namespace moving {

/// The fates of one table's rows; those that it refers to have theirs.
class TableDecision {
 public:
  TableDecision(Plan& plan, SurveyedTable& table, const ImportWishes& wishes);

  void Run();

 private:
  TableReport& Report() { return m_table.report; }
  void DecideRow(std::size_t row);
  void DecideKnown(std::size_t row, bool isLive, KnownRecords::Found found);
  /// `translated` has its references as they are here.
  void DecideNew(std::size_t row, const RowFacts& facts, const RowFacts& translated);
  /// True for one that is another row of the file, or a record of here after all.
  bool IsJoined(std::size_t row, const RowFacts& facts);
  bool IsTakenForKnown(std::size_t row, const RowFacts& facts);
  /// The live row of the file before this one that has its number, -1 for none.
  qsizetype RowWithItsNumber(std::size_t row, const RowFacts& facts);
  void TellLostReferences(const RowFacts& facts, const RowFacts& translated);
  bool LacksOwner(const RowFacts& translated) const;
  QString FreeSuffix(const QString& folded) const;
  void GiveNumbers();
  /// Asks, reports the question, and gives the word of its answer.
  QString Answer(std::size_t row, const QString& word, const QString& what, const QString& here,
                 const QList<Choice>& choices, qsizetype usual = 0);
  QString NameOf(std::size_t row) const { return RowName(m_table, qsizetype(row)); }

  Plan& m_plan;
  SurveyedTable& m_table;
  const ImportWishes& m_wishes;
  const TableRule& m_rule;
  KnownRecords m_known;
  qsizetype m_beside;
  qsizetype m_number;
  qsizetype m_numberName;
  std::vector<Fate>& m_fates;
  QHash<QString, qsizetype> m_numbers;  ///< Rows by the number that only one may have.
  QSet<qint64> m_met;                   ///< Records of here that rows of the file are.
  std::vector<std::size_t> m_new;
  std::vector<std::pair<std::size_t, std::size_t>> m_joined;
};

}  // namespace moving
