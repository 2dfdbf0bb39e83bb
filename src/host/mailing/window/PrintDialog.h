#pragma once

#include "host/mailing/printing/PrintQueues.h"
#include "host/mailing/printing/Printing.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QCheckBox;

namespace host {

/// A printer with its trays.
struct KnownPrinter : PrintQueue {
  QList<PrintTray> trays;
};

/// All printers. Asks the print server, which may take its time.
QList<KnownPrinter> KnownPrinters();

/// Asks for a printer and which pages it gets.
class PrintDialog : public QDialog {
  Q_OBJECT

 public:
  /// `pages`: how many there are; 0 where only the run knows. Labels are never on both sides.
  PrintDialog(const QList<KnownPrinter>& printers, int pages, bool maybeBothSides, QWidget* parent);

  /// Without the printer's calibration.
  PrintWish Wish() const;

 private:
  const KnownPrinter* Chosen() const;
  void ShowPrinter();
  void ShowRange();

  QList<KnownPrinter> m_printers;
  QComboBox* m_printer;
  QLabel* m_trouble;
  QComboBox* m_tray;
  QRadioButton* m_all;
  QRadioButton* m_some;
  QSpinBox* m_first;
  QSpinBox* m_last;
  QSpinBox* m_copies;
  QCheckBox* m_bothSides;
  QPushButton* m_print;
};

}  // namespace host
