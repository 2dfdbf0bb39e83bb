#pragma once

#include "host/mailing/window/MailingRun.h"
#include "host/records/DailyCopies.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace host {

/// The copies of the database: makes one, says what is in one, and asks which is to take the database's place. That
/// happens when the program has closed the database, and is not done here.
class CopiesDialog : public QDialog {
  Q_OBJECT

 public:
  /// `mayRestore`: the user may put a copy in the database's place.
  CopiesDialog(const QString& connectionString, const QString& title, bool mayRestore, QWidget* parent = nullptr);

  /// The copy that the user wants back; empty for none. The dialog is accepted then.
  const QString& Wanted() const { return m_wanted; }
  bool IsBusy() const { return m_run.IsRunning(); }

  void reject() override;

 private:
  void AddButtons();
  void ShowPlace();
  void ReadCopies();
  void ShowContent();
  QString Chosen() const;
  void MakeCopy();
  void RestoreOther();
  void Restore(const QString& copy);
  void ShowRunning(bool isRunning);

  QString m_connectionString;
  QString m_title;
  bool m_mayRestore;
  QString m_wanted;
  QLabel* m_place;
  QTreeWidget* m_list;
  QLabel* m_content;
  QLabel* m_state;
  QProgressBar* m_progress;
  QPushButton* m_make = nullptr;
  QPushButton* m_restore = nullptr;
  QPushButton* m_restoreOther = nullptr;
  MailingRun m_run;
};

}  // namespace host
