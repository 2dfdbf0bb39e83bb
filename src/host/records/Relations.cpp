#include "host/records/Relations.h"

#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr cConstNodo numbers;

// What belongs to the records of a node.
struct Relation {
  int nodeId;
  QString title;
  int opensIn;  // the node of what belongs, 0 for none
  QList<ListColumn> columns;
  QString select;  // the key, then a value for each column
  QString from;    // the record's key in the place of %1
  QString order;
  bool isOneRow = false;  // its values are shown below each other
};

std::vector<Relation> BankingRelations() {
  return {
      {numbers.Bancos(),
       u"Sucursales"_s,
       0,
       {{u"Código"_s}, {u"Sucursal"_s}, {u"Dirección"_s}, {u"Población"_s}, {u"Provincia"_s}},
       u"Sucursales.IDSucursal, Sucursales.Codigo, Sucursales.Nombre, Sucursales.Direccion, Sucursales.Poblacion, "
       "Provincias.Nombre AS Provincia"_s,
       u"Sucursales LEFT JOIN Provincias ON Sucursales.codProvincia=Provincias.IDProvincia WHERE "
       "Sucursales.Eliminado=0 AND Sucursales.codBanco=%1"_s,
       u"Sucursales.Codigo, Sucursales.IDSucursal"_s},
      {numbers.Presentadores(),
       u"Emisores"_s,
       numbers.Emisores(),
       {{u"Nombre"_s}, {u"CIF"_s}, {u"Sufijo"_s}, {u"Población"_s}},
       u"IDEmisor, Nombre, Cif, Sufijo, Poblacion"_s,
       u"Emisores WHERE Eliminado=0 AND CodPresentador=%1"_s,
       u"Nombre, IDEmisor"_s},
      {numbers.Presentadores(),
       u"Discos"_s,
       0,
       {{u"Creado el"_s}, {u"Cargo"_s}, {u"Recibos"_s, ColumnKind::Number}, {u"Importe"_s, ColumnKind::Amount}},
       u"IDDisco, FechaCreacion, FechaCargo, Recibos, Importe"_s,
       u"Discos WHERE Eliminado=0 AND CodPresentador=%1"_s,
       u"IDDisco"_s},
      {numbers.Emisores(),
       u"Cuentas"_s,
       0,
       {{u"Cuenta"_s}, {u"Titular"_s}, {u"Sucursal"_s}},
       u"Cuentas.IDCuenta, Cuentas.NumeroCuenta, Cuentas.Titular, Sucursales.Nombre AS Sucursal"_s,
       u"(Emisores_Cuentas INNER JOIN Cuentas ON Emisores_Cuentas.CodCuenta=Cuentas.IDCuenta) LEFT JOIN Sucursales ON "
       "Cuentas.CodSucursal=Sucursales.IDSucursal WHERE Emisores_Cuentas.Eliminado=0 AND Cuentas.Eliminado=0 AND "
       "Emisores_Cuentas.CodEmisor=%1"_s,
       u"Cuentas.NumeroCuenta, Cuentas.IDCuenta"_s},
  };
}

std::vector<Relation> PlaceRelations() {
  return {
      {numbers.Paises(),
       u"Provincias"_s,
       numbers.Provincias(),
       {{u"Nombre"_s}, {u"Prefijo postal"_s}},
       u"IDProvincia, Nombre, Prefijo"_s,
       u"Provincias WHERE Eliminado=0 AND CodPais=%1"_s,
       u"Nombre, IDProvincia"_s},
      {numbers.Provincias(),
       u"Diócesis"_s,
       numbers.Diocesis(),
       {{u"Nombre"_s}},
       u"IDDiocesis, Nombre"_s,
       u"Diocesis WHERE Eliminado=0 AND CodProvincia=%1"_s,
       u"Nombre, IDDiocesis"_s},
      {numbers.Provincias(),
       u"Sucursales"_s,
       0,
       {{u"Banco"_s}, {u"Código"_s}, {u"Sucursal"_s}, {u"Población"_s}},
       u"Sucursales.IDSucursal, Bancos.Nombre AS Banco, Sucursales.Codigo, Sucursales.Nombre, Sucursales.Poblacion"_s,
       u"Sucursales LEFT JOIN Bancos ON Sucursales.codBanco=Bancos.IDBanco WHERE Sucursales.Eliminado=0 AND "
       "Sucursales.codProvincia=%1"_s,
       u"Bancos.Nombre, Sucursales.Codigo, Sucursales.IDSucursal"_s},
      {numbers.Provincias(),
       u"Emisores"_s,
       numbers.Emisores(),
       {{u"Nombre"_s}, {u"CIF"_s}, {u"Población"_s}},
       u"IDEmisor, Nombre, Cif, Poblacion"_s,
       u"Emisores WHERE Eliminado=0 AND CodProvincia=%1"_s,
       u"Nombre, IDEmisor"_s},
      {numbers.ComunidadAutonoma(),
       u"Deducciones"_s,
       numbers.DeduccionesComunidad(),
       {{u"Deducción"_s, ColumnKind::Percentage}},
       u"Deduccion_Comunidad.IDDeduccion_Comunidad, TipoDeducciones.Porcentaje"_s,
       u"Deduccion_Comunidad LEFT JOIN TipoDeducciones ON Deduccion_Comunidad.CodDeduccion="
       "TipoDeducciones.IDTipoDeduccion WHERE Deduccion_Comunidad.Eliminado=0 AND Deduccion_Comunidad.CodComunidad=%1"_s,
       u"TipoDeducciones.Porcentaje, Deduccion_Comunidad.IDDeduccion_Comunidad"_s},
  };
}

