#pragma once

#include "host/mailing/printing/Printing.h"
#include "host/mailing/window/PrinterChoice.h"

#include <QDialog>

class QPushButton;
class QRadioButton;
class QSpinBox;
class QCheckBox;

namespace host {

/// Asks for a printer and which pages it gets.
class PrintDialog : public QDialog {
  Q_OBJECT

 public:
  /// `pages`: how many there are; 0 where only the run knows. Labels are never on both sides.
  PrintDialog(const QList<KnownPrinter>& printers, int pages, bool maybeBothSides, QWidget* parent);

  /// Without the printer's calibration.
  PrintWish Wish() const;

 private:
  void ShowRange();

  PrinterChoice* m_printer = nullptr;
  QRadioButton* m_all;
  QRadioButton* m_some;
  QSpinBox* m_first;
  QSpinBox* m_last;
  QSpinBox* m_copies;
  QCheckBox* m_bothSides;
  QPushButton* m_print;
};

}  // namespace host
