#pragma once

#include "host/mailing/printing/PrintQueues.h"

#include <QObject>

class QComboBox;
class QFormLayout;
class QLabel;
class QWidget;

namespace host {

/// A printer with its trays.
struct KnownPrinter : PrintQueue {
  QList<PrintTray> trays;
};

/// All printers. Asks the print server, which may take its time.
QList<KnownPrinter> KnownPrinters();

/// The rows of a form in which a printer and its tray are chosen, with what keeps it from printing.
class PrinterChoice : public QObject {
  Q_OBJECT

 public:
  /// Adds the rows; their controls belong to the form's widget. Without printers until they are known.
  PrinterChoice(QFormLayout& form, QWidget& parent);

  void Show(const QList<KnownPrinter>& printers);
  bool CanPrint() const;
  QString Queue() const;
  /// Empty for the printer's own choice.
  QString Tray() const;

 Q_SIGNALS:
  void Changed();

 private:
  const KnownPrinter* Chosen() const;
  void ShowChosen();

  QList<KnownPrinter> m_printers;
  QComboBox* m_printer;
  QLabel* m_trouble;
  QComboBox* m_tray;
};

}  // namespace host
