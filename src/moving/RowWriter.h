#pragma once

#include "moving/Plan.h"

#include <QCryptographicHash>

namespace moving {

/// The second reading: each row becomes its statement, which is sent where `writes`. Completes the reports with what
/// can be known only beside the rows: their labels, and where records of here have other values.
class RowWriter : public SourceListener {
 public:
  /// Borrows all of them.
  RowWriter(Survey& survey, Plan& plan, adodb::Connection& connection, const ImportWishes& wishes, bool writes);

  /// Whether there is anything to read for: rows to write, to compare, or to be called by what stands in them.
  bool NeedsRows() const;

  void BeginTable(const SourceTable& table) override;
  void Row(const SourceRow& row) override;
  void EndTable(qint64 missing) override;
  void Linked(const QString& /*name*/) override {}
  void Unreadable(const QString& /*name*/) override {}

  /// Tells one import of a file from another: what became of every row.
  QString Seal() const { return QString::fromLatin1(m_seal.result().toHex()); }

 private:
  const database::Table& Here() const { return m_table->shape->Here(); }
  bool IsNeeded(const Fate& fate) const;
  void WriteRow(const Fate& fate, const QList<Value>& values);
  QList<Value> WithReferences(QList<Value> values);
  void Insert(const Fate& fate, QList<Value> values);
  void Compare(const Fate& fate, const QList<Value>& values);
  void Update(qint64 key, const QList<int>& positions, const QList<Value>& values);
  void LabelFindings(const QList<Value>& values);
  void SealTable(const SurveyedTable& table);
  void AddToSeal(const QString& text) { m_seal.addData(text.toUtf8() + '\n'); }
  void Send(const QString& statement);

  Survey& m_survey;
  Plan& m_plan;
  adodb::Connection& m_connection;
  const ImportWishes& m_wishes;
  const bool m_writes;
  SurveyedTable* m_table = nullptr;
  const std::vector<Fate>* m_fates = nullptr;
  std::size_t m_next = 0;
  std::size_t m_row = 0;
  QMultiHash<qsizetype, qsizetype> m_unlabelled;  ///< Findings of the table by their rows.
  qint64 m_done = 0;
  qint64 m_total = 0;
  QCryptographicHash m_seal;
};

/// Raises 5: it is not the file that was looked at.
[[noreturn]] void RefuseChangedFile();

}  // namespace moving
