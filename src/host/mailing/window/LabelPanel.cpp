#include "host/mailing/window/LabelPanel.h"

#include "host/mailing/window/ChoiceBox.h"
#include "host/mailing/window/SheetStartPicture.h"
#include "host/mailing/window/TabOrder.h"
#include "platform/text/Counted.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString Sheets(int count) {
  return texts::Counted(count, u"hoja"_s, u"hojas"_s);
}

}  // namespace

LabelPanel::LabelPanel(QWidget* parent)
    : QWidget(parent),
      m_sheet(new QComboBox(this)),
      m_whom(new QComboBox(this)),
      m_senderCopies(new QSpinBox(this)),
      m_issuer(new QComboBox(this)),
      m_picture(new SheetStartPicture(this)),
      m_result(new QLabel(this)),
      m_last(new QLabel(this)),
      m_copies(new QCheckBox(u"Tantas como e&jemplares de sus suscripciones"_s, this)) {
  m_picture->setObjectName(u"picHoja"_s);
  m_result->setObjectName(u"lblHojas"_s);
  m_result->setWordWrap(true);
  m_last->setObjectName(u"lblUltima"_s);
  m_last->setWordWrap(true);
  m_copies->setObjectName(u"chkEjemplares"_s);
  auto* fields = new QVBoxLayout;
  fields->addWidget(MakeSheetRow());
  fields->addWidget(MakeWhomRow());
  fields->addWidget(MakeStartRow());
  fields->addWidget(m_last);
  fields->addWidget(m_result);
  fields->addWidget(MakeFontRow());
  fields->addWidget(m_copies);
  fields->addStretch(1);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(m_picture, 0, Qt::AlignTop);
  layout->addLayout(fields, 1);
  InTabOrder({m_sheet, findChild<QPushButton*>(u"cmdModificarHoja"_s), m_whom, m_issuer, m_senderCopies, m_picture,
              m_first, findChild<QPushButton*>(u"cmdProponer"_s), m_family, m_points, m_margin, m_copies});
  connect(m_sheet, &QComboBox::currentIndexChanged, this, [this] {
    ShowSheet();
    Q_EMIT Changed();
  });
  connect(m_picture, &SheetStartPicture::Changed, this, &LabelPanel::TakeStart);
  connect(m_copies, &QCheckBox::toggled, this, &LabelPanel::Changed);
  ShowFields();
}

QWidget* LabelPanel::MakeSheetRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_sheet->setObjectName(u"cboHoja"_s);
  m_sheet->setAccessibleName(u"Hoja"_s);
  auto* caption = new QLabel(u"&Hoja:"_s, row);
  caption->setBuddy(m_sheet);
  auto* edit = new QPushButton(u"Modi&ficar…"_s, row);
  edit->setObjectName(u"cmdModificarHoja"_s);
  edit->setToolTip(u"Abrir la hoja de etiquetas para cambiarla"_s);
  connect(edit, &QPushButton::clicked, this, [this] { Q_EMIT EditWanted(Sheet()); });
  layout->addWidget(caption);
  layout->addWidget(m_sheet, 1);
  layout->addWidget(edit);
  return row;
}

QWidget* LabelPanel::MakeWhomRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_whom->setObjectName(u"cboDestino"_s);
  m_whom->setAccessibleName(u"Etiquetas de"_s);
  m_issuer->setObjectName(u"cboEmisor"_s);
  m_issuer->setAccessibleName(u"Emisor de los discos"_s);
  m_senderCopies->setObjectName(u"numCopias"_s);
  m_senderCopies->setAccessibleName(u"Cuántas etiquetas de remite"_s);
  constexpr int mostCopies = 1000;
  m_senderCopies->setRange(1, mostCopies);
  m_senderCopies->setKeyboardTracking(false);
  auto* caption = new QLabel(u"E&tiquetas de:"_s, row);
  caption->setBuddy(m_whom);
  layout->addWidget(caption);
  layout->addWidget(m_whom, 1);
  layout->addWidget(m_issuer, 1);
  layout->addWidget(m_senderCopies);
  connect(m_whom, &QComboBox::currentIndexChanged, this, [this] {
    ShowFields();
    Q_EMIT Changed();
  });
  connect(m_issuer, &QComboBox::currentIndexChanged, this, &LabelPanel::Changed);
  connect(m_senderCopies, &QSpinBox::valueChanged, this, &LabelPanel::Changed);
  return row;
}

