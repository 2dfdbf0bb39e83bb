#include "host/records/NodeCatalog.h"

#include "platform/contract/cConstNodo.h"

#include <algorithm>

namespace host {

using namespace Qt::StringLiterals;

namespace {

constexpr cConstNodo numbers;

// The branches of the tree.
const QString banking = u"Entidades bancarias"_s;
const QString tables = u"Tablas"_s;
const QString printing = u"Impresión"_s;
const QString administration = u"Administración"_s;

std::vector<Node> Banking() {
  return {
      {.id = numbers.Bancos(),
       .group = banking,
       .title = u"Bancos"_s,
       .record = u"el banco"_s,
       .icon = u"view-bank"_s,
       .table = u"Bancos"_s,
       .key = u"IDBanco"_s,
       .select = u"SELECT IDBanco, Numero, Nombre FROM Bancos"_s,
       .order = u"Numero, IDBanco"_s,
       .columns = {{u"Número"_s}, {u"Nombre"_s}},
       .nameColumns = 2,
       .unique = u"Numero"_s,
       .typedColumn = 1},
      {.id = numbers.Presentadores(),
       .group = banking,
       .title = u"Presentadores"_s,
       .record = u"el presentador"_s,
       .icon = u"document-send"_s,
       .table = u"Presentadores"_s,
       .key = u"IDPresentador"_s,
       .select = u"SELECT Presentadores.IDPresentador, Presentadores.Nombre, Presentadores.Nif, "
                 "Presentadores.Sufijo, Bancos.Nombre AS Banco FROM Presentadores LEFT JOIN Bancos ON "
                 "Presentadores.CodBanco=Bancos.IDBanco"_s,
       .order = u"Presentadores.Nombre, Presentadores.IDPresentador"_s,
       .columns = {{u"Nombre"_s}, {u"NIF"_s}, {u"Sufijo"_s}, {u"Banco"_s}}},
      {.id = numbers.Emisores(),
       .group = banking,
       .title = u"Emisores"_s,
       .record = u"el emisor"_s,
       .icon = u"view-certificate"_s,
       .table = u"Emisores"_s,
       .key = u"IDEmisor"_s,
       .select = u"SELECT Emisores.IDEmisor, Emisores.Nombre, Emisores.Cif, Emisores.Sufijo, Presentadores.Nombre "
                 "AS Presentador, Emisores.Poblacion FROM Emisores LEFT JOIN Presentadores ON "
                 "Emisores.CodPresentador=Presentadores.IDPresentador"_s,
       .order = u"Emisores.Nombre, Emisores.IDEmisor"_s,
       .columns = {{u"Nombre"_s}, {u"CIF"_s}, {u"Sufijo"_s}, {u"Presentador"_s}, {u"Población"_s}}},
      {.id = numbers.Cobradores(),
       .group = banking,
       .title = u"Colectoras"_s,
       .record = u"la colectora"_s,
       .icon = u"user"_s,
       .table = u"Cobradores"_s,
       .key = u"IDCobrador"_s,
       .select = u"SELECT IDCobrador, Nombre, Apellido1, Apellido2, NIF, Direccion, Poblacion FROM Cobradores"_s,
       .order = u"Nombre, IDCobrador"_s,
       .columns = {{u"Nombre"_s},
                   {u"Primer apellido"_s},
                   {u"Segundo apellido"_s},
                   {u"NIF"_s},
                   {u"Dirección"_s},
                   {u"Población"_s}},
       .nameColumns = 3,
       .dialogLocks = false},
  };
}

std::vector<Node> Places() {
  return {
      {.id = numbers.Paises(),
       .group = tables,
       .title = u"Países"_s,
       .record = u"el país"_s,
       .icon = u"globe"_s,
       .table = u"Paises"_s,
       .key = u"IDPais"_s,
       .select = u"SELECT IDPais, Nombre FROM Paises"_s,
       .order = u"Nombre, IDPais"_s,
       .columns = {{u"Nombre"_s}}},
      {.id = numbers.Provincias(),
       .group = tables,
       .title = u"Provincias"_s,
       .record = u"la provincia"_s,
       .icon = u"flag"_s,
       .table = u"Provincias"_s,
       .key = u"IDProvincia"_s,
       .select = u"SELECT Provincias.IDProvincia, Provincias.Nombre, Paises.Nombre AS Pais, Provincias.Prefijo FROM "
                 "Provincias LEFT JOIN Paises ON Provincias.CodPais=Paises.IDPais"_s,
       .order = u"Provincias.Nombre, Provincias.IDProvincia"_s,
       .columns = {{u"Nombre"_s}, {u"País"_s}, {u"Prefijo postal"_s}}},
      {.id = numbers.Diocesis(),
       .group = tables,
       .title = u"Diócesis"_s,
       .record = u"la diócesis"_s,
       .icon = u"view-institution"_s,
       .table = u"Diocesis"_s,
       .key = u"IDDiocesis"_s,
       .select = u"SELECT Diocesis.IDDiocesis, Diocesis.Nombre, Provincias.Nombre AS Provincia FROM Diocesis LEFT "
                 "JOIN Provincias ON Diocesis.CodProvincia=Provincias.IDProvincia"_s,
       .order = u"Diocesis.Nombre, Diocesis.IDDiocesis"_s,
       .columns = {{u"Nombre"_s}, {u"Provincia"_s}}},
      {.id = numbers.ComunidadAutonoma(),
       .group = tables,
       .title = u"Comunidades autónomas"_s,
       .record = u"la comunidad autónoma"_s,
       .icon = u"map-flat"_s,
       .table = u"ComunidadAutonoma"_s,
       .key = u"IDComunidad"_s,
       .select = u"SELECT IDComunidad, Nombre, Codigo FROM ComunidadAutonoma"_s,
       .order = u"Nombre, IDComunidad"_s,
       .columns = {{u"Nombre"_s}, {u"Código"_s}}},
  };
}

std::vector<Node> Deductions() {
  return {
      {.id = numbers.DeduccionesComunidad(),
       .group = tables,
       .title = u"Deducciones por comunidad"_s,
       .record = u"la deducción"_s,
       .icon = u"view-list-text"_s,
       .table = u"Deduccion_Comunidad"_s,
       .key = u"IDDeduccion_Comunidad"_s,
       .select = u"SELECT Deduccion_Comunidad.IDDeduccion_Comunidad, ComunidadAutonoma.Nombre AS Comunidad, "
                 "TipoDeducciones.Porcentaje FROM (Deduccion_Comunidad LEFT JOIN ComunidadAutonoma ON "
                 "Deduccion_Comunidad.CodComunidad=ComunidadAutonoma.IDComunidad) LEFT JOIN TipoDeducciones ON "
                 "Deduccion_Comunidad.CodDeduccion=TipoDeducciones.IDTipoDeduccion"_s,
       .order = u"ComunidadAutonoma.Nombre, Deduccion_Comunidad.IDDeduccion_Comunidad"_s,
       .columns = {{u"Comunidad autónoma"_s}, {u"Deducción"_s, ColumnKind::Percentage}},
       .nameColumns = 2},
      {.id = numbers.TipoDeduccion(),
       .group = tables,
       .title = u"Tipos de deducción"_s,
       .record = u"el tipo de deducción"_s,
       .icon = u"percent"_s,
       .table = u"TipoDeducciones"_s,
       .key = u"IDTipoDeduccion"_s,
       .select = u"SELECT IDTipoDeduccion, Porcentaje FROM TipoDeducciones"_s,
       .order = u"Porcentaje, IDTipoDeduccion"_s,
       .columns = {{u"Porcentaje"_s, ColumnKind::Percentage}},
       .unique = u"Porcentaje"_s},
  };
}

std::vector<Node> Offerings() {
  return {
      {.id = numbers.TipoDonativos(),
       .group = tables,
       .title = u"Tipos de donativo"_s,
       .record = u"el tipo de donativo"_s,
       .icon = u"love"_s,
       .table = u"TipoDonativos"_s,
       .key = u"IDTipoDonativo"_s,
       .select = u"SELECT TipoDonativos.IDTipoDonativo, TipoDonativos.Nombre, Fisica.Porcentaje AS DeduccionFisica, "
                 "Juridica.Porcentaje AS DeduccionJuridica, TipoDonativos.Modelo182, TipoDonativos.GenerarRecibo "
                 "FROM (TipoDonativos LEFT JOIN TipoDeducciones AS Fisica ON "
                 "TipoDonativos.CodTipoDeduccionFisica=Fisica.IDTipoDeduccion) LEFT JOIN TipoDeducciones AS "
                 "Juridica ON TipoDonativos.CodTipoDeduccionJuridica=Juridica.IDTipoDeduccion"_s,
       .order = u"TipoDonativos.Nombre, TipoDonativos.IDTipoDonativo"_s,
       .columns = {{u"Finalidad"_s},
                   {u"Deducción física"_s, ColumnKind::Percentage},
                   {u"Deducción jurídica"_s, ColumnKind::Percentage},
                   {u"Modelo 182"_s, ColumnKind::YesNo},
                   {u"Recibos"_s, ColumnKind::YesNo}}},
      {.id = numbers.Publicaciones(),
       .group = tables,
       .title = u"Publicaciones"_s,
       .record = u"la publicación"_s,
       .icon = u"news-subscribe"_s,
       .table = u"TipoPublicaciones"_s,
       .key = u"IDTipoPublicacion"_s,
       .select = u"SELECT IDTipoPublicacion, Nombre, ImporteNacional, ImporteExtranjero FROM TipoPublicaciones"_s,
       .order = u"Nombre, IDTipoPublicacion"_s,
       .columns = {{u"Nombre"_s},
                   {u"Precio nacional"_s, ColumnKind::Amount},
                   {u"Precio extranjero"_s, ColumnKind::Amount}}},
  };
}

std::vector<Node> Printing() {
  return {
      {.id = numbers.Etiquetas(),
       .group = printing,
       .title = u"Etiquetas"_s,
       .record = u"la hoja de etiquetas"_s,
       .icon = u"tag"_s,
       .table = u"ETIQUETAS"_s,
       .key = u"IDETIQUETA"_s,
       .select = u"SELECT IDETIQUETA, NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, DISCO, ENVIOPOSTAL FROM ETIQUETAS"_s,
       .order = u"NOMBRE, IDETIQUETA"_s,
       .columns = {{u"Referencia"_s},
                   {u"Etiquetas"_s, ColumnKind::Number},
                   {u"Por fila"_s, ColumnKind::Number},
                   {u"Disco bancario"_s, ColumnKind::YesNo},
                   {u"Envío postal"_s, ColumnKind::YesNo}},
       .dialogLocks = false},
      {.id = numbers.Cabeceras(),
       .group = printing,
       .title = u"Cabeceras"_s,
       .record = u"la cabecera"_s,
       .icon = u"format-text-bold"_s,
       .table = u"Cabeceras"_s,
       .key = u"IDCabecera"_s,
       .select = u"SELECT IDCabecera, Nombre, Linea1, Linea2, Linea3, Linea4, Linea5 FROM Cabeceras"_s,
       .order = u"Nombre, IDCabecera"_s,
       .columns = {{u"Nombre"_s}, {u"Línea 1"_s}, {u"Línea 2"_s}, {u"Línea 3"_s}, {u"Línea 4"_s}, {u"Línea 5"_s}}},
      // Headings belong to the collaborator types, which are fixed: they are only reworded.
      {.id = numbers.Encabezados().toInt(),
       .group = printing,
       .title = u"Encabezados"_s,
       .record = u"el encabezado"_s,
       .icon = u"draw-text"_s,
       .table = u"Encabezados"_s,
       .key = u"IDEncabezado"_s,
       .select = u"SELECT IDEncabezado, Descripcion, Nombre FROM Encabezados"_s,
       .order = u"Descripcion, IDEncabezado"_s,
       .marksDeleted = false,
       .columns = {{u"Tipo de colaborador"_s}, {u"Encabezado"_s}},
       .dialogLocks = false,
       .canAdd = false,
       .canDelete = false},
      {.id = numbers.CartasModelo(),
       .group = printing,
       .title = u"Cartas modelo"_s,
       .record = u"la carta modelo"_s,
       .icon = u"mail-message"_s,
       .table = u"CartasModelo"_s,
       .key = u"IDCartaModelo"_s,
       .select = u"SELECT IDCartaModelo, Nombre FROM CartasModelo"_s,
       .order = u"Nombre, IDCartaModelo"_s,
       .columns = {{u"Nombre"_s}}},
  };
}

std::vector<Node> Administration() {
  return {
      // They are changed in a dialog of their own (host/access).
      {.id = numbers.Usuarios(),
       .group = administration,
       .title = u"Usuarios"_s,
       .record = u"el usuario"_s,
       .icon = u"user-others"_s,
       .table = u"Usuarios"_s,
       .key = u"IDUsuario"_s,
       .select = u"SELECT IDUsuario, Nombre, Administrador FROM Usuarios"_s,
       .order = u"Nombre, IDUsuario"_s,
       .columns = {{u"Nombre"_s}, {u"Administrador"_s, ColumnKind::YesNo}},
       .hasDialog = false,
       .canAdd = false,
       .canDelete = false,
       .administratorsOnly = true},
      {.id = changesNode,
       .group = administration,
       .title = u"Cambios"_s,
       .record = u"el cambio"_s,
       .icon = u"view-history"_s,
       .table = u"Cambios"_s,
       .key = u"IDCambio"_s,
       .select =
           u"SELECT IDCambio, Nombre, IIF(Clase=1, 'Agregado', IIF(Clase=2, 'Cambiado', IIF(Clase=3, 'Eliminado', "
           "IIF(Clase=4, 'Recuperado', IIF(Clase=5, 'Cambiados varios', 'Bloqueo soltado'))))) AS Que, Fecha, "
           "Usuario, Equipo, Tabla, Filas FROM Cambios"_s,
       .order = u"Nombre, IDCambio"_s,
       .marksDeleted = false,
       .columns = {{u"Registro"_s},
                   {u"Qué"_s},
                   {u"Cuándo"_s, ColumnKind::Moment},
                   {u"Quién"_s},
                   {u"Equipo"_s},
                   {u"Tabla"_s},
                   {u"Cuántos"_s, ColumnKind::Number}},
       .sortColumn = 2,
       .sortOrder = Qt::DescendingOrder,
       .hasDialog = false,
       .canAdd = false,
       .canDelete = false,
       .administratorsOnly = true},
      {.id = deletedRecordsNode,
       .group = administration,
       .title = u"Registros eliminados"_s,
       .record = u"la eliminación"_s,
       .icon = u"user-trash"_s,
       .table = u"Eliminaciones"_s,
       .key = u"IDEliminacion"_s,
       .select = u"SELECT IDEliminacion, Nombre, Clase, Fecha, Usuario FROM Eliminaciones"_s,
       .order = u"Nombre, IDEliminacion"_s,
       .marksDeleted = false,
       .columns = {{u"Nombre"_s}, {u"Clase"_s}, {u"Eliminado el"_s, ColumnKind::Moment}, {u"Por"_s}},
       .sortColumn = 2,
       .sortOrder = Qt::DescendingOrder,
       .hasDialog = false,
       .canAdd = false,
       .canDelete = false,
       .canRecover = true},
  };
}

// The notes whose record is marked as deleted: nothing else can be recovered.
QString StillMarked(const std::vector<Node>& nodes) {
  QStringList marked;
  for (const Node& node : nodes) {
    if (node.marksDeleted) {
      marked.append(
          u"(Nodo=%1 AND EXISTS (SELECT %3 FROM EliminacionesRegistros INNER JOIN %2 ON ValorID=%3 WHERE "
          "codEliminacion=IDEliminacion AND Tabla='%2' AND %2.Eliminado<>0))"_s.arg(QString::number(node.id),
                                                                                    node.table, node.key));
    }
  }
  return u'(' + marked.join(u" OR "_s) + u')';
}

std::vector<Node> BuildCatalog() {
  std::vector<Node> catalog;
  for (const auto& nodes : {Banking(), Places(), Deductions(), Offerings(), Printing(), Administration()}) {
    catalog.insert(catalog.end(), nodes.begin(), nodes.end());
  }
  catalog.back().condition = StillMarked(catalog);
  return catalog;
}

template <typename Accepts>
const Node* FirstNode(Accepts accepts) {
  const std::vector<Node>& nodes = NodeCatalog();
  const auto found = std::ranges::find_if(nodes, accepts);
  return found == nodes.end() ? nullptr : &*found;
}

}  // namespace

QString Node::Path() const {
  return group + u'\\' + title;
}

const std::vector<Node>& NodeCatalog() {
  static const std::vector<Node> catalog = BuildCatalog();
  return catalog;
}

std::vector<Node> NodesFor(bool administrator) {
  std::vector<Node> nodes = NodeCatalog();
  if (administrator) {
    return nodes;
  }
  QStringList hidden;
  for (const Node& node : nodes) {
    if (node.administratorsOnly) {
      hidden.append(QString::number(node.id));
    }
  }
  std::erase_if(nodes, [](const Node& node) { return node.administratorsOnly; });
  for (Node& node : nodes) {
    if (node.canRecover) {
      node.condition += u" AND Nodo NOT IN (%1)"_s.arg(hidden.join(u','));
    }
  }
  return nodes;
}

const Node* FindNode(int id) {
  return FirstNode([id](const Node& node) { return node.id == id; });
}

const Node* FindNodeByKey(const QString& keyColumn) {
  return FirstNode([&](const Node& node) { return node.key.compare(keyColumn, Qt::CaseInsensitive) == 0; });
}

const Node* FindNodeByTable(const QString& table) {
  return FirstNode([&](const Node& node) { return node.table.compare(table, Qt::CaseInsensitive) == 0; });
}

}  // namespace host