std::vector<Relation> OfferingRelations() {
  return {
      {numbers.TipoDeduccion(),
       u"Tipos de donativo"_s,
       numbers.TipoDonativos(),
       {{u"Finalidad"_s}, {u"Modelo 182"_s, ColumnKind::YesNo}},
       u"IDTipoDonativo, Nombre, Modelo182"_s,
       u"TipoDonativos WHERE Eliminado=0 AND (CodTipoDeduccionFisica=%1 OR CodTipoDeduccionJuridica=%1)"_s,
       u"Nombre, IDTipoDonativo"_s},
      {.nodeId = numbers.TipoDonativos(),
       .title = u"Modelo 182"_s,
       .opensIn = 0,
       .columns = {{u"Se declara en el modelo 182"_s, ColumnKind::YesNo},
                   {u"Tipo A"_s, ColumnKind::YesNo},
                   {u"Genera recibo"_s, ColumnKind::YesNo},
                   {u"Texto del recibo"_s}},
       .select = u"IDTipoDonativo, Modelo182, TipoA, GenerarRecibo, TextoRecibo"_s,
       .from = u"TipoDonativos WHERE IDTipoDonativo=%1"_s,
       .order = u"IDTipoDonativo"_s,
       .isOneRow = true},
      {.nodeId = numbers.Publicaciones(),
       .title = u"Precios"_s,
       .opensIn = 0,
       .columns = {{u"Precio nacional"_s, ColumnKind::Amount},
                   {u"Precio extranjero"_s, ColumnKind::Amount},
                   {u"Texto del recibo"_s}},
       .select = u"IDTipoPublicacion, ImporteNacional, ImporteExtranjero, TextoRecibo"_s,
       .from = u"TipoPublicaciones WHERE IDTipoPublicacion=%1"_s,
       .order = u"IDTipoPublicacion"_s,
       .isOneRow = true},
  };
}

std::vector<Relation> OtherRelations() {
  return {
      {numbers.Etiquetas(),
       u"Campos"_s,
       0,
       {{u"Línea"_s, ColumnKind::Number}, {u"Orden"_s, ColumnKind::Number}, {u"Campo"_s}},
       u"IDEtiquetaCampo, Linea, Orden, NombreCampo"_s,
       u"EtiquetasCampos WHERE Eliminado=0 AND codEtiqueta=%1"_s,
       u"Linea, Orden, IDEtiquetaCampo"_s},
      {deletedRecordsNode,
       u"Contenido"_s,
       0,
       {{u"Tabla"_s}, {u"Registros"_s, ColumnKind::Number}},
       u"MIN(IDEliminacionRegistro) AS Primero, Tabla, COUNT(*) AS Cuantos"_s,
       u"EliminacionesRegistros WHERE codEliminacion=%1 GROUP BY Tabla"_s,
       u"Tabla"_s},
  };
}

const std::vector<Relation>& AllRelations() {
  static const std::vector<Relation> all = [] {
    std::vector<Relation> relations;
    for (const auto& some : {BankingRelations(), PlaceRelations(), OfferingRelations(), OtherRelations()}) {
      relations.insert(relations.end(), some.begin(), some.end());
    }
    return relations;
  }();
  return all;
}

int CountRows(adodb::Connection& connection, const QString& from) {
  return automation::CLng(connection.Execute(u"SELECT COUNT(*) AS Total FROM "_s + from)->Field(0));
}

RecordData Turned(const RecordData& row) {
  RecordData lines({{u"Dato"_s}, {u"Valor"_s}});
  for (int column = 0; row.Size() > 0 && column < row.Columns().size(); ++column) {
    lines.Append(column, {row.Columns()[column].title, row.Display(0, column)});
  }
  return lines;
}

RelatedRecords ReadRelated(adodb::Connection& connection, const Relation& relation, int id) {
  RelatedRecords related{.title = relation.title, .nodeId = relation.opensIn, .records = RecordData(relation.columns)};
  const QString from = relation.from.arg(id);
  const QString top = QString::number(mostRelated);
  const auto rows =
      connection.Execute(u"SELECT TOP %1 %2 FROM %3 ORDER BY %4"_s.arg(top, relation.select, from, relation.order));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    QList<QVariant> values;
    for (int column = 1; column <= relation.columns.size(); ++column) {
      values.append(rows->Field(column));
    }
    related.records.Append(automation::CLng(rows->Field(0)), values);
  }
  if (relation.isOneRow) {
    related.records = Turned(related.records);
  } else {
    related.total = related.records.Size() < mostRelated ? related.records.Size() : CountRows(connection, from);
  }
  return related;
}

}  // namespace

RecordDetail ReadDetail(adodb::Connection& connection, const Node& node, int id, bool velumar) {
  RecordDetail detail{.uses = CountUses(connection, node.id, id, velumar),
                      .lastChange = LastChangeOf(connection, node.table, id),
                      .related = {}};
  for (const Relation& relation : AllRelations()) {
    if (relation.nodeId == node.id) {
      detail.related.append(ReadRelated(connection, relation, id));
    }
  }
  return detail;
}

}  // namespace host
