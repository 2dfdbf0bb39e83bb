#include "host/records/RecordReferences.h"

#include "host/records/RecordReader.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"
#include "platform/text/Counted.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace host {

using namespace Qt::StringLiterals;

namespace {

constexpr cConstNodo numbers;
const QString dioceses = u"Diocesis"_s;
const QString conjunction = u" AND "_s;

// Rows of another table that belong to a record of a node.
struct Dependents {
  int nodeId;
  QString one;
  QString many;
  QString table;
  QString key;
  QString column;  // that holds the record's identifier
};

const std::vector<Dependents>& AllDependents() {
  static const std::vector<Dependents> all = {
      {numbers.Bancos(), u"sucursal"_s, u"sucursales"_s, u"Sucursales"_s, u"IDSucursal"_s, u"CodBanco"_s},
      {numbers.Emisores(), u"enlace con cuentas"_s, u"enlaces con cuentas"_s, u"Emisores_Cuentas"_s,
       u"IDEmisor_Cuenta"_s, u"CodEmisor"_s},
      {numbers.Etiquetas(), u"campo"_s, u"campos"_s, u"EtiquetasCampos"_s, u"IDEtiquetaCampo"_s, u"CodEtiqueta"_s},
  };
  return all;
}

// Rows that refer to a record of a node: those of `table` whose `column` holds the record's identifier, or where
// `from` is given what it says behind FROM, the identifier at its end.
struct Use {
  int nodeId;
  QString one;
  QString many;
  QString table;
  QString column;
  QString from = {};
};

Use ByAccount(const QString& one, const QString& many, const QString& table) {
  return {numbers.Emisores(),
          one,
          many,
          table,
          {},
          u"Emisores_Cuentas,%1 WHERE Emisores_Cuentas.IDEmisor_Cuenta=%1.CodEmisor_Cuenta AND %1.Eliminado=0 AND "
          "Emisores_Cuentas.Eliminado=0 AND Emisores_Cuentas.CodEmisor="_s.arg(table)};
}

std::vector<Use> BuildUses() {
  const QString donor = u"colaborador"_s, donors = u"colaboradores"_s, people = u"Colaboradores"_s;
  const QString gift = u"donativo"_s, gifts = u"donativos"_s, donations = u"Donativos"_s;
  const QString subscription = u"suscripción"_s, subscriptions = u"suscripciones"_s;
  return {
      {numbers.Bancos(),
       u"cuenta"_s,
       u"cuentas"_s,
       u"Cuentas"_s,
       {},
       u"Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND Cuentas.Eliminado=0 AND "
       "Sucursales.Eliminado=0 AND Sucursales.CodBanco="_s},
      {numbers.Bancos(), u"presentador"_s, u"presentadores"_s, u"Presentadores"_s, u"CodBanco"_s},
      {numbers.Diocesis(), donor, donors, people, u"CodDiocesis"_s},
      {numbers.Publicaciones(), subscription, subscriptions, u"Suscripciones"_s, u"CodTipoPublicacion"_s},
      {numbers.Provincias(), donor, donors, people, u"CodProvincia"_s},
      {numbers.Provincias(), u"emisor"_s, u"emisores"_s, u"Emisores"_s, u"CodProvincia"_s},
      {numbers.Provincias(), u"sucursal"_s, u"sucursales"_s, u"Sucursales"_s, u"CodProvincia"_s},
      {numbers.Provincias(), u"diócesis"_s, u"diócesis"_s, dioceses, u"CodProvincia"_s},
      {numbers.Paises(), u"provincia"_s, u"provincias"_s, u"Provincias"_s, u"CodPais"_s},
      {numbers.Paises(), donor, donors, people, u"codpais"_s},
      {numbers.TipoDeduccion(), u"tipo de donativo (deducción física)"_s, u"tipos de donativo (deducción física)"_s,
       u"TipoDonativos"_s, u"CodTipoDeduccionFisica"_s},
      {numbers.TipoDeduccion(), u"tipo de donativo (deducción jurídica)"_s, u"tipos de donativo (deducción jurídica)"_s,
       u"TipoDonativos"_s, u"CodTipoDeduccionJuridica"_s},
      {numbers.TipoDonativos(), gift, gifts, donations, u"CodTipoDonativo"_s},
      ByAccount(u"recibo"_s, u"recibos"_s, u"Recibos"_s),
      ByAccount(u"recibo pendiente"_s, u"recibos pendientes"_s, u"RecibosPendientes"_s),
      ByAccount(gift, gifts, donations),
      ByAccount(subscription, subscriptions, u"Suscripciones"_s),
      {numbers.Presentadores(), u"emisor"_s, u"emisores"_s, u"Emisores"_s, u"CodPresentador"_s},
      {numbers.Presentadores(), u"disco"_s, u"discos"_s, u"Discos"_s, u"CodPresentador"_s},
      {numbers.Presentadores(), u"remesa"_s, u"remesas"_s, u"Remesas_Presentadores_Discos"_s, u"CodPresentador"_s},
      {numbers.Cobradores(), donor, donors, people, u"CodCobrador"_s},
      {numbers.DeduccionesComunidad(), gift, gifts, donations, u"CodDeduccion_Comunidad"_s},
      {numbers.ComunidadAutonoma(), u"deducción"_s, u"deducciones"_s, u"Deduccion_Comunidad"_s, u"CodComunidad"_s},
  };
}

const std::vector<Use>& AllUses() {
  static const std::vector<Use> all = BuildUses();
  return all;
}

// A column that holds the key of a node's record.
struct Link {
  QString table;
  QString column;
  int nodeId;
};

std::vector<Link> BuildLinks() {
  // These don't keep what they refer to from being deleted.
  std::vector<Link> links = {{u"Deduccion_Comunidad"_s, u"CodDeduccion"_s, numbers.TipoDeduccion()},
                             {u"Sucursales"_s, u"codPais"_s, numbers.Paises()}};
  for (const Dependents& dependents : AllDependents()) {
    links.push_back({dependents.table, dependents.column, dependents.nodeId});
  }
  for (const Use& use : AllUses()) {
    if (!use.column.isEmpty()) {
      links.push_back({use.table, use.column, use.nodeId});
    }
  }
  return links;
}

const std::vector<Link>& AllLinks() {
  static const std::vector<Link> all = BuildLinks();
  return all;
}

bool IsTable(const QString& name, const QString& table) {
  return name.compare(table, Qt::CaseInsensitive) == 0;
}

bool Joins(const Link& link, const Node& node, const QString& table) {
  return IsTable(link.table, node.table) && IsTable(FindNode(link.nodeId)->table, table);
}

QString LiveRows(const QString& table, const QString& column) {
  return table + u" WHERE Eliminado=0 AND "_s + column + u'=';
}

// Behind FROM, the identifier at its end.
QString RowsOf(const Use& use) {
  return use.from.isEmpty() ? LiveRows(use.table, use.column) : use.from;
}

int Count(adodb::Connection& connection, const QString& from, int id) {
  const auto rows = adodb::Execute(connection, u"SELECT COUNT(*) AS Total FROM {}{}", adodb::Verbatim{from}, id);
  return automation::CLng(rows->Field(0));
}

void AppendIfAny(QList<RowCount>& counts, const RowCount& rows) {
  if (rows.count > 0) {
    counts.append(rows);
  }
}

}  // namespace