QWidget* LabelPanel::MakeStartRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_first = new QSpinBox(row);
  m_first->setObjectName(u"numPrimera"_s);
  m_first->setAccessibleName(u"Empezar en la etiqueta"_s);
  m_first->setKeyboardTracking(false);
  auto* caption = new QLabel(u"&Empezar en la etiqueta:"_s, row);
  caption->setBuddy(m_first);
  auto* again = new QPushButton(u"Pro&poner"_s, row);
  again->setObjectName(u"cmdProponer"_s);
  again->setToolTip(u"Empezar detrás de la última que se usó, sin saltar ninguna"_s);
  layout->addWidget(caption);
  layout->addWidget(m_first);
  layout->addWidget(again);
  layout->addStretch(1);
  connect(m_first, &QSpinBox::valueChanged, this, [this](int label) {
    m_picture->SetFirst(label);
    Q_EMIT Changed();
  });
  connect(again, &QPushButton::clicked, this, [this] {
    Propose();
    Q_EMIT Changed();
  });
  return row;
}

QWidget* LabelPanel::MakeFontRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_family = new QFontComboBox(row);
  m_family->setObjectName(u"cboLetra"_s);
  m_family->setAccessibleName(u"Tipo de letra"_s);
  m_family->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  const auto number = [&](const char* name, const QString& accessible, const QString& suffix, double least, double most,
                          double step) {
    auto* box = new QDoubleSpinBox(row);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(accessible);
    box->setToolTip(accessible);
    box->setSuffix(suffix);
    box->setDecimals(1);
    box->setRange(least, most);
    box->setSingleStep(step);
    box->setKeyboardTracking(false);
    connect(box, &QDoubleSpinBox::valueChanged, this, &LabelPanel::TakeFont);
    return box;
  };
  constexpr double smallest = 4;
  constexpr double largest = 72;
  constexpr double widest = 10;
  m_points = number("numPuntos", u"Tamaño de la letra"_s, u" pt"_s, smallest, largest, 1);
  m_margin = number("numMargen", u"Margen desde la izquierda de la etiqueta"_s, u" cm"_s, 0, widest, 0.1);
  auto* caption = new QLabel(u"&Letra:"_s, row);
  caption->setBuddy(m_family);
  layout->addWidget(caption);
  layout->addWidget(m_family, 1);
  layout->addWidget(m_points);
  layout->addWidget(m_margin);
  connect(m_family, &QFontComboBox::currentFontChanged, this, &LabelPanel::TakeFont);
  return row;
}

const SheetChoice* LabelPanel::Chosen() const {
  const auto found = std::ranges::find(m_sheets, Sheet(), &SheetChoice::id);
  return found == m_sheets.end() ? nullptr : &*found;
}

void LabelPanel::SetChoices(const Choices& choices, bool mayKeep) {
  const int before = Sheet();
  const documents::SheetStart start = m_picture->Start();
  m_sheets = choices.sheets;
  QList<Choice> sheets;
  for (const SheetChoice& sheet : choices.sheets) {
    sheets.append({sheet.id, sheet.isForDisks ? u"%1 (discos)"_s.arg(sheet.name) : sheet.name});
  }
  QList<Choice> senders{{0, u"las personas elegidas"_s}};
  for (const Choice& letterhead : choices.letterheads) {
    senders.append({letterhead.id, u"remite: "_s + letterhead.name});
  }
  FillBox(*m_sheet, sheets);
  FillBox(*m_whom, senders);
  FillBox(*m_issuer, QList<Choice>{{0, u"el emisor de cada disco"_s}} +
                         choices.records[static_cast<std::size_t>(Condition::Issuer)]);
  if (before == 0) {
    Choose(choices.lastSheet);
  }
  for (QWidget* field :
       {static_cast<QWidget*>(m_family), static_cast<QWidget*>(m_points), static_cast<QWidget*>(m_margin)}) {
    field->setEnabled(mayKeep && !m_sheets.isEmpty());
  }
  ShowSheet();
  if (before == Sheet() && before != 0 && !std::exchange(m_forgets, false)) {
    m_picture->Show(Chosen()->sheet, start);
    TakeStart();
  }
}

