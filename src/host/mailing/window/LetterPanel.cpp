#include "host/mailing/window/LetterPanel.h"

#include "host/mailing/window/ChoiceBox.h"
#include "host/mailing/window/TabOrder.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>

using namespace Qt::StringLiterals;

using documents::Marker;
using documents::Subject;

namespace host {

namespace {

constexpr int firstYear = 1990;
constexpr int lastYear = 2100;

QString SubjectKey(int letter) {
  return u"Correo/Carta%1"_s.arg(letter);
}

QDateEdit* DayField(const char* name, const QString& accessible, QDate day, QWidget* parent) {
  auto* field = new QDateEdit(day, parent);
  field->setObjectName(QString::fromLatin1(name));
  field->setAccessibleName(accessible);
  field->setCalendarPopup(true);
  field->setDisplayFormat(u"dd/MM/yyyy"_s);
  return field;
}

}  // namespace

LetterPanel::LetterPanel(QWidget* parent)
    : QWidget(parent),
      m_form(new QFormLayout(this)),
      m_letter(new QComboBox(this)),
      m_letterhead(new QComboBox(this)),
      m_subject(new QComboBox(this)),
      m_year(new QSpinBox(this)),
      m_date(DayField("datCarta", u"Fecha de la carta"_s, QDate::currentDate(), this)),
      m_period(new QLineEdit(this)),
      m_receiver(new QLineEdit(this)) {
  m_form->setContentsMargins({});
  AddFields();
  InTabOrder({m_letter, findChild<QPushButton*>(u"cmdModificarCarta"_s), m_letterhead, m_subject, m_which, m_from,
              m_until, m_year, m_date, m_period, m_receiver});
  connect(m_letter, &QComboBox::currentIndexChanged, this, &LetterPanel::Changed);
  connect(m_letterhead, &QComboBox::currentIndexChanged, this, &LetterPanel::Changed);
  connect(m_subject, &QComboBox::activated, this, [this] {
    RememberSubject();
    Q_EMIT Changed();
  });
  connect(m_which, &QComboBox::currentIndexChanged, this, [this] {
    ShowDates();
    Q_EMIT Changed();
  });
  for (QDateEdit* day : {m_from, m_until, m_date}) {
    connect(day, &QDateEdit::dateChanged, this, &LetterPanel::Changed);
  }
  connect(m_year, &QSpinBox::valueChanged, this, &LetterPanel::Changed);
  for (QLineEdit* text : {m_period, m_receiver}) {
    connect(text, &QLineEdit::textChanged, this, &LetterPanel::Changed);
  }
}

QWidget* LetterPanel::MakeLetterRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_letter->setObjectName(u"cboCarta"_s);
  m_letter->setAccessibleName(u"Carta modelo"_s);
  auto* edit = new QPushButton(u"Modificar…"_s, row);
  edit->setObjectName(u"cmdModificarCarta"_s);
  edit->setToolTip(u"Abrir la carta modelo para cambiarla"_s);
  connect(edit, &QPushButton::clicked, this, [this] { Q_EMIT EditWanted(Letter()); });
  layout->addWidget(m_letter, 1);
  layout->addWidget(edit);
  return row;
}

QWidget* LetterPanel::MakeDonationRow() {
  m_donations = new QWidget(this);
  auto* layout = new QHBoxLayout(m_donations);
  layout->setContentsMargins({});
  m_which = new QComboBox(m_donations);
  m_which->setObjectName(u"cboDonativos"_s);
  m_which->setAccessibleName(u"Donativos"_s);
  m_which->addItems({u"el último de cada persona"_s, u"todos los de estas fechas"_s});
  const QDate today = QDate::currentDate();
  m_from = DayField("datDonativosDesde", u"Donativos desde"_s, QDate(today.year(), 1, 1), m_donations);
  m_until = DayField("datDonativosHasta", u"Donativos hasta"_s, today, m_donations);
  layout->addWidget(m_which, 1);
  layout->addWidget(m_from);
  layout->addWidget(m_until);
  ShowDates();
  return m_donations;
}

