#include "host/services/ComboFilling.h"

#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include <memory>
#include <vector>

namespace host {
namespace {

using Items = std::vector<std::unique_ptr<QStandardItem>>;

// All at once where the combo has its own kind of model: item by item, thousands take more than twice as long.
void Append(QComboBox& combo, Items items) {
  auto* model = qobject_cast<QStandardItemModel*>(combo.model());
  QList<QStandardItem*> rows;
  for (std::unique_ptr<QStandardItem>& item : items) {
    if (model != nullptr) {
      rows.append(item.release());
    } else {
      combo.addItem(item->text(), item->data(Qt::UserRole));
    }
  }
  if (model != nullptr) {
    model->invisibleRootItem()->appendRows(rows);
  }
}

// What a list holds are keys as the database gives them; thousands of them need no conversions.
bool IsNumber(const QVariant& data, double wanted) {
  if (data.typeId() == QMetaType::Int) {
    return data.toInt() == wanted;
  }
  return data.isValid() && automation::IsNumeric(data) && automation::CDbl(data) == wanted;
}

}  // namespace

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
  Items items;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    items.push_back(std::make_unique<QStandardItem>(automation::Text(rows->Field(textColumn))));
    items.back()->setData(rows->Field(idColumn), Qt::UserRole);
  }
  Append(combo, std::move(items));
  combo.setCurrentIndex(selected);
}

bool SelectById(QComboBox& combo, const QVariant& id) {
  if (!id.isValid() || automation::IsNull(id) || !automation::IsNumeric(id)) {
    return false;
  }
  const double wanted = automation::CDbl(id);
  for (int index = 0; index < combo.count(); ++index) {
    if (IsNumber(combo.itemData(index), wanted)) {
      combo.setCurrentIndex(index);
      return true;
    }
  }
  return false;
}

}  // namespace host
