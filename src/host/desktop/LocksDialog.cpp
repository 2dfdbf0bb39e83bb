#include "host/desktop/LocksDialog.h"

#include "host/services/ErrorBox.h"
#include "host/services/PlainBox.h"
#include "platform/automation/Error.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

LocksDialog::LocksDialog(Session& session, QWidget* parent)
    : QDialog(parent),
      m_session(session),
      m_none(new QLabel(u"Ningún registro está en uso."_s, this)),
      m_list(new QTreeWidget(this)) {
  setObjectName(u"locksDialog"_s);
  setWindowTitle(u"Registros en uso"_s);
  m_list->setObjectName(u"lockList"_s);
  m_list->setAccessibleName(u"Registros en uso"_s);
  m_list->setHeaderLabels(HeldRecord::Titles());
  m_list->setRootIsDecorated(false);
  m_list->setUniformRowHeights(true);
  m_list->setAlternatingRowColors(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText(u"&Cerrar"_s);
  m_release = buttons->addButton(u"&Soltar"_s, QDialogButtonBox::ActionRole);
  m_release->setObjectName(u"releaseLock"_s);
  m_release->setAutoDefault(false);
  auto* again = buttons->addButton(u"&Actualizar"_s, QDialogButtonBox::ActionRole);
  again->setAutoDefault(false);
  m_none->setObjectName(u"noLocks"_s);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_none);
  layout->addWidget(m_list);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(again, &QPushButton::clicked, this, &LocksDialog::Read);
  connect(m_release, &QPushButton::clicked, this, &LocksDialog::Release);
  connect(m_list, &QTreeWidget::itemSelectionChanged, this,
          [this] { m_release->setEnabled(!m_list->selectedItems().isEmpty()); });
  Read();
  const QMargins margins = layout->contentsMargins();
  constexpr int rows = 12;
  resize(
      m_list->header()->length() + m_list->verticalScrollBar()->sizeHint().width() + margins.left() + margins.right(),
      fontMetrics().height() * 2 * rows);
}

void LocksDialog::Read() {
  try {
    m_records = HeldRecords(m_session);
  } catch (const automation::Error& error) {
    ShowError(this, m_session.title, u"No se ha podido leer qué registros están en uso."_s, error);
    return;
  }
  m_list->clear();
  for (const HeldRecord& record : m_records) {
    new QTreeWidgetItem(m_list, record.Columns());
  }
  for (int column = 0; column < m_list->columnCount(); ++column) {
    m_list->resizeColumnToContents(column);
    m_list->setColumnWidth(column, m_list->columnWidth(column) + fontMetrics().averageCharWidth() * 2);
  }
  m_none->setVisible(m_records.isEmpty());
  m_list->setCurrentItem(m_list->topLevelItem(0));
  m_release->setEnabled(!m_list->selectedItems().isEmpty());
}

void LocksDialog::Release() {
  const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
  if (row < 0) {
    return;
  }
  const HeldRecord& record = m_records[row];
  PlainBox box(QMessageBox::Question, m_session.title, u"¿Desea soltar «%1» de «%2»?"_s.arg(record.name, record.kind),
               QMessageBox::Yes | QMessageBox::No, this);
  box.setDefaultButton(QMessageBox::No);
  if (!record.hasEnded) {
    box.SetFurtherText(
        u"%1. Si sigue con el cuadro abierto podrá guardar, y sus cambios y los de otra persona se pisarán."_s.arg(
            record.holder.Description()));
  }
  if (box.exec() != QMessageBox::Yes) {
    return;
  }
  try {
    TakeLockFrom(m_session, record);
  } catch (const automation::Error& error) {
    ShowError(this, m_session.title, u"No se ha podido soltar el registro."_s, error);
  }
  Read();
}

}  // namespace host