void LetterPanel::AddFields() {
  QWidget* letters = MakeLetterRow();
  m_form->addRow(u"Car&ta modelo:"_s, letters);
  static_cast<QLabel*>(m_form->labelForField(letters))->setBuddy(m_letter);
  m_letterhead->setObjectName(u"cboCabecera"_s);
  m_form->addRow(u"Cabec&era:"_s, m_letterhead);
  m_subject->setObjectName(u"cboClase"_s);
  m_subject->addItem(u"donativos"_s, int(Subject::Donation));
  m_subject->addItem(u"suscripciones"_s, int(Subject::Subscription));
  m_form->addRow(u"&Los campos son de:"_s, m_subject);
  QWidget* donations = MakeDonationRow();
  m_form->addRow(u"Do&nativos:"_s, donations);
  static_cast<QLabel*>(m_form->labelForField(donations))->setBuddy(m_which);
  m_year->setObjectName(u"numEjercicio"_s);
  m_year->setRange(firstYear, lastYear);
  m_year->setValue(QDate::currentDate().year() - 1);
  m_year->setKeyboardTracking(false);
  m_form->addRow(u"E&jercicio:"_s, m_year);
  m_form->addRow(u"&Fecha de la carta:"_s, m_date);
  m_period->setObjectName(u"txtPeriodicidad"_s);
  m_period->setPlaceholderText(u"mensual, anual… (igual en todas)"_s);
  m_form->addRow(u"&Periodicidad:"_s, m_period);
  m_receiver->setObjectName(u"txtReceptor"_s);
  m_receiver->setPlaceholderText(u"nombre completo (igual en todas)"_s);
  m_form->addRow(u"&Receptor:"_s, m_receiver);
  for (QWidget* field : {static_cast<QWidget*>(m_subject), m_donations, static_cast<QWidget*>(m_year),
                         static_cast<QWidget*>(m_period), static_cast<QWidget*>(m_receiver)}) {
    ShowRow(field, false);
  }
}

void LetterPanel::ShowRow(QWidget* field, bool visible) {
  field->setVisible(visible);
  m_form->labelForField(field)->setVisible(visible);
}

void LetterPanel::ShowDates() {
  const bool shown = m_which->currentIndex() == 1;
  m_from->setVisible(shown);
  m_until->setVisible(shown);
}

void LetterPanel::SetChoices(const QList<Choice>& letters, const QList<Choice>& letterheads) {
  FillBox(*m_letter, letters);
  FillBox(*m_letterhead, QList<Choice>{{0, u"(ninguna)"_s}} + letterheads);
}

void LetterPanel::Choose(int letter) {
  const int place = m_letter->findData(letter);
  if (place >= 0) {
    m_letter->setCurrentIndex(place);
  }
}

int LetterPanel::Letter() const {
  return m_letter->currentData().toInt();
}

QString LetterPanel::Name() const {
  return m_letter->currentText();
}

void LetterPanel::RememberSubject() const {
  QSettings().setValue(SubjectKey(Letter()), m_subject->currentData());
}

void LetterPanel::Fill(LetterWish& wish) const {
  wish.letter = Letter();
  wish.letterhead = m_letterhead->currentData().toInt();
  wish.moment = QDateTime(m_date->date(), QTime::currentTime());
  wish.usually = Subject(QSettings().value(SubjectKey(Letter()), int(Subject::Donation)).toInt());
  wish.year = m_year->value();
  wish.donationPeriod = m_period->text();
  wish.receiver = m_receiver->text();
  if (m_which->currentIndex() == 1) {
    wish.from = m_from->date();
    wish.until = m_until->date();
  }
}

void LetterPanel::Adapt(const LetterMailing& letters) {
  const QList<Marker>& markers = letters.Markers();
  const Subject subject = letters.About();
  const bool isDonation = subject == Subject::Donation;
  ShowRow(m_subject, letters.Subjects().size() > 1);
  m_subject->setCurrentIndex(m_subject->findData(int(subject)));
  ShowRow(m_donations, isDonation);
  ShowRow(m_year, subject == Subject::TaxReturn);
  ShowRow(m_period,
          markers.contains(Marker::DonationPeriod) || (isDonation && markers.contains(Marker::SubscriptionPeriod)));
  ShowRow(m_receiver, markers.contains(Marker::SubscriptionReceiver));
}

QWidget* LetterPanel::MissingField() const {
  for (QLineEdit* field : {m_period, m_receiver}) {
    if (!field->isHidden() && field->text().trimmed().isEmpty()) {
      return field;
    }
  }
  return nullptr;
}

QStringList LetterPanel::Missing() const {
  QStringList missing;
  if (!m_period->isHidden() && m_period->text().trimmed().isEmpty()) {
    missing.append(u"la periodicidad"_s);
  }
  if (!m_receiver->isHidden() && m_receiver->text().trimmed().isEmpty()) {
    missing.append(u"el receptor"_s);
  }
  return missing;
}

}  // namespace host
