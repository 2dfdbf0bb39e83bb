#include "host/services/ComboFilling.h"

#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace host {

QComboBox& ComboFrom(QObject* object) {
  if (object == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  auto* combo = qobject_cast<QComboBox*>(object);
  if (combo == nullptr) {
    throw automation::Error(automation::TypeMismatch);
  }
  return *combo;
}

void FillCombo(QComboBox& combo, adodb::Connection& connection, const QString& statement, const QString& textColumn,
               const QString& idColumn, bool clear) {
  const auto rows = connection.Execute(statement);
  if (clear) {
    combo.clear();
  }
  // A combo selects its first item by itself; nobody chose that.
  const QSignalBlocker quiet(combo);
  const int selected = combo.currentIndex();
  for (; !rows->AtEnd(); rows->MoveNext()) {
    combo.addItem(automation::Text(rows->Field(textColumn)), rows->Field(idColumn));
  }
  combo.setCurrentIndex(selected);
}

bool SelectById(QComboBox& combo, const QVariant& id) {
  if (!id.isValid() || automation::IsNull(id) || !automation::IsNumeric(id)) {
    return false;
  }
  const double wanted = automation::CDbl(id);
  for (int index = 0; index < combo.count(); ++index) {
    const QVariant data = combo.itemData(index);
    if (data.isValid() && automation::IsNumeric(data) && automation::CDbl(data) == wanted) {
      combo.setCurrentIndex(index);
      return true;
    }
  }
  return false;
}

}  // namespace host
