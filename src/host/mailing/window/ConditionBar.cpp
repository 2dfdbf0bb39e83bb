#include "host/mailing/window/ConditionBar.h"

#include "documents/people/SpanishDates.h"
#include "host/mailing/window/ConditionDialogs.h"
#include "platform/text/AsItStands.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int chipsInRow = 2;
// In letters; the whole text is in the tool tip.
constexpr int widestChip = 30;

QString Capitalised(const QString& text) {
  return text.left(1).toUpper() + text.mid(1);
}

}  // namespace

ConditionBar::ConditionBar(QWidget* parent) : QWidget(parent), m_grid(new QGridLayout(this)) {
  m_grid->setContentsMargins({});
  Arrange();
}

void ConditionBar::SetChoices(const Choices& choices) {
  m_records = choices.records;
  Arrange();
}

void ConditionBar::Show(const Conditions& conditions) {
  m_conditions = conditions;
  Arrange();
}

void ConditionBar::ComeAfter(QWidget& field) {
  m_before = &field;
  Arrange();
}

void ConditionBar::Take(const Conditions& conditions) {
  if (conditions != m_conditions) {
    Show(conditions);
    Q_EMIT Changed();
  }
}

QString ConditionBar::TextOf(Condition condition) const {
  QStringList names;
  for (const Choice& record : m_records[static_cast<std::size_t>(condition)]) {
    if (m_conditions.Of(condition).contains(record.id)) {
      names.append(record.name);
    }
  }
  return u"%1: %2"_s.arg(Capitalised(RecordsOf(condition).title), names.join(u", "_s));
}

QString ConditionBar::DatesText() const {
  QStringList parts;
  if (m_conditions.donationsFrom.isValid()) {
    parts.append(u"desde "_s + documents::ShortDate(m_conditions.donationsFrom));
  }
  if (m_conditions.donationsUntil.isValid()) {
    parts.append(u"hasta "_s + documents::ShortDate(m_conditions.donationsUntil));
  }
  return u"Donativos: "_s + parts.join(u' ');
}

// What was there goes later: the button that was pressed may be part of it.
void ConditionBar::Arrange() {
  while (QLayoutItem* item = m_grid->takeAt(0)) {
    item->widget()->hide();
    item->widget()->setParent(nullptr);
    item->widget()->deleteLater();
    delete item;
  }
  for (std::size_t i = 0; i < conditionCount; ++i) {
    const auto condition = Condition(i);
    if (!m_conditions.Of(condition).isEmpty()) {
      AddChip(
          RecordsOf(condition).table, TextOf(condition), [this, condition] { Edit(condition); },
          [i](Conditions& conditions) { conditions.values[i].clear(); });
    }
  }
  if (m_conditions.donationsFrom.isValid() || m_conditions.donationsUntil.isValid()) {
    AddChip(
        u"Fechas"_s, DatesText(), [this] { EditDates(); },
        [](Conditions& conditions) { conditions.donationsFrom = conditions.donationsUntil = QDate(); });
  }
  auto* add = new QToolButton(this);
  add->setObjectName(u"cmdCondicion"_s);
  add->setText(u"+ Con&dición"_s);
  add->setToolTip(u"Elegir a las personas por otra condición"_s);
  add->setAutoRaise(true);
  add->setPopupMode(QToolButton::InstantPopup);
  auto* menu = new QMenu(add);
  FillMenu(*menu);
  add->setMenu(menu);
  const int chips = m_grid->count();
  m_grid->addWidget(add, chips / chipsInRow, chips % chipsInRow, Qt::AlignLeft);
  add->show();
  // What is made later would come last.
  QWidget* before = m_before;
  for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
    if (before != nullptr && !button->isHidden()) {
      setTabOrder(before, button);
      before = button;
    }
  }
}

void ConditionBar::AddChip(const QString& name, const QString& text, const std::function<void()>& edit,
                           const std::function<void(Conditions&)>& remove) {
  auto* chip = new QWidget(this);
  auto* open = new QPushButton(fontMetrics()
                                   .elidedText(text, Qt::ElideRight, widestChip * fontMetrics().averageCharWidth())
                                   .replace(u"&"_s, u"&&"_s),
                               chip);
  open->setObjectName(u"cmdCondicion"_s + name);
  open->setAccessibleName(text);
  open->setToolTip(texts::AsItStands(text));
  auto* away = new QToolButton(chip);
  away->setObjectName(u"cmdQuitar"_s + name);
  away->setText(u"✕"_s);
  away->setAutoRaise(true);
  away->setFocusPolicy(Qt::StrongFocus);
  away->setAccessibleName(u"Quitar la condición "_s + text);
  away->setToolTip(u"Quitar la condición"_s);
  auto* row = new QHBoxLayout(chip);
  row->setContentsMargins({});
  row->setSpacing(0);
  row->addWidget(open, 1);
  row->addWidget(away);
  connect(open, &QPushButton::clicked, this, edit);
  connect(away, &QToolButton::clicked, this, [this, remove] {
    Conditions conditions = m_conditions;
    remove(conditions);
    Take(conditions);
  });
  const int chips = m_grid->count();
  m_grid->addWidget(chip, chips / chipsInRow, chips % chipsInRow);
  chip->show();
}

void ConditionBar::FillMenu(QMenu& menu) {
  for (std::size_t i = 0; i < conditionCount; ++i) {
    const auto condition = Condition(i);
    QAction* action =
        menu.addAction(Capitalised(RecordsOf(condition).title) + u'…', this, [this, condition] { Edit(condition); });
    action->setObjectName(u"act"_s + RecordsOf(condition).table);
    action->setEnabled(!m_records[i].isEmpty());
  }
  menu.addAction(u"Fechas de los donativos…"_s, this, &ConditionBar::EditDates)->setObjectName(u"actFechas"_s);
}

void ConditionBar::Edit(Condition condition) {
  const auto at = static_cast<std::size_t>(condition);
  const auto chosen =
      AskForRecords(window(), Capitalised(RecordsOf(condition).title), m_records[at], m_conditions.values[at]);
  if (chosen) {
    Conditions conditions = m_conditions;
    conditions.values[at] = *chosen;
    Take(conditions);
  }
}

void ConditionBar::EditDates() {
  const auto dates = AskForDates(window(), {m_conditions.donationsFrom, m_conditions.donationsUntil});
  if (dates) {
    Conditions conditions = m_conditions;
    std::tie(conditions.donationsFrom, conditions.donationsUntil) = *dates;
    Take(conditions);
  }
}

}  // namespace host
