#pragma once

#include "host/mailing/window/BackgroundReader.h"
#include "host/mailing/window/MailingContext.h"
#include "host/mailing/window/MailingOutput.h"
#include "host/mailing/window/MailingRun.h"
#include "host/mailing/window/NoticeBox.h"
#include "host/mailing/window/PrintDialog.h"

#include <QMainWindow>

class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QToolBar;

namespace host {

struct Choices;
class LabelPanel;
class LetterPanel;
class PeoplePanel;
class PostingPanel;
class PreviewPanel;
class SelectionCommands;

/// The window in which letters and labels for people are chosen, looked at and made. What the database knows is read
/// beside its own work, and again for each change of what is wanted; a run reads everything anew.
class MailingWindow : public QMainWindow {
  Q_OBJECT

 public:
  enum class Page { Letters, Labels };

  explicit MailingWindow(MailingContext context, QWidget* parent = nullptr);
  /// Ends a run; nothing half-written is left.
  ~MailingWindow() override;

  /// Shows a page; a letter or sheet of that number is chosen where it is there.
  void Open(Page page, int id = 0);
  /// True while something is read or written.
  bool IsBusy() const { return m_reader.IsBusy() || m_run.IsRunning(); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  using Topic = BackgroundReader::Topic;

  void MakeLayout();
  void MakeActions();
  void MakeMenus();
  void MakeStatusBar();
  void Connect();
  QAction* AddAction(const char* name, const QString& text, const QString& brief, const QString& icon,
                     const QKeySequence& key);

  void ReadChoices();
  void TakeChoices(const Choices& choices);
  void WantSelection(int id);
  void ReadPeople();
  void ReadMailing();
  void ReadLetters();
  void ReadLabels();
  /// What was read, with its fingerprints.
  void Take(const std::shared_ptr<LetterMailing>& letters, const QList<std::size_t>& seen);
  void Take(const std::shared_ptr<LabelMailing>& labels, const QList<std::size_t>& seen);
  void TakeNotes(const MailingNotes& notes, const QStringList& faults);
  void ForgetMailing(const QString& why);
  void ShowFailure(BackgroundReader::Topic topic, const automation::Error& error);
  void ShowPage(Page page);
  void KeepFont(int sheet, const documents::LabelFont& font);
  void EditRecord(int node, int id);
  void Follow(const Notice& notice);

  LetterWish WishedLetters() const;
  LabelWish WishedLabels() const;
  void Make(OutputOrder::Kind kind);
  void AskForPrinter();
  void PrintOn(const QList<KnownPrinter>& printers);
  void Start(OutputOrder order);
  void AskHowTheyCameOut(int lastLabel);
  QString AskForTarget(OutputOrder::Kind kind);
  bool AcceptsFaults();
  void ShowProgress(int done, int parts);
  void ShowResult(const RunResult& result);
  void ShowRunFailure(const automation::Error& error);
  void UpdateState();
  void Say(const QString& text);

  const MailingContext m_context;
  Page m_page = Page::Letters;
  int m_wantedLetter = 0;  ///< To be chosen when the letters are read.
  int m_wantedSheet = 0;
  bool m_hasChoices = false;
  int m_pieces = 0;
  int m_printedSheet = 0;  ///< The sheet of the labels that are being printed.
  QList<std::size_t> m_seen;
  QStringList m_faults;
  QStringList m_accepted;
  PeoplePanel* m_people;
  LetterPanel* m_letter;
  LabelPanel* m_label;
  PostingPanel* m_posting;
  NoticeBox* m_notices;
  PreviewPanel* m_preview;
  QStackedWidget* m_what;
  QToolBar* m_bar = nullptr;
  QLabel* m_state = nullptr;
  QProgressBar* m_progress = nullptr;
  QPushButton* m_cancel = nullptr;
  QAction* m_lettersPage = nullptr;
  QAction* m_labelsPage = nullptr;
  QAction* m_print = nullptr;
  QAction* m_pdf = nullptr;
  QAction* m_pdfPerPerson = nullptr;
  QAction* m_rtfPerPerson = nullptr;
  QAction* m_calibrate = nullptr;
  QAction* m_refresh = nullptr;
  SelectionCommands* m_selections = nullptr;
  BackgroundReader m_reader;
  MailingRun m_run;
};

}  // namespace host
