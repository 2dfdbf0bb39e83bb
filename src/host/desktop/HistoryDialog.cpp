#include "host/desktop/HistoryDialog.h"

#include "host/records/MomentText.h"
#include "platform/text/AsItStands.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString Quoted(const QString& text) {
  return text.isEmpty() ? u"(vacío)"_s : u"«%1»"_s.arg(text);
}

void AddColumn(QTreeWidgetItem& item, const ColumnChange& column, ChangeKind kind) {
  const QString text = kind == ChangeKind::Added
                           ? u"%1: %2"_s.arg(column.column, Quoted(column.after))
                           : u"%1: de %2 a %3"_s.arg(column.column, Quoted(column.before), Quoted(column.after));
  auto* line = new QTreeWidgetItem(&item, {text});
  line->setFirstColumnSpanned(true);
  line->setToolTip(0, texts::AsItStands(text));
}

QTreeWidget* ListOf(const QList<Change>& changes, QWidget* parent) {
  auto* list = new QTreeWidget(parent);
  list->setObjectName(u"historyList"_s);
  list->setAccessibleName(u"Cambios"_s);
  list->setHeaderLabels({u"Cuándo"_s, u"Qué"_s, u"Quién"_s, u"Equipo"_s});
  for (const Change& change : changes) {
    auto* item =
        new QTreeWidgetItem(list, {DayAndTime(change.moment), KindText(change.kind),
                                   change.userName.isEmpty() ? u"(desconocido)"_s : change.userName, change.machine});
    for (const ColumnChange& column : change.columns) {
      AddColumn(*item, column, change.kind);
    }
  }
  list->expandAll();
  list->setCurrentItem(list->topLevelItem(0));
  for (int column = 0; column < list->columnCount(); ++column) {
    list->resizeColumnToContents(column);
  }
  return list;
}

}  // namespace

HistoryDialog::HistoryDialog(const QString& name, const QList<Change>& changes, QWidget* parent) : QDialog(parent) {
  setObjectName(u"historyDialog"_s);
  setWindowTitle(u"Historial de %1"_s.arg(name));
  auto* layout = new QVBoxLayout(this);
  if (changes.isEmpty()) {
    auto* none = new QLabel(
        u"De este registro no hay ningún cambio apuntado. Se apuntan desde que el programa lleva "
        u"cuenta de ellos, y durante dos años."_s,
        this);
    none->setObjectName(u"noHistory"_s);
    none->setWordWrap(true);
    layout->addWidget(none);
  } else {
    layout->addWidget(ListOf(changes, this));
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText(u"&Cerrar"_s);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  constexpr int characters = 90;
  constexpr int lines = 20;
  if (!changes.isEmpty()) {
    resize(fontMetrics().averageCharWidth() * characters, fontMetrics().lineSpacing() * lines);
  }
}

}  // namespace host
