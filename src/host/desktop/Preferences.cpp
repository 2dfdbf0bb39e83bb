#include "host/desktop/Preferences.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int textStep = 25;

}  // namespace

Preferences::Preferences(QWidget* parent)
    : QDialog(parent), m_colours(new QComboBox(this)), m_text(new QSpinBox(this)) {
  setObjectName(u"preferences"_s);
  setWindowTitle(u"Preferencias"_s);
  m_colours->setObjectName(u"cboColours"_s);
  m_colours->addItems({u"Como el escritorio"_s, u"Claros"_s, u"Oscuros"_s});
  m_text->setObjectName(u"spnText"_s);
  m_text->setRange(Look::smallestText, Look::largestText);
  m_text->setSingleStep(textStep);
  m_text->setSuffix(u" %"_s);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(u"&Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  auto* initial = buttons->addButton(u"&Valores iniciales"_s, QDialogButtonBox::ResetRole);
  initial->setObjectName(u"initialLook"_s);
  auto* layout = new QFormLayout(this);
  layout->addRow(u"C&olores:"_s, m_colours);
  layout->addRow(u"&Tamaño del texto:"_s, m_text);
  auto* when = new QLabel(u"Valen desde la próxima vez que abra el programa."_s, this);
  when->setObjectName(u"lblWhen"_s);
  layout->addRow(when);
  layout->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &Preferences::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &Preferences::reject);
  connect(initial, &QPushButton::clicked, this, [this] { Show({}); });
  Show(StoredLook());
}

void Preferences::Show(const Look& look) {
  m_colours->setCurrentIndex(static_cast<int>(look.colours));
  m_text->setValue(look.textPercent);
}

void Preferences::accept() {
  const Look look{.colours = static_cast<Look::Colours>(m_colours->currentIndex()), .textPercent = m_text->value()};
  StoreLook(look);
  QDialog::accept();
}

}  // namespace host
