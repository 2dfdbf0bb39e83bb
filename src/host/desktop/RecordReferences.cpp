#include "host/desktop/RecordReferences.h"

#include "host/desktop/NodeCatalog.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <QStringList>

#include <vector>

namespace host {

using namespace Qt::StringLiterals;

namespace {

constexpr cConstNodo numbers;

// Rows of another table that belong to, or refer to, a record of a node. `from` is what follows FROM, the record's
// identifier at its end.
struct Relation {
  int nodeId;
  QString one;
  QString many;
  QString from;
};

const std::vector<Relation>& Dependents() {
  static const std::vector<Relation> relations = {
      {numbers.Bancos(), u"sucursal"_s, u"sucursales"_s, u"Sucursales WHERE Eliminado=0 AND CodBanco="_s},
      {numbers.Emisores(), u"enlace con cuentas"_s, u"enlaces con cuentas"_s,
       u"Emisores_Cuentas WHERE Eliminado=0 AND CodEmisor="_s},
      {numbers.Etiquetas(), u"campo"_s, u"campos"_s, u"EtiquetasCampos WHERE Eliminado=0 AND CodEtiqueta="_s},
  };
  return relations;
}

QString ByAccount(const QString& table) {
  return u"Emisores_Cuentas,%1 WHERE Emisores_Cuentas.IDEmisor_Cuenta=%1.CodEmisor_Cuenta AND %1.Eliminado=0 AND "
         "Emisores_Cuentas.Eliminado=0 AND Emisores_Cuentas.CodEmisor="_s.arg(table);
}

QString ByColumn(const QString& table, const QString& column) {
  return table + u" WHERE Eliminado=0 AND "_s + column + u'=';
}

std::vector<Relation> BuildUses() {
  const QString donor = u"colaborador"_s, donors = u"colaboradores"_s, people = u"Colaboradores"_s;
  const QString gift = u"donativo"_s, gifts = u"donativos"_s, donations = u"Donativos"_s;
  const QString subscription = u"suscripción"_s, subscriptions = u"suscripciones"_s;
  return {
      {numbers.Bancos(), u"cuenta"_s, u"cuentas"_s,
       u"Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND Cuentas.Eliminado=0 AND "
       "Sucursales.Eliminado=0 AND Sucursales.CodBanco="_s},
      {numbers.Bancos(), u"presentador"_s, u"presentadores"_s, ByColumn(u"Presentadores"_s, u"CodBanco"_s)},
      {numbers.Diocesis(), donor, donors, ByColumn(people, u"CodDiocesis"_s)},
      {numbers.Publicaciones(), subscription, subscriptions, ByColumn(u"Suscripciones"_s, u"CodTipoPublicacion"_s)},
      {numbers.Provincias(), donor, donors, ByColumn(people, u"CodProvincia"_s)},
      {numbers.Provincias(), u"emisor"_s, u"emisores"_s, ByColumn(u"Emisores"_s, u"CodProvincia"_s)},
      {numbers.Provincias(), u"sucursal"_s, u"sucursales"_s, ByColumn(u"Sucursales"_s, u"CodProvincia"_s)},
      {numbers.Provincias(), u"diócesis"_s, u"diócesis"_s, ByColumn(u"Diocesis"_s, u"CodProvincia"_s)},
      {numbers.Paises(), u"provincia"_s, u"provincias"_s, ByColumn(u"Provincias"_s, u"CodPais"_s)},
      {numbers.Paises(), donor, donors, ByColumn(people, u"codpais"_s)},
      {numbers.TipoDeduccion(), u"tipo de donativo (deducción física)"_s, u"tipos de donativo (deducción física)"_s,
       ByColumn(u"TipoDonativos"_s, u"CodTipoDeduccionFisica"_s)},
      {numbers.TipoDeduccion(), u"tipo de donativo (deducción jurídica)"_s, u"tipos de donativo (deducción jurídica)"_s,
       ByColumn(u"TipoDonativos"_s, u"CodTipoDeduccionJuridica"_s)},
      {numbers.TipoDonativos(), gift, gifts, ByColumn(donations, u"CodTipoDonativo"_s)},
      {numbers.Emisores(), u"recibo"_s, u"recibos"_s, ByAccount(u"Recibos"_s)},
      {numbers.Emisores(), u"recibo pendiente"_s, u"recibos pendientes"_s, ByAccount(u"RecibosPendientes"_s)},
      {numbers.Emisores(), gift, gifts, ByAccount(donations)},
      {numbers.Emisores(), subscription, subscriptions, ByAccount(u"Suscripciones"_s)},
      {numbers.Presentadores(), u"emisor"_s, u"emisores"_s, ByColumn(u"Emisores"_s, u"CodPresentador"_s)},
      {numbers.Presentadores(), u"disco"_s, u"discos"_s, ByColumn(u"Discos"_s, u"CodPresentador"_s)},
      {numbers.Presentadores(), u"remesa"_s, u"remesas"_s,
       ByColumn(u"Remesas_Presentadores_Discos"_s, u"CodPresentador"_s)},
      {numbers.Cobradores(), donor, donors, ByColumn(people, u"CodCobrador"_s)},
      {numbers.DeduccionesComunidad(), gift, gifts, ByColumn(donations, u"CodDeduccion_Comunidad"_s)},
      {numbers.ComunidadAutonoma(), u"deducción"_s, u"deducciones"_s,
       ByColumn(u"Deduccion_Comunidad"_s, u"CodComunidad"_s)},
  };
}

const std::vector<Relation>& Uses() {
  static const std::vector<Relation> relations = BuildUses();
  return relations;
}

int Count(adodb::Connection& connection, const Relation& relation, int id) {
  const auto rows =
      adodb::Execute(connection, u"SELECT COUNT(*) AS Total FROM {}{}", adodb::Verbatim{relation.from}, id);
  return automation::CLng(rows->Field(0));
}

QList<RowCount> CountAll(adodb::Connection& connection, const std::vector<Relation>& relations, int nodeId,
                         const QList<int>& ids) {
  QList<RowCount> counts;
  for (const Relation& relation : relations) {
    if (relation.nodeId != nodeId) {
      continue;
    }
    RowCount rows{relation.one, relation.many, 0};
    for (const int id : ids) {
      rows.count += Count(connection, relation, id);
    }
    if (rows.count > 0) {
      counts.append(rows);
    }
  }
  return counts;
}

}  // namespace

QString RowCount::Text() const {
  return u"%1 %2"_s.arg(count).arg(count == 1 ? one : many);
}

QList<RowCount> CountDependents(adodb::Connection& connection, int nodeId, const QList<int>& ids) {
  return CountAll(connection, Dependents(), nodeId, ids);
}

QList<RowCount> CountUses(adodb::Connection& connection, int nodeId, int id) {
  return CountAll(connection, Uses(), nodeId, {id});
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
