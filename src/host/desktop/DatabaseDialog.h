#pragma once

#include "host/desktop/NextStart.h"

#include <QDialog>

class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace host {

/// Asks which database the program works with: one of the last ones, another file, a new one, a server's, a copy, or
/// the demonstration. It opens none.
class DatabaseDialog : public QDialog {
  Q_OBJECT

 public:
  /// `reason`: why the user is asked, a sentence. `usualFile`: where a new database goes unless the user says
  /// otherwise. `unreadable`: the file that could not be opened; empty where there is none. A copy takes its place, or
  /// becomes the usual file, so without one copies are offered only while the usual file is not there.
  DatabaseDialog(const QString& reason, const QString& usualFile, const QString& unreadable, QWidget* parent = nullptr);

  /// What was chosen, where the dialog was accepted.
  const NextStart& Chosen() const { return m_chosen; }

 private:
  QPushButton* AddWay(QVBoxLayout& layout, const char* name, const QString& text, void (DatabaseDialog::*way)());
  void ShowRecent(QVBoxLayout& layout);
  void OpenRecent();
  void Create();
  void OpenFile();
  void OpenServer();
  void RestoreCopy();
  void Demonstrate();
  /// Empty where the user gives up.
  QString AskForFile(const QString& title, const QString& proposed, bool isNew);
  void Choose(const NextStart& next);

  QString m_usualFile;
  QString m_copyPlace;
  QListWidget* m_recent;
  QPushButton* m_open;
  NextStart m_chosen;
};

}  // namespace host
