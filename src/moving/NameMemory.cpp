#include "moving/NameMemory.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

QString PlaceOf(const SourceTable& table) {
  QStringList names;
  for (const SourceColumn& column : table.columns) {
    names.append(FoldedName(column.name));
  }
  const QByteArray digest = QCryptographicHash::hash(names.join(u'\n').toUtf8(), QCryptographicHash::Sha256);
  return u"Correspondencias/"_s + QString::fromLatin1(digest.toHex());
}

}  // namespace

bool NameMemory::Recall(const SourceTable& table, NameWishes& wishes) const {
  const QString place = PlaceOf(table);
  NameWishes said;
  said.tables.insert(table.name, m_settings->value(place + u"/Tabla"_s).toString());
  const TableRule* rule = MeantTable(table, said);
  if (rule == nullptr && said.tables.first() != nothingHere) {
    return false;
  }
  wishes.tables.insert(said.tables);
  const QStringList columns = m_settings->value(place + u"/Columnas"_s).toStringList();
  for (qsizetype i = 0; rule != nullptr && i < qMin(columns.size(), table.columns.size()); ++i) {
    const bool isKnown = columns[i] == nothingHere || rule->table->FindColumn(columns[i]) != nullptr;
    if (isKnown) {
      wishes.columns.insert(table.name + u'.' + table.columns[i].name, columns[i]);
    }
  }
  return true;
}

void NameMemory::Keep(const SourceTable& table, const NameWishes& wishes) {
  if (!wishes.tables.contains(table.name)) {
    return;
  }
  QStringList columns;
  for (const SourceColumn& column : table.columns) {
    columns.append(wishes.columns.value(table.name + u'.' + column.name));
  }
  const QString place = PlaceOf(table);
  m_settings->setValue(place + u"/Tabla"_s, wishes.tables.value(table.name));
  m_settings->setValue(place + u"/Columnas"_s, columns);
}

}  // namespace moving