QString RowCount::Text() const {
  return texts::Counted(count, one, many);
}

QList<RowCount> CountDependents(adodb::Connection& connection, int nodeId, const QList<int>& ids) {
  QList<RowCount> counts;
  for (const Dependents& dependents : AllDependents()) {
    if (dependents.nodeId != nodeId) {
      continue;
    }
    RowCount rows{dependents.one, dependents.many, 0};
    for (const int id : ids) {
      rows.count += Count(connection, LiveRows(dependents.table, dependents.column), id);
    }
    AppendIfAny(counts, rows);
  }
  return counts;
}

QList<RowKey> DependentRows(adodb::Connection& connection, int nodeId, int id) {
  QList<RowKey> keys;
  for (const Dependents& dependents : AllDependents()) {
    if (dependents.nodeId != nodeId) {
      continue;
    }
    const auto rows = adodb::Execute(connection, u"SELECT {} FROM {}{}", adodb::Verbatim{dependents.key},
                                     adodb::Verbatim{LiveRows(dependents.table, dependents.column)}, id);
    for (; !rows->AtEnd(); rows->MoveNext()) {
      keys.append({dependents.table, dependents.key, automation::CLng(rows->Field(0))});
    }
  }
  return keys;
}

QList<RowKey> DependentTables(int nodeId) {
  QList<RowKey> tables;
  for (const Dependents& dependents : AllDependents()) {
    if (dependents.nodeId == nodeId) {
      tables.append({dependents.table, dependents.key});
    }
  }
  return tables;
}

QList<RowCount> CountUses(adodb::Connection& connection, int nodeId, int id, bool velumar) {
  QList<RowCount> counts;
  for (const Use& use : AllUses()) {
    if (use.nodeId == nodeId && !(velumar && use.table == dioceses)) {
      const Node* node = FindNodeByTable(use.table);
      AppendIfAny(counts, {use.one, use.many, Count(connection, RowsOf(use), id), node == nullptr ? 0 : node->id});
    }
  }
  return counts;
}

