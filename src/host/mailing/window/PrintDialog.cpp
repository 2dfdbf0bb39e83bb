#include "host/mailing/window/PrintDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostPages = 99999;
constexpr int mostCopies = 99;

}  // namespace

QList<KnownPrinter> KnownPrinters() {
  QList<KnownPrinter> printers;
  for (const PrintQueue& queue : PrintQueues()) {
    printers.append({queue, TraysOf(queue.name)});
  }
  return printers;
}

PrintDialog::PrintDialog(const QList<KnownPrinter>& printers, int pages, bool maybeBothSides, QWidget* parent)
    : QDialog(parent),
      m_printers(printers),
      m_printer(new QComboBox(this)),
      m_trouble(new QLabel(this)),
      m_tray(new QComboBox(this)),
      m_all(new QRadioButton(u"&Todas"_s, this)),
      m_some(new QRadioButton(u"&Desde la"_s, this)),
      m_first(new QSpinBox(this)),
      m_last(new QSpinBox(this)),
      m_copies(new QSpinBox(this)),
      m_bothSides(new QCheckBox(u"Por las dos &caras (cada carta empieza una hoja)"_s, this)) {
  setObjectName(u"dlgImprimir"_s);
  setWindowTitle(u"Imprimir"_s);
  m_printer->setObjectName(u"cboImpresora"_s);
  m_trouble->setTextFormat(Qt::PlainText);
  m_trouble->setWordWrap(true);
  m_tray->setObjectName(u"cboBandeja"_s);
  m_all->setChecked(true);
  m_some->setObjectName(u"optAlgunas"_s);
  for (QSpinBox* page : {m_first, m_last}) {
    page->setRange(1, pages > 0 ? pages : mostPages);
  }
  m_first->setObjectName(u"numPaginaPrimera"_s);
  m_first->setAccessibleName(u"Primera página"_s);
  m_last->setObjectName(u"numPaginaUltima"_s);
  m_last->setAccessibleName(u"Última página"_s);
  m_last->setValue(pages > 0 ? pages : 1);
  m_copies->setObjectName(u"numEjemplares"_s);
  m_copies->setRange(1, mostCopies);
  m_bothSides->setObjectName(u"chkDosCaras"_s);
  m_bothSides->setVisible(maybeBothSides);
  auto* range = new QHBoxLayout;
  range->addWidget(m_all);
  range->addWidget(m_some);
  range->addWidget(m_first);
  range->addWidget(new QLabel(u"hasta la"_s, this));
  range->addWidget(m_last);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"Cancelar"_s);
  m_print = buttons->addButton(u"&Imprimir"_s, QDialogButtonBox::AcceptRole);
  m_print->setObjectName(u"cmdImprimirYa"_s);
  auto* form = new QFormLayout(this);
  form->addRow(u"Im&presora:"_s, m_printer);
  form->addRow(m_trouble);
  form->addRow(u"&Bandeja:"_s, m_tray);
  form->addRow(u"Páginas:"_s, range);
  form->addRow(u"&Ejemplares:"_s, m_copies);
  form->addRow(m_bothSides);
  form->addRow(buttons);
  for (const KnownPrinter& printer : printers) {
    m_printer->addItem(printer.title, printer.name);
  }
  const auto usual = std::ranges::find_if(printers, [](const KnownPrinter& printer) { return printer.isUsual; });
  m_printer->setCurrentIndex(usual == printers.end() ? 0 : static_cast<int>(usual - printers.begin()));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_printer, &QComboBox::currentIndexChanged, this, &PrintDialog::ShowPrinter);
  connect(m_some, &QRadioButton::toggled, this, &PrintDialog::ShowRange);
  connect(m_first, &QSpinBox::valueChanged, m_last, [this](int first) { m_last->setMinimum(first); });
  ShowPrinter();
  ShowRange();
}

const KnownPrinter* PrintDialog::Chosen() const {
  const int at = m_printer->currentIndex();
  return at < 0 ? nullptr : &m_printers[at];
}

void PrintDialog::ShowPrinter() {
  const KnownPrinter* printer = Chosen();
  m_trouble->setText(printer == nullptr
                         ? u"No hay ninguna impresora. Añádala en la configuración del sistema, o guarde un PDF."_s
                         : printer->trouble);
  m_trouble->setVisible(!m_trouble->text().isEmpty());
  m_print->setEnabled(printer != nullptr && printer->trouble.isEmpty());
  m_tray->clear();
  m_tray->addItem(u"la que elija la impresora"_s, QString());
  for (const PrintTray& tray : printer == nullptr ? QList<PrintTray>() : printer->trays) {
    m_tray->addItem(tray.title, tray.word);
  }
}

void PrintDialog::ShowRange() {
  m_first->setEnabled(m_some->isChecked());
  m_last->setEnabled(m_some->isChecked());
}

PrintWish PrintDialog::Wish() const {
  PrintWish wish;
  wish.queue = m_printer->currentData().toString();
  wish.tray = m_tray->currentData().toString();
  wish.bothSides = m_bothSides->isChecked() && !m_bothSides->isHidden();
  wish.copies = m_copies->value();
  if (m_some->isChecked()) {
    wish.pages = {m_first->value(), m_last->value()};
  }
  return wish;
}

}  // namespace host
