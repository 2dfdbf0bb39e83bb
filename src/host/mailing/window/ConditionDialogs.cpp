#include "host/mailing/window/ConditionDialogs.h"

#include "host/records/RecordFilter.h"
#include "platform/text/FoldForSearch.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QDialogButtonBox* AddButtons(QDialog& dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  buttons->button(QDialogButtonBox::Ok)->setText(u"&Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return buttons;
}

void Fill(QListWidget& list, const QList<Choice>& records, const QList<int>& ticked) {
  for (const Choice& record : records) {
    auto* item = new QListWidgetItem(record.name, &list);
    item->setData(Qt::UserRole, record.id);
    item->setCheckState(ticked.contains(record.id) ? Qt::Checked : Qt::Unchecked);
  }
}

/// A day behind a box that says whether it counts.
struct OptionalDay {
  OptionalDay(QFormLayout& form, const QString& text, const QString& name, QDate day)
      : box(new QCheckBox(text)), edit(new QDateEdit(day.isValid() ? day : QDate::currentDate())) {
    box->setObjectName(u"chk"_s + name);
    box->setChecked(day.isValid());
    edit->setObjectName(u"dat"_s + name);
    edit->setAccessibleName(QString(text).remove(u'&') + u" el día"_s);
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(u"dd/MM/yyyy"_s);
    edit->setEnabled(day.isValid());
    QObject::connect(box, &QCheckBox::toggled, edit, &QWidget::setEnabled);
    form.addRow(box, edit);
  }
  QDate Day() const { return box->isChecked() ? edit->date() : QDate(); }

  QCheckBox* box;
  QDateEdit* edit;
};

}  // namespace

std::optional<QList<int>> AskForRecords(QWidget* parent, const QString& title, const QList<Choice>& records,
                                        const QList<int>& ticked) {
  QDialog dialog(parent);
  dialog.setObjectName(u"dlgCondicion"_s);
  dialog.setWindowTitle(title);
  auto* search = new QLineEdit(&dialog);
  search->setObjectName(u"txtBuscarValor"_s);
  search->setAccessibleName(u"Buscar"_s);
  search->setPlaceholderText(u"Buscar"_s);
  search->setClearButtonEnabled(true);
  auto* list = new QListWidget(&dialog);
  list->setObjectName(u"lstValores"_s);
  list->setAccessibleName(title);
  Fill(*list, records, ticked);
  QObject::connect(search, &QLineEdit::textChanged, list, [list](const QString& typed) {
    const RecordFilter filter(typed);
    for (int row = 0; row < list->count(); ++row) {
      list->item(row)->setHidden(!filter.Accepts(texts::FoldForSearch(list->item(row)->text())));
    }
  });
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(search);
  layout->addWidget(list);
  layout->addWidget(AddButtons(dialog));
  if (dialog.exec() != QDialog::Accepted) {
    return std::nullopt;
  }
  QList<int> chosen;
  for (int row = 0; row < list->count(); ++row) {
    if (list->item(row)->checkState() == Qt::Checked) {
      chosen.append(list->item(row)->data(Qt::UserRole).toInt());
    }
  }
  return chosen;
}

std::optional<std::pair<QDate, QDate>> AskForDates(QWidget* parent, const std::pair<QDate, QDate>& dates) {
  QDialog dialog(parent);
  dialog.setObjectName(u"dlgFechas"_s);
  dialog.setWindowTitle(u"Fechas de los donativos"_s);
  auto* form = new QFormLayout(&dialog);
  const OptionalDay from(*form, u"&Desde"_s, u"Desde"_s, dates.first);
  const OptionalDay until(*form, u"&Hasta"_s, u"Hasta"_s, dates.second);
  auto* reason = new QLabel(u"El último día es anterior al primero."_s, &dialog);
  form->addRow(reason);
  QDialogButtonBox* buttons = AddButtons(dialog);
  form->addRow(buttons);
  const auto check = [&, ok = buttons->button(QDialogButtonBox::Ok)] {
    const bool isBackward = from.Day().isValid() && until.Day().isValid() && until.Day() < from.Day();
    reason->setVisible(isBackward);
    ok->setEnabled(!isBackward);
  };
  for (const OptionalDay* day : {&from, &until}) {
    QObject::connect(day->box, &QCheckBox::toggled, &dialog, check);
    QObject::connect(day->edit, &QDateEdit::dateChanged, &dialog, check);
  }
  check();
  return dialog.exec() == QDialog::Accepted ? std::optional(std::pair(from.Day(), until.Day())) : std::nullopt;
}

}  // namespace host