void LabelPanel::Choose(int sheet) {
  const int place = m_sheet->findData(sheet);
  if (place >= 0) {
    m_sheet->setCurrentIndex(place);
  }
}

bool LabelPanel::IsForPeople() const {
  return m_whom->currentData().toInt() == 0 && (Chosen() == nullptr || !Chosen()->isForDisks);
}

int LabelPanel::Sheet() const {
  return m_sheet->currentData().toInt();
}

QString LabelPanel::Name() const {
  return m_sheet->currentText();
}

void LabelPanel::ShowSheet() {
  const SheetChoice* sheet = Chosen();
  const documents::LabelFont font = sheet == nullptr ? documents::LabelFont() : sheet->font;
  const QSignalBlocker quietFamily(m_family);
  const QSignalBlocker quietPoints(m_points);
  const QSignalBlocker quietMargin(m_margin);
  m_family->setCurrentFont(QFont(font.family));
  m_points->setValue(font.points);
  m_margin->setValue(font.left);
  m_last->setText(sheet == nullptr || sheet->start == 1
                      ? u"Clic: empieza ahí. Ctrl+clic: se salta esa etiqueta, gastada o rota."_s
                      : u"Clic: empieza ahí. Ctrl+clic: se salta esa etiqueta. La última vez acabó en la %1."_s.arg(
                            sheet->start - 1));
  m_result->clear();
  ShowFields();
  Propose();
}

void LabelPanel::ShowFields() {
  const bool isForDisks = Chosen() != nullptr && Chosen()->isForDisks;
  m_whom->setVisible(!isForDisks);
  m_issuer->setVisible(isForDisks);
  m_senderCopies->setVisible(!isForDisks && m_whom->currentData().toInt() != 0);
  m_copies->setVisible(IsForPeople());
}

void LabelPanel::Propose() {
  const SheetChoice* sheet = Chosen();
  const int totals = sheet != nullptr && sheet->sheet ? sheet->sheet->totals : 1;
  const int next = sheet == nullptr ? 1 : std::min(sheet->start, totals);
  m_picture->Show(sheet == nullptr ? std::nullopt : sheet->sheet, {next, {}});
  const QSignalBlocker quiet(m_first);
  m_first->setRange(1, totals);
  m_first->setValue(next);
}

void LabelPanel::TakeStart() {
  const QSignalBlocker quiet(m_first);
  m_first->setValue(m_picture->Start().first);
  Q_EMIT Changed();
}

void LabelPanel::TakeFont() {
  const documents::LabelFont font{
      .family = m_family->currentFont().family(), .points = m_points->value(), .left = m_margin->value()};
  const auto sheet = std::ranges::find(m_sheets, Sheet(), &SheetChoice::id);
  if (sheet != m_sheets.end()) {
    sheet->font = font;
    Q_EMIT FontChosen(sheet->id, font);
  }
}

void LabelPanel::Fill(LabelWish& wish) const {
  wish.sheet = Sheet();
  wish.start = m_picture->Start();
  wish.asManyAsCopies = m_copies->isChecked();
  if (Chosen() != nullptr && Chosen()->isForDisks) {
    wish.chosen.reset();
    if (m_issuer->currentData().toInt() != 0) {
      wish.disks.issuers = {m_issuer->currentData().toInt()};
    }
  } else {
    wish.letterhead = m_whom->currentData().toInt();
    wish.copies = m_senderCopies->value();
  }
}

void LabelPanel::Tell(const LabelMailing& labels) {
  if (labels.Labels() == 0) {
    m_result->clear();
    return;
  }
  const int left = labels.Sheet().totals - labels.LastLabel();
  m_result->setText(u"%1. La última acaba en la etiqueta %2: quedan %3 para otra vez."_s.arg(Sheets(labels.Count()))
                        .arg(labels.LastLabel())
                        .arg(left));
}

}  // namespace host
