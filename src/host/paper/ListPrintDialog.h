#pragma once

#include "host/mailing/window/MailingRun.h"
#include "host/mailing/window/PrinterChoice.h"
#include "host/paper/ListPages.h"

#include <QDialog>

#include <memory>

class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QVBoxLayout;

namespace paper {
class PageView;
}

namespace host {

/// A list before it is printed: which records and columns, on which sheets, and how that looks. From here it goes to a
/// printer or into a PDF, beside the window's work.
class ListPrintDialog : public QDialog {
  Q_OBJECT

 public:
  /// `selected`: the selected records only; without rows where none is. The database keeps the calibration of printers.
  ListPrintDialog(ListTable shown, ListTable selected, const QString& connectionString, QWidget* parent = nullptr);
  ~ListPrintDialog() override;

  /// What was done last, a sentence.
  const QString& News() const { return m_news; }
  /// True while printers are looked for or something is written.
  bool IsBusy() const { return m_search.IsRunning() || m_run.IsRunning(); }

  void reject() override;

 private:
  QWidget* Choices();
  void AddPrinter(QFormLayout& form);
  void AddSheets(QVBoxLayout& layout);
  void AddWhat(QVBoxLayout& layout);
  QDialogButtonBox* Buttons();
  QWidget* Preview();
  void FindPrinters();
  ListTable Chosen() const;
  /// Lays the chosen records out anew.
  void ShowPages();
  QString FitText() const;
  void Print();
  void SaveAsPdf();
  void Start(const MailingRun::Work& work);
  void End(const RunResult& result);
  void ShowRunning(bool isRunning);
  void UpdateButtons();

  ListTable m_shown;
  ListTable m_selected;
  QString m_connectionString;
  QString m_news;
  std::shared_ptr<const ListPages> m_pages;
  QWidget* m_choices = nullptr;
  PrinterChoice* m_printer = nullptr;
  QSpinBox* m_first = nullptr;
  QSpinBox* m_last = nullptr;
  QSpinBox* m_copies = nullptr;
  QRadioButton* m_landscape = nullptr;
  QRadioButton* m_some = nullptr;
  QListWidget* m_columns = nullptr;
  QLabel* m_fit = nullptr;
  QLabel* m_state = nullptr;
  QProgressBar* m_progress = nullptr;
  QPushButton* m_print = nullptr;
  QPushButton* m_pdf = nullptr;
  paper::PageView* m_view = nullptr;
  MailingRun m_search;
  MailingRun m_run;
};

}  // namespace host
