#include "host_paper/Lists.h"

#include <numeric>

using namespace Qt::StringLiterals;

host::ListTable MakeList(const QList<host::ListColumn>& columns, const QList<QList<QVariant>>& rows) {
  host::RecordData records(columns);
  int id = 0;
  for (const QList<QVariant>& row : rows) {
    records.Append(++id, row);
  }
  host::ListTable table{.title = u"Bancos"_s,
                        .search = {},
                        .origin = u"Fundación Puente"_s,
                        .user = u"marta"_s,
                        .rows = {records, std::vector<int>(static_cast<std::size_t>(id))},
                        .columns = QList<int>(columns.size())};
  std::iota(table.rows.rows.begin(), table.rows.rows.end(), 0);
  std::iota(table.columns.begin(), table.columns.end(), 0);
  return table;
}

host::ListTable Banks(int count) {
  QList<QList<QVariant>> rows;
  for (int i = 1; i <= count; ++i) {
    rows.append({u"%1"_s.arg(i, 4, 10, QChar(u'0')), u"Banco %1"_s.arg(i), i * -1.5});
  }
  return MakeList({{u"Número"_s}, {u"Nombre"_s}, {u"Saldo"_s, host::ColumnKind::Amount}}, rows);
}
