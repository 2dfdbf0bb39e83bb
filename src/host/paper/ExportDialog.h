#pragma once

#include "host/mailing/window/MailingRun.h"
#include "host/paper/ListTable.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QWidget;

namespace host {

/// Asks how a list is to be exported and where to, and does it beside the window's work. It is accepted when the file
/// is there; cancelling ends what runs, and leaves nothing.
class ExportDialog : public QDialog {
  Q_OBJECT

 public:
  /// `selected`: the selected records only; without rows where none is.
  ExportDialog(ListTable shown, ListTable selected, QWidget* parent = nullptr);

  /// What was done, a sentence.
  const QString& News() const { return m_news; }

  void reject() override;

 private:
  QWidget* Choices();
  int Kind() const;
  void ShowKind();
  void Save();
  void Start(const QString& path);
  void End(const RunResult& result);
  void ShowRunning(bool isRunning);

  ListTable m_shown;
  ListTable m_selected;
  QString m_news;
  QWidget* m_choices = nullptr;
  QRadioButton* m_all = nullptr;
  QRadioButton* m_some = nullptr;
  QList<QRadioButton*> m_kinds;
  QLabel* m_advice;
  QProgressBar* m_progress;
  QPushButton* m_save;
  MailingRun m_run;
};

}  // namespace host
