#include "host/mailing/window/PeoplePanel.h"

#include "host/mailing/window/ConditionBar.h"
#include "host/mailing/window/PeopleTable.h"
#include "host/mailing/window/TabOrder.h"
#include "platform/text/Counted.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString PeopleText(int count) {
  return texts::Counted(count, u"persona"_s, u"personas"_s);
}

template <typename Field>
Field* Labelled(QHBoxLayout& row, const QString& label, const char* name, QWidget* parent) {
  auto* field = new Field(parent);
  field->setObjectName(QString::fromLatin1(name));
  field->setAccessibleName(QString(label).remove(u'&').remove(u':'));
  auto* caption = new QLabel(label, parent);
  caption->setBuddy(field);
  row.addWidget(caption);
  row.addWidget(field, 1);
  return field;
}

}  // namespace

PeoplePanel::PeoplePanel(QWidget* parent)
    : QWidget(parent), m_count(new QLabel(this)), m_conditions(new ConditionBar(this)), m_table(new PeopleTable(this)) {
  m_count->setObjectName(u"lblPersonas"_s);
  m_count->setTextFormat(Qt::PlainText);
  m_table->setObjectName(u"lstPersonas"_s);
  m_table->setAccessibleName(u"Personas"_s);
  m_table->SetEmptyText(u"Leyendo la lista…"_s);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(MakeSelectionRow());
  layout->addWidget(m_conditions);
  layout->addWidget(MakeSearchRow());
  layout->addWidget(m_table, 1);
  layout->addWidget(MakeTickRow());
  InTabOrder({m_saved, m_search, m_filter, m_table, findChild<QPushButton*>(u"cmdTodas"_s),
              findChild<QPushButton*>(u"cmdNinguna"_s)});
  m_conditions->ComeAfter(*m_saved);
  connect(m_conditions, &ConditionBar::Changed, this, &PeoplePanel::TakeConditions);
  connect(&m_table->People(), &PeopleModel::Ticked, this, &PeoplePanel::Tick);
}

QWidget* PeoplePanel::MakeSelectionRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_saved = Labelled<QComboBox>(*layout, u"A &quién:"_s, "cboSeleccion", row);
  m_saved->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(m_saved, &QComboBox::activated, this, [this] { Q_EMIT SelectionWanted(m_saved->currentData().toInt()); });
  return row;
}

QWidget* PeoplePanel::MakeSearchRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  m_search = Labelled<QLineEdit>(*layout, u"&Buscar:"_s, "txtBuscarPersona", row);
  m_search->setClearButtonEnabled(true);
  m_search->setPlaceholderText(u"Nombre, población, calle o número"_s);
  m_filter = new QComboBox(row);
  m_filter->setObjectName(u"cboFiltro"_s);
  m_filter->setAccessibleName(u"Qué personas se ven"_s);
  m_filter->addItems({u"Todas"_s, u"Las marcadas"_s, u"Sin dirección"_s, u"Comparten domicilio"_s, u"C.P. dudoso"_s,
                      u"En el extranjero"_s, u"Las que se quedan fuera"_s});
  layout->addWidget(m_filter);
  connect(m_search, &QLineEdit::textChanged, this, [this](const QString& typed) {
    m_table->People().SetSearch(typed);
    m_table->SetEmptyText(u"Nadie de la lista contiene «%1»."_s.arg(typed.trimmed()));
  });
  connect(m_filter, &QComboBox::currentIndexChanged, this, [this](int filter) {
    m_table->People().SetFilter(PeopleFilter(filter));
    m_table->SetEmptyText(u"Aquí no hay nadie."_s);
  });
  return row;
}

QWidget* PeoplePanel::MakeTickRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins({});
  layout->addWidget(m_count, 1);
  const auto add = [&](const QString& text, const char* name, const QString& tip, bool taken) {
    auto* button = new QPushButton(text, row);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, taken] { TickShown(taken); });
    layout->addWidget(button);
  };
  add(u"&Marcar todas"_s, "cmdTodas", u"Marcar a todas las que se ven en la lista"_s, true);
  add(u"Mar&car ninguna"_s, "cmdNinguna", u"Quitar la marca a todas las que se ven, para elegir a mano"_s, false);
  return row;
}

