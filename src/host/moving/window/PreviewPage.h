#pragma once

#include "host/moving/window/GridView.h"
#include "moving/ImportReport.h"

#include <QWidget>

#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace host {

/// What would come in, table by table, and what there is to know of each, with its questions and their answers.
class PreviewPage : public QWidget {
  Q_OBJECT

 public:
  /// `copies` is the folder of copies, for people.
  explicit PreviewPage(const QString& copies, QWidget* parent = nullptr);

  void Show(const moving::ImportReport& report);
  /// Nothing is known yet, and why; `fault` where it will not be.
  void ShowText(const QString& text, bool fault = false);
  const moving::ImportReport& Report() const { return m_report; }
  bool AcceptsLosses() const;
  /// Whether what is shown can be brought in.
  bool MayBring() const;
  /// Forgets the consent to losses.
  void Forget();

 Q_SIGNALS:
  /// Somebody answered otherwise: the question and the word, see moving::Answers.
  void Answered(const QString& question, const QString& word);
  void Changed();
  void ReportWanted();

 private:
  QWidget* MakeFindings();
  void ShowFindings();
  void Arrange();
  GridCell TableCell(int row, int column) const;
  GridCell FindingCell(int row, int column) const;
  QString Summary() const;
  const moving::TableReport* Current() const;

  moving::ImportReport m_report;
  bool m_isShown = false;
  std::vector<int> m_shown;  ///< The findings that the search lets through.
  QLabel* m_info;
  GridView* m_tables;
  QLabel* m_heading;
  QLineEdit* m_search;
  GridView* m_findings;
  QCheckBox* m_accept;
};

}  // namespace host
