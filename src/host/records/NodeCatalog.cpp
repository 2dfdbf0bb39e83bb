#include "host/records/NodeCatalog.h"

#include "platform/contract/cConstNodo.h"

#include <algorithm>

namespace host {

using namespace Qt::StringLiterals;

namespace {

constexpr cConstNodo numbers;

Node Listed(int id, const QString& group, const QString& title, const QString& record, const QString& table,
            const QString& key, const QString& select, const QString& order, const QList<ListColumn>& columns) {
  Node node;
  node.id = id;
  node.group = group;
  node.title = title;
  node.record = record;
  node.table = table;
  node.key = key;
  node.select = select;
  node.order = order;
  node.columns = columns;
  return node;
}

Node NamedBy(int columns, Node node) {
  node.nameColumns = columns;
  return node;
}

// Headings belong to the collaborator types, which are fixed: they are only reworded.
Node OnlyModified(Node node) {
  node.marksDeleted = false;
  node.canAdd = false;
  node.canDelete = false;
  return node;
}

Node Unique(const QString& column, Node node) {
  node.unique = column;
  return node;
}

// Users are entered by the program that manages their rights; here an administrator can only take them out.
Node OnlyDeleted(Node node) {
  node.hasDialog = false;
  node.canAdd = false;
  node.administratorsOnly = true;
  return node;
}

Node OnlyRecovered(Node node) {
  node.marksDeleted = false;
  node.hasDialog = false;
  node.canAdd = false;
  node.canDelete = false;
  node.canRecover = true;
  node.sortColumn = 2;
  node.sortOrder = Qt::DescendingOrder;
  return node;
}

// Their number stands before the name.
Node TypedByName(Node node) {
  node.typedColumn = 1;
  return node;
}

void AppendBanking(std::vector<Node>& nodes) {
  const QString group = u"Entidades bancarias"_s;
  nodes.push_back(Unique(u"Numero"_s,
                         TypedByName(NamedBy(2, Listed(numbers.Bancos(), group, u"Bancos"_s, u"el banco"_s, u"Bancos"_s,
                                                       u"IDBanco"_s, u"SELECT IDBanco, Numero, Nombre FROM Bancos"_s,
                                                       u"Numero, IDBanco"_s, {{u"Número"_s}, {u"Nombre"_s}})))));
  nodes.push_back(Listed(
      numbers.Presentadores(), group, u"Presentadores"_s, u"el presentador"_s, u"Presentadores"_s, u"IDPresentador"_s,
      u"SELECT Presentadores.IDPresentador, Presentadores.Nombre, Presentadores.Nif, Presentadores.Sufijo, "
      "Bancos.Nombre AS Banco FROM Presentadores LEFT JOIN Bancos ON Presentadores.CodBanco=Bancos.IDBanco"_s,
      u"Presentadores.Nombre, Presentadores.IDPresentador"_s,
      {{u"Nombre"_s}, {u"NIF"_s}, {u"Sufijo"_s}, {u"Banco"_s}}));
  nodes.push_back(
      Listed(numbers.Emisores(), group, u"Emisores"_s, u"el emisor"_s, u"Emisores"_s, u"IDEmisor"_s,
             u"SELECT Emisores.IDEmisor, Emisores.Nombre, Emisores.Cif, Emisores.Sufijo, Presentadores.Nombre AS "
             "Presentador, Emisores.Poblacion FROM Emisores LEFT JOIN Presentadores ON "
             "Emisores.CodPresentador=Presentadores.IDPresentador"_s,
             u"Emisores.Nombre, Emisores.IDEmisor"_s,
             {{u"Nombre"_s}, {u"CIF"_s}, {u"Sufijo"_s}, {u"Presentador"_s}, {u"Población"_s}}));
  nodes.push_back(NamedBy(
      3, Listed(numbers.Cobradores(), group, u"Colectoras"_s, u"la colectora"_s, u"Cobradores"_s, u"IDCobrador"_s,
                u"SELECT IDCobrador, Nombre, Apellido1, Apellido2, NIF, Direccion, Poblacion FROM Cobradores"_s,
                u"Nombre, IDCobrador"_s,
                {{u"Nombre"_s},
                 {u"Primer apellido"_s},
                 {u"Segundo apellido"_s},
                 {u"NIF"_s},
                 {u"Dirección"_s},
                 {u"Población"_s}})));
}

void AppendPlaces(std::vector<Node>& nodes, const QString& group) {
  nodes.push_back(Listed(numbers.Paises(), group, u"Países"_s, u"el país"_s, u"Paises"_s, u"IDPais"_s,
                         u"SELECT IDPais, Nombre FROM Paises"_s, u"Nombre, IDPais"_s, {{u"Nombre"_s}}));
  nodes.push_back(Listed(
      numbers.Provincias(), group, u"Provincias"_s, u"la provincia"_s, u"Provincias"_s, u"IDProvincia"_s,
      u"SELECT Provincias.IDProvincia, Provincias.Nombre, Paises.Nombre AS Pais, Provincias.Prefijo FROM Provincias "
      "LEFT JOIN Paises ON Provincias.CodPais=Paises.IDPais"_s,
      u"Provincias.Nombre, Provincias.IDProvincia"_s, {{u"Nombre"_s}, {u"País"_s}, {u"Prefijo postal"_s}}));
  nodes.push_back(
      Listed(numbers.Diocesis(), group, u"Diócesis"_s, u"la diócesis"_s, u"Diocesis"_s, u"IDDiocesis"_s,
             u"SELECT Diocesis.IDDiocesis, Diocesis.Nombre, Provincias.Nombre AS Provincia FROM Diocesis LEFT JOIN "
             "Provincias ON Diocesis.CodProvincia=Provincias.IDProvincia"_s,
             u"Diocesis.Nombre, Diocesis.IDDiocesis"_s, {{u"Nombre"_s}, {u"Provincia"_s}}));
  nodes.push_back(Listed(numbers.ComunidadAutonoma(), group, u"Comunidades autónomas"_s, u"la comunidad autónoma"_s,
                         u"ComunidadAutonoma"_s, u"IDComunidad"_s,
                         u"SELECT IDComunidad, Nombre, Codigo FROM ComunidadAutonoma"_s, u"Nombre, IDComunidad"_s,
                         {{u"Nombre"_s}, {u"Código"_s}}));
}

void AppendDeductions(std::vector<Node>& nodes, const QString& group) {
  nodes.push_back(
      NamedBy(2, Listed(numbers.DeduccionesComunidad(), group, u"Deducciones por comunidad"_s, u"la deducción"_s,
                        u"Deduccion_Comunidad"_s, u"IDDeduccion_Comunidad"_s,
                        u"SELECT Deduccion_Comunidad.IDDeduccion_Comunidad, ComunidadAutonoma.Nombre AS Comunidad, "
                        "TipoDeducciones.Porcentaje FROM (Deduccion_Comunidad LEFT JOIN ComunidadAutonoma ON "
                        "Deduccion_Comunidad.CodComunidad=ComunidadAutonoma.IDComunidad) LEFT JOIN TipoDeducciones ON "
                        "Deduccion_Comunidad.CodDeduccion=TipoDeducciones.IDTipoDeduccion"_s,
                        u"ComunidadAutonoma.Nombre, Deduccion_Comunidad.IDDeduccion_Comunidad"_s,
                        {{u"Comunidad autónoma"_s}, {u"Deducción"_s, ColumnKind::Percentage}})));
  nodes.push_back(Unique(
      u"Porcentaje"_s,
      Listed(numbers.TipoDeduccion(), group, u"Tipos de deducción"_s, u"el tipo de deducción"_s, u"TipoDeducciones"_s,
             u"IDTipoDeduccion"_s, u"SELECT IDTipoDeduccion, Porcentaje FROM TipoDeducciones"_s,
             u"Porcentaje, IDTipoDeduccion"_s, {{u"Porcentaje"_s, ColumnKind::Percentage}})));
}

void AppendOfferings(std::vector<Node>& nodes, const QString& group) {
  nodes.push_back(
      Listed(numbers.TipoDonativos(), group, u"Tipos de donativo"_s, u"el tipo de donativo"_s, u"TipoDonativos"_s,
             u"IDTipoDonativo"_s,
             u"SELECT TipoDonativos.IDTipoDonativo, TipoDonativos.Nombre, Fisica.Porcentaje AS DeduccionFisica, "
             "Juridica.Porcentaje AS DeduccionJuridica, TipoDonativos.Modelo182, TipoDonativos.GenerarRecibo FROM "
             "(TipoDonativos LEFT JOIN TipoDeducciones AS Fisica ON "
             "TipoDonativos.CodTipoDeduccionFisica=Fisica.IDTipoDeduccion) LEFT JOIN TipoDeducciones AS Juridica ON "
             "TipoDonativos.CodTipoDeduccionJuridica=Juridica.IDTipoDeduccion"_s,
             u"TipoDonativos.Nombre, TipoDonativos.IDTipoDonativo"_s,
             {{u"Finalidad"_s},
              {u"Deducción física"_s, ColumnKind::Percentage},
              {u"Deducción jurídica"_s, ColumnKind::Percentage},
              {u"Modelo 182"_s, ColumnKind::YesNo},
              {u"Recibos"_s, ColumnKind::YesNo}}));
  nodes.push_back(Listed(
      numbers.Publicaciones(), group, u"Publicaciones"_s, u"la publicación"_s, u"TipoPublicaciones"_s,
      u"IDTipoPublicacion"_s,
      u"SELECT IDTipoPublicacion, Nombre, ImporteNacional, ImporteExtranjero FROM TipoPublicaciones"_s,
      u"Nombre, IDTipoPublicacion"_s,
      {{u"Nombre"_s}, {u"Precio nacional"_s, ColumnKind::Amount}, {u"Precio extranjero"_s, ColumnKind::Amount}}));
}

void AppendPrinting(std::vector<Node>& nodes) {
  const QString group = u"Impresión"_s;
  nodes.push_back(
      Listed(numbers.Etiquetas(), group, u"Etiquetas"_s, u"la hoja de etiquetas"_s, u"ETIQUETAS"_s, u"IDETIQUETA"_s,
             u"SELECT IDETIQUETA, NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, DISCO, ENVIOPOSTAL FROM ETIQUETAS"_s,
             u"NOMBRE, IDETIQUETA"_s,
             {{u"Referencia"_s},
              {u"Etiquetas"_s, ColumnKind::Number},
              {u"Por fila"_s, ColumnKind::Number},
              {u"Disco bancario"_s, ColumnKind::YesNo},
              {u"Envío postal"_s, ColumnKind::YesNo}}));
  nodes.push_back(Listed(
      numbers.Cabeceras(), group, u"Cabeceras"_s, u"la cabecera"_s, u"Cabeceras"_s, u"IDCabecera"_s,
      u"SELECT IDCabecera, Nombre, Linea1, Linea2, Linea3, Linea4, Linea5 FROM Cabeceras"_s, u"Nombre, IDCabecera"_s,
      {{u"Nombre"_s}, {u"Línea 1"_s}, {u"Línea 2"_s}, {u"Línea 3"_s}, {u"Línea 4"_s}, {u"Línea 5"_s}}));
  nodes.push_back(
      OnlyModified(Listed(numbers.Encabezados().toInt(), group, u"Encabezados"_s, u"el encabezado"_s, u"Encabezados"_s,
                          u"IDEncabezado"_s, u"SELECT IDEncabezado, Descripcion, Nombre FROM Encabezados"_s,
                          u"Descripcion, IDEncabezado"_s, {{u"Tipo de colaborador"_s}, {u"Encabezado"_s}})));
  nodes.push_back(Listed(numbers.CartasModelo(), group, u"Cartas modelo"_s, u"la carta modelo"_s, u"CartasModelo"_s,
                         u"IDCartaModelo"_s, u"SELECT IDCartaModelo, Nombre FROM CartasModelo"_s,
                         u"Nombre, IDCartaModelo"_s, {{u"Nombre"_s}}));
}

void AppendAdministration(std::vector<Node>& nodes) {
  const QString group = u"Administración"_s;
  nodes.push_back(
      OnlyDeleted(Listed(numbers.Usuarios(), group, u"Usuarios"_s, u"el usuario"_s, u"Usuarios"_s, u"IDUsuario"_s,
                         u"SELECT IDUsuario, Nombre, Administrador FROM Usuarios"_s, u"Nombre, IDUsuario"_s,
                         {{u"Nombre"_s}, {u"Administrador"_s, ColumnKind::YesNo}})));
  nodes.push_back(OnlyRecovered(Listed(
      deletedRecordsNode, group, u"Registros eliminados"_s, u"la eliminación"_s, u"Eliminaciones"_s, u"IDEliminacion"_s,
      u"SELECT IDEliminacion, Nombre, Clase, Fecha, Usuario FROM Eliminaciones"_s, u"Nombre, IDEliminacion"_s,
      {{u"Nombre"_s}, {u"Clase"_s}, {u"Eliminado el"_s, ColumnKind::Moment}, {u"Por"_s}})));
}

std::vector<Node> BuildCatalog() {
  const QString tables = u"Tablas"_s;
  std::vector<Node> nodes;
  AppendBanking(nodes);
  AppendPlaces(nodes, tables);
  AppendDeductions(nodes, tables);
  AppendOfferings(nodes, tables);
  AppendPrinting(nodes);
  AppendAdministration(nodes);
  return nodes;
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
      node.condition = u"Nodo NOT IN (%1)"_s.arg(hidden.join(u','));
    }
  }
  return nodes;
}

const Node* FindNode(int id) {
  const std::vector<Node>& nodes = NodeCatalog();
  const auto found = std::find_if(nodes.begin(), nodes.end(), [id](const Node& node) { return node.id == id; });
  return found == nodes.end() ? nullptr : &*found;
}

}  // namespace host