void PeoplePanel::SetChoices(const Choices& choices) {
  const QSignalBlocker quiet(m_saved);
  m_saved->clear();
  for (const StoredSelection& selection : choices.selections) {
    m_saved->addItem(selection.isShared ? u"%1 (compartida)"_s.arg(selection.name) : selection.name, selection.id);
  }
  ShowSaved(m_stored.id);
  m_conditions->SetChoices(choices);
}

void PeoplePanel::ShowSaved(int id) {
  const QSignalBlocker quiet(m_saved);
  m_saved->setCurrentIndex(m_saved->findData(id));
}

void PeoplePanel::Take(const SavedSelection& selection) {
  m_selection = m_stored = selection;
  ShowSaved(selection.id);
  m_conditions->Show(selection.conditions);
}

void PeoplePanel::TakeNobody() {
  m_selection = {};
  m_selection.onlyTaken = true;
  m_stored = m_selection;
  m_conditions->Show({});
}

void PeoplePanel::SetPeople(std::vector<ListedPerson> people) {
  const QModelIndex current = m_table->currentIndex();
  const int before = current.isValid() ? m_table->People().PersonAt(current.row()) : 0;
  m_table->People().SetPeople(std::move(people), m_selection);
  m_table->SetEmptyText(u"Nadie cumple las condiciones."_s);
  m_table->GoTo(before);
  ShowCount();
}

void PeoplePanel::SetNotes(const MailingNotes& notes) {
  QHash<int, QString> reasons;
  for (const PersonNote& note : notes.leftOut) {
    reasons.insert(note.person, note.reason);
  }
  m_table->People().SetReasons(std::move(reasons));
}

void PeoplePanel::SetPieces(const QString& text) {
  m_pieces = text;
  ShowCount();
}

void PeoplePanel::SetError(const QString& text) {
  m_table->People().SetPeople({}, m_selection);
  m_table->SetEmptyText(text);
  SetPieces({});
}

void PeoplePanel::ShowOnly(PeopleFilter filter) {
  m_search->clear();
  m_filter->setCurrentIndex(static_cast<int>(filter));
  m_table->setFocus();
}

void PeoplePanel::ShowCount() {
  const PeopleModel& people = m_table->People();
  const int ticked = people.TickedCount();
  QString text =
      ticked == people.Total() ? PeopleText(ticked) : u"%1 de %2"_s.arg(ticked).arg(PeopleText(people.Total()));
  if (!m_pieces.isEmpty()) {
    text += u" · "_s + m_pieces;
  }
  m_count->setText(text);
}

// A box that is as it would be without anybody's doing is not by hand.
void PeoplePanel::Tick(int person, bool taken) {
  m_selection.people.remove(person);
  if (m_selection.Takes(person) != taken || m_stored.people.contains(person)) {
    m_selection.people.insert(person, taken);
  }
  ShowTicks();
}

void PeoplePanel::TickShown(bool taken) {
  const PeopleModel& people = m_table->People();
  if (people.rowCount() == people.Total() && (taken || m_selection.conditions.AskNothing())) {
    m_selection.people.clear();
    m_selection.onlyTaken = !taken;
  } else {
    for (int row = 0; row < people.rowCount(); ++row) {
      m_selection.people.insert(people.PersonAt(row), taken);
    }
  }
  ShowTicks();
}

void PeoplePanel::ShowTicks() {
  m_table->People().SetSelection(m_selection);
  ShowCount();
  Q_EMIT TicksChanged();
}

// With a condition those who were taken by hand come besides.
void PeoplePanel::TakeConditions() {
  m_selection.conditions = m_conditions->Shown();
  m_selection.onlyTaken = m_selection.conditions.AskNothing() && m_selection.people.values().contains(true);
  Q_EMIT ConditionsChanged();
}

}  // namespace host