bool HasUses(int nodeId) {
  return std::ranges::any_of(AllUses(), [nodeId](const Use& use) { return use.nodeId == nodeId; });
}

QHash<int, int> UsesOf(adodb::Connection& connection, int nodeId, const QString& condition, bool velumar) {
  QHash<int, int> uses;
  for (const Use& use : AllUses()) {
    if (use.nodeId != nodeId || (velumar && use.table == dioceses)) {
      continue;
    }
    // The last condition is the column and "=".
    const QString from = RowsOf(use);
    const qsizetype last = from.lastIndexOf(conjunction);
    const QString column = from.mid(last + conjunction.size()).chopped(1);
    const QString wanted = condition.isEmpty() ? QString() : conjunction + column + condition;
    const auto rows = connection.Execute(
        u"SELECT %1 AS Usado, COUNT(*) AS Total FROM %2%3 GROUP BY %1"_s.arg(column, from.left(last), wanted));
    for (; !rows->AtEnd(); rows->MoveNext()) {
      if (!automation::IsNull(rows->Field(0))) {
        uses[automation::CLng(rows->Field(0))] += automation::CLng(rows->Field(1));
      }
    }
  }
  return uses;
}

bool UsesDependOn(int nodeId, const QString& table) {
  return std::ranges::any_of(AllUses(), [&](const Use& use) {
    const QStringList tables = RowsOf(use).section(u" WHERE "_s, 0, 0).split(u',');
    return use.nodeId == nodeId && tables.contains(table, Qt::CaseInsensitive);
  });
}

QStringList TablesAround(const Node& node) {
  QStringList tables{node.table};
  for (const Dependents& dependents : AllDependents()) {
    if (dependents.nodeId == node.id) {
      tables.append(dependents.table);
    }
  }
  for (const Use& use : AllUses()) {
    if (use.nodeId == node.id) {
      tables.append(use.table);
    }
  }
  tables.removeDuplicates();
  return tables;
}

std::optional<ParentRecord> DeletedParent(adodb::Connection& connection, const RowKey& row) {
  for (const Link& link : AllLinks()) {
    if (!IsTable(link.table, row.table)) {
      continue;
    }
    const auto values = adodb::Execute(connection, u"SELECT {} FROM {} WHERE {}={}", adodb::Verbatim{link.column},
                                       adodb::Verbatim{row.table}, adodb::Verbatim{row.key}, row.id);
    const int parentId = values->AtEnd() ? 0 : automation::CLng(values->Field(0));
    const Node* parent = FindNode(link.nodeId);
    if (parentId != 0 && IsDeleted(connection, *parent, parentId)) {
      return ParentRecord{parent, parentId};
    }
  }
  return std::nullopt;
}

QString NamesADeleted(const Node& node) {
  QStringList conditions;
  for (const Link& link : AllLinks()) {
    if (IsTable(link.table, node.table)) {
      const Node& parent = *FindNode(link.nodeId);
      const QString column = node.table + u'.' + link.column;
      conditions.append(u"(%1<>0 AND NOT EXISTS (SELECT P.%2 FROM %3 AS P WHERE P.%2=%1 AND P.Eliminado=0))"_s.arg(
          column, parent.key, parent.table));
    }
  }
  return conditions.join(u" OR "_s);
}

bool RefersTo(const Node& node, const QString& table) {
  return std::ranges::any_of(AllLinks(), [&](const Link& link) { return Joins(link, node, table); });
}

QList<int> ReferringIds(adodb::Connection& connection, const Node& node, const QString& table, qint64 key) {
  QList<int> ids;
  for (const Link& link : AllLinks()) {
    if (!Joins(link, node, table)) {
      continue;
    }
    const auto rows = adodb::Execute(connection, u"SELECT {} FROM {} WHERE {}={}", adodb::Verbatim{node.key},
                                     adodb::Verbatim{node.table}, adodb::Verbatim{link.column}, key);
    for (; !rows->AtEnd(); rows->MoveNext()) {
      ids.append(automation::CLng(rows->Field(0)));
    }
  }
  return ids;
}

QString JoinCounts(const QList<RowCount>& counts) {
  QStringList texts;
  for (const RowCount& count : counts) {
    texts.append(count.Text());
  }
  if (texts.size() < 2) {
    return texts.join(QString());
  }
  const QString last = texts.takeLast();
  return texts.join(u", "_s) + u" y "_s + last;
}

}  // namespace host
