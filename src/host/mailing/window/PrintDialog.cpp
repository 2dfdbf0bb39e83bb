#include "host/mailing/window/PrintDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostPages = 99999;
constexpr int mostCopies = 99;

}  // namespace

PrintDialog::PrintDialog(const QList<KnownPrinter>& printers, int pages, bool maybeBothSides, QWidget* parent)
    : QDialog(parent),
      m_all(new QRadioButton(u"&Todas"_s, this)),
      m_some(new QRadioButton(u"&Desde la"_s, this)),
      m_first(new QSpinBox(this)),
      m_last(new QSpinBox(this)),
      m_copies(new QSpinBox(this)),
      m_bothSides(new QCheckBox(u"Por las dos &caras (cada carta empieza una hoja)"_s, this)) {
  setObjectName(u"dlgImprimir"_s);
  setWindowTitle(u"Imprimir"_s);
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
  m_printer = new PrinterChoice(*form, *this);
  form->addRow(u"Páginas:"_s, range);
  form->addRow(u"&Ejemplares:"_s, m_copies);
  form->addRow(m_bothSides);
  form->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_printer, &PrinterChoice::Changed, this, [this] { m_print->setEnabled(m_printer->CanPrint()); });
  connect(m_some, &QRadioButton::toggled, this, &PrintDialog::ShowRange);
  connect(m_first, &QSpinBox::valueChanged, m_last, [this](int first) { m_last->setMinimum(first); });
  m_printer->Show(printers);
  ShowRange();
}

void PrintDialog::ShowRange() {
  m_first->setEnabled(m_some->isChecked());
  m_last->setEnabled(m_some->isChecked());
}

PrintWish PrintDialog::Wish() const {
  PrintWish wish;
  wish.queue = m_printer->Queue();
  wish.tray = m_printer->Tray();
  wish.bothSides = m_bothSides->isChecked() && !m_bothSides->isHidden();
  wish.copies = m_copies->value();
  if (m_some->isChecked()) {
    wish.pages = {m_first->value(), m_last->value()};
  }
  return wish;
}

}  // namespace host
