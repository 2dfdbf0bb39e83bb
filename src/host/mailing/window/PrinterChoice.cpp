#include "host/mailing/window/PrinterChoice.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace host {

QList<KnownPrinter> KnownPrinters() {
  QList<KnownPrinter> printers;
  for (const PrintQueue& queue : PrintQueues()) {
    printers.append({queue, TraysOf(queue.name)});
  }
  return printers;
}

PrinterChoice::PrinterChoice(QFormLayout& form, QWidget& parent)
    : QObject(&parent),
      m_printer(new QComboBox(&parent)),
      m_trouble(new QLabel(u"Buscando impresoras…"_s, &parent)),
      m_tray(new QComboBox(&parent)) {
  m_printer->setObjectName(u"cboImpresora"_s);
  m_trouble->setObjectName(u"lblImpresora"_s);
  m_trouble->setTextFormat(Qt::PlainText);
  m_trouble->setWordWrap(true);
  m_tray->setObjectName(u"cboBandeja"_s);
  for (QComboBox* box : {m_printer, m_tray}) {
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  }
  form.addRow(u"Im&presora:"_s, m_printer);
  form.addRow(m_trouble);
  form.addRow(u"&Bandeja:"_s, m_tray);
  connect(m_printer, &QComboBox::currentIndexChanged, this, &PrinterChoice::ShowChosen);
}

void PrinterChoice::Show(const QList<KnownPrinter>& printers) {
  {
    const QSignalBlocker quiet(m_printer);
    m_printers = printers;
    m_printer->clear();
    for (const KnownPrinter& printer : printers) {
      m_printer->addItem(printer.title, printer.name);
      if (printer.isUsual) {
        m_printer->setCurrentIndex(m_printer->count() - 1);
      }
    }
  }
  ShowChosen();
}

bool PrinterChoice::CanPrint() const {
  return Chosen() != nullptr && Chosen()->trouble.isEmpty();
}

QString PrinterChoice::Queue() const {
  return m_printer->currentData().toString();
}

QString PrinterChoice::Tray() const {
  return m_tray->currentData().toString();
}

const KnownPrinter* PrinterChoice::Chosen() const {
  const int at = m_printer->currentIndex();
  return at < 0 ? nullptr : &m_printers[at];
}

void PrinterChoice::ShowChosen() {
  const KnownPrinter* printer = Chosen();
  m_trouble->setText(printer == nullptr
                         ? u"No hay ninguna impresora. Añádala en la configuración del sistema, o guarde un PDF."_s
                         : printer->trouble);
  m_trouble->setVisible(!m_trouble->text().isEmpty());
  m_tray->clear();
  m_tray->addItem(u"la que elija la impresora"_s, QString());
  for (const PrintTray& tray : printer == nullptr ? QList<PrintTray>() : printer->trays) {
    m_tray->addItem(tray.title, tray.word);
  }
  m_tray->setEnabled(m_tray->count() > 1);
  Q_EMIT Changed();
}

}  // namespace host
