#include "host/desktop/Preferences.h"

#include "host/desktop/OfficePage.h"
#include "host/help/HelpDesk.h"
#include "host/records/DailyCopies.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int textStep = 25;

}  // namespace

Preferences::Preferences(ComponentBridge& bridge, bool isFile, QWidget* parent)
    : QDialog(parent),
      m_title(bridge.Session().title),
      m_colours(new QComboBox(this)),
      m_text(new QSpinBox(this)),
      m_copies(new QCheckBox(u"&Hacer una copia cada día, al empezar"_s, this)),
      m_office(new OfficePage(bridge, isFile, this)),
      m_pages(new QTabWidget(this)) {
  setObjectName(u"preferences"_s);
  setProperty(HelpDesk::topicProperty, u"ventana#preferences"_s);
  setWindowTitle(u"Preferencias"_s);
  m_pages->setAccessibleName(u"Para quién"_s);
  m_pages->setObjectName(u"tabPages"_s);
  m_pages->addTab(OwnPage(isFile), u"Para &usted"_s);
  m_pages->addTab(m_office, u"&Para todos"_s);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(u"&Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_pages);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &Preferences::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &Preferences::reject);
  Show(StoredLook());
}

QWidget* Preferences::OwnPage(bool isFile) {
  auto* page = new QWidget(this);
  m_colours->setObjectName(u"cboColours"_s);
  m_colours->addItems({u"Como el escritorio"_s, u"Claros"_s, u"Oscuros"_s});
  m_text->setObjectName(u"spnText"_s);
  m_text->setRange(Look::smallestText, Look::largestText);
  m_text->setSingleStep(textStep);
  m_text->setSuffix(u" %"_s);
  m_copies->setObjectName(u"chkCopies"_s);
  m_copies->setChecked(WantsDailyCopies());
  m_copies->setVisible(isFile);
  auto* initial = new QPushButton(u"&Valores iniciales"_s, page);
  initial->setObjectName(u"initialLook"_s);
  initial->setAutoDefault(false);
  auto* when = new QLabel(u"Valen desde la próxima vez que abra el programa."_s, page);
  when->setObjectName(u"lblWhen"_s);
  when->setWordWrap(true);
  auto* form = new QFormLayout(page);
  form->addRow(u"C&olores:"_s, m_colours);
  form->addRow(u"&Tamaño del texto:"_s, m_text);
  if (isFile) {
    form->addRow(m_copies);
  }
  form->addRow(when);
  form->addRow(initial);
  connect(initial, &QPushButton::clicked, this, [this] {
    Show({});
    m_copies->setChecked(true);
  });
  return page;
}

void Preferences::Show(const Look& look) {
  m_colours->setCurrentIndex(static_cast<int>(look.colours));
  m_text->setValue(look.textPercent);
}

void Preferences::accept() {
  try {
    m_office->Store();
  } catch (const automation::Error& error) {
    m_pages->setCurrentWidget(m_office);
    ShowError(this, m_title, u"Los ajustes para todos no se han guardado."_s, error);
    return;
  }
  StoreLook({.colours = static_cast<Look::Colours>(m_colours->currentIndex()), .textPercent = m_text->value()});
  if (m_copies->isChecked() != WantsDailyCopies()) {
    WantDailyCopies(m_copies->isChecked());
  }
  QDialog::accept();
}

}  // namespace host
