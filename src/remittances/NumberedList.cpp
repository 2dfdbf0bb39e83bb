#include "remittances/NumberedList.h"

#include "framework/ControlSetup.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

using namespace framework;

namespace remittances {

NumberedList::NumberedList(const ListHelper& lists, QComboBox* list, QLineEdit* box, const QString& keyColumn)
    : m_lists(lists), m_list(list), m_box(box), m_keyColumn(keyColumn), m_shown(box->text()) {}

void NumberedList::ShowNumber() {
  ShowNumberOf(ItemData(m_list));
}

void NumberedList::ShowNumberOf(qint32 id) {
  m_shown = id != 0 ? m_lists.CargarBancoSucursalCaja(m_keyColumn, id) : QString();
  m_box->setText(m_shown);
}

bool NumberedList::SelectTyped() {
  if (m_box->text() == m_shown) {
    return false;
  }
  const qint32 before = ItemData(m_list);
  const QSignalBlocker quiet(m_list);
  m_lists.CargarBancoSucursalLista(m_list, m_keyColumn, m_box->text());
  m_shown = m_box->text();
  const qint32 selected = ItemData(m_list);
  if (selected != 0) {
    ShowNumberOf(selected);
  }
  return selected != before;
}

}  // namespace remittances
