#pragma once

#include "host/moving/BringIn.h"
#include "host/moving/window/MovingTask.h"
#include "moving/Outline.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QStackedWidget;

namespace host {

class FilePage;
class PreviewPage;
class TablesPage;

/// The assistant that brings a file of another program in: which file, which of its tables and columns, what would come
/// in, the bringing in itself, the report. Nothing is written before its fourth step; file and database are read and
/// written beside the window's own work.
class MovingAssistant : public QDialog {
  Q_OBJECT

 public:
  MovingAssistant(MovingPlace place, const QString& title, QWidget* parent = nullptr);
  ~MovingAssistant() override;

  /// Begins with that file.
  void Open(const QString& file);
  bool IsBusy() const { return m_task.IsRunning(); }
  /// Whether anything was brought in.
  bool HasBrought() const { return m_isBrought; }

  void reject() override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum Step { File, Tables, Preview, Run, Report, StepCount };

  QWidget* MakeSteps();
  void ShowSteps();
  QWidget* MakeRunPage();
  QWidget* MakeReportPage();
  void Connect();
  moving::ImportWishes Wishes() const;
  void ReadFile();
  void ReadPreview();
  void Bring();
  void ShowTables();
  void Next();
  void Back();
  void Go(Step step);
  void ShowProgress(moving::ImportStep step, qint64 done, qint64 total);
  void ShowFailure(const automation::Error& error);
  void ShowReport(const Brought& brought);
  void SaveReport(const QString& text);
  void Update();
  bool MayGoOn() const;

  const MovingPlace m_place;
  const QString m_title;
  Step m_step = File;
  bool m_isRead = false;  ///< The file that is shown was read.
  bool m_isNew = true;    ///< Nothing was said of its tables yet.
  QString m_sheet;        ///< The one that its tables are shown of.
  bool m_isBrought = false;
  moving::Outline m_outline;
  moving::Answers m_answers;
  QWidget* m_steps = nullptr;
  QList<QLabel*> m_stepLabels;
  QLabel* m_heading;
  QLabel* m_fileLabel;
  QStackedWidget* m_pages;
  FilePage* m_file;
  TablesPage* m_tables;
  PreviewPage* m_preview;
  QLabel* m_state = nullptr;
  QProgressBar* m_progress = nullptr;
  QPlainTextEdit* m_report = nullptr;
  QPushButton* m_back;
  QPushButton* m_next;
  QPushButton* m_cancel;
  MovingTask m_task;
};

}  // namespace host
