#include "framework/Database.h"

#include "framework/HostServices.h"
#include "framework/Values.h"

#include <QComboBox>
#include <QStandardItemModel>

#include <vector>

namespace framework {

adodb::Connection& Connection() {
  return objApi().congestion();
}

QVariant FirstField(QStringView field, const QString& statement) {
  const auto rs = Connection().Execute(statement);
  return rs->AtEnd() ? automation::Null() : rs->Field(field);
}

ItemText TextOf(QStringView field) {
  return [field](adodb::Recordset& row) { return Text(row.Field(field)); };
}

void FillComboFrom(QComboBox* combo, const ItemText& text, QStringView idField, qint32 id, const QString& statement) {
  const auto rs = Connection().Execute(statement);
  std::vector<std::unique_ptr<QStandardItem>> items;
  int selected = -1;
  for (; !rs->AtEnd(); rs->MoveNext()) {
    const qint32 itemId = automation::CLng(rs->Field(idField));
    if (itemId == id && selected < 0) {
      selected = static_cast<int>(items.size());
    }
    items.push_back(std::make_unique<QStandardItem>(text(*rs)));
    items.back()->setData(itemId, Qt::UserRole);
  }
  combo->clear();
  // All at once: item by item, thousands take more than twice as long.
  QList<QStandardItem*> rows;
  for (std::unique_ptr<QStandardItem>& item : items) {
    rows.append(item.release());
  }
  static_cast<QStandardItemModel*>(combo->model())->invisibleRootItem()->appendRows(rows);
  combo->setCurrentIndex(selected);
}

}  // namespace framework
