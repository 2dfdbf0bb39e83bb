#include "banking/BancoBD.h"

#include "framework/Sql.h"
#include "platform/contract/cConstAccion.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QStringList>

namespace BancoBD {

namespace {

using automation::Text;

// The runtime's number for a record that is no longer there.
constexpr int bancoEliminado = 3021;

// The record lock does not hold a deletion back, so a bank may go while it is edited; writing into it then would lose
// what the user typed without a word.
void ExigirBancoVivo(adodb::Connection& connection, qint32 id) {
  const auto rs = connection.Execute(QStringLiteral("SELECT Bancos.Eliminado FROM Bancos WHERE Bancos.IDBanco=") +
                                     QString::number(id));
  if (!rs->AtEnd() && automation::CBool(rs->Field(u"ELIMINADO"))) {
    throw automation::Error(
        bancoEliminado, QStringLiteral("El banco ha sido eliminado por otro usuario mientras se modificaba. No se ha "
                                       "guardado nada: cierre el formulario y actualice la lista."));
  }
}

// An identifier of a column that may be empty.
qint32 Identificador(const QVariant& value) {
  return automation::IsNull(value) ? 0 : automation::CLng(value);
}

std::shared_ptr<cSucursal> LeerSucursal(adodb::Recordset& rs) {
  auto sucursal = std::make_shared<cSucursal>();
  sucursal->IDSucursal = automation::CLng(rs.Field(u"IDSUCURSAL"));
  sucursal->IDProvincia = Identificador(rs.Field(u"CODPROVINCIA"));
  sucursal->IDPais = Identificador(rs.Field(u"CODPAIS"));
  sucursal->Nombre = Text(rs.Field(u"SUCURSAL"));
  sucursal->Codigo = Text(rs.Field(u"CODIGO"));
  sucursal->Direccion = Text(rs.Field(u"DIRECCION"));
  sucursal->Poblacion = Text(rs.Field(u"POBLACION"));
  sucursal->CodigoPostal = Text(rs.Field(u"CP"));
  sucursal->Provincia = Text(rs.Field(u"PROVINCIA"));
  sucursal->Pais = Text(rs.Field(u"PAIS"));
  sucursal->ExisteEnBD = true;
  sucursal->Estado = cConstAccion().Agregar();
  return sucursal;
}

void InsertarSucursal(adodb::Connection& connection, qint32 banco, const cSucursal& sucursal) {
  connection.Execute(QStringLiteral("INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, "
                                    "Poblacion, CP, codProvincia, codPais) VALUES(") +
                     ValoresSucursal(banco, sucursal) + QStringLiteral(")"));
}

void ModificarSucursal(adodb::Connection& connection, const cSucursal& sucursal) {
  // Intended: no blank stands between the last identifier and WHERE.
  connection.Execute(QStringLiteral("UPDATE Sucursales SET Codigo='") + TextoSql(sucursal.Codigo) +
                     QStringLiteral("',Nombre='") + TextoSql(sucursal.Nombre) + QStringLiteral("',Direccion='") +
                     TextoSql(sucursal.Direccion) + QStringLiteral("',Poblacion='") + TextoSql(sucursal.Poblacion) +
                     QStringLiteral("',CP='") + TextoSql(sucursal.CodigoPostal) + QStringLiteral("',codProvincia=") +
                     QString::number(sucursal.IDProvincia) + QStringLiteral(",codPais=") +
                     QString::number(sucursal.IDPais) + QStringLiteral("WHERE Sucursales.IDSucursal=") +
                     QString::number(sucursal.IDSucursal));
}

}  // namespace

Banco LeerBanco(adodb::Connection& connection, qint32 id) {
  const auto rs = connection.Execute(QStringLiteral("SELECT Bancos.Nombre, Bancos.Numero FROM Bancos "
                                                    "WHERE Bancos.IDBanco=") +
                                     QString::number(id));
  return {Text(rs->Field(u"NUMERO")), Text(rs->Field(u"NOMBRE"))};
}

ColeccionSucursales LeerSucursales(adodb::Connection& connection, qint32 banco) {
  const auto rs = connection.Execute(
      QStringLiteral("SELECT Sucursales.IDSucursal, Sucursales.Nombre AS Sucursal, Sucursales.Codigo, "
                     "Sucursales.Direccion, Sucursales.Poblacion, Sucursales.CP, "
                     "Sucursales.codProvincia, Provincias.Nombre AS Provincia, Sucursales.codPais, "
                     "Paises.Nombre AS Pais FROM (Sucursales LEFT JOIN Paises ON "
                     "Sucursales.codPais=Paises.IDPais) LEFT JOIN Provincias ON "
                     "Sucursales.codProvincia=Provincias.IDProvincia "
                     "WHERE Sucursales.Eliminado=0 AND "
                     "(Paises.Eliminado=0 OR Paises.Eliminado IS NULL) AND "
                     "(Provincias.Eliminado=0 OR Provincias.Eliminado IS NULL) AND "
                     "Sucursales.codBanco=") +
      QString::number(banco) + QStringLiteral(" ORDER BY Sucursales.Codigo ASC"));
  ColeccionSucursales sucursales;
  for (; !rs->AtEnd(); rs->MoveNext()) {
    sucursales.push_back(LeerSucursal(*rs));
  }
  return sucursales;
}

bool SucursalEnUso(adodb::Connection& connection, qint32 sucursal) {
  const QString id = QString::number(sucursal);
  const auto rs = connection.Execute(QStringLiteral("SELECT codSucursal FROM Colaboradores_Cuentas WHERE "
                                                    "Colaboradores_Cuentas.Eliminado=0 AND "
                                                    "Colaboradores_Cuentas.codSucursal=") +
                                     id +
                                     QStringLiteral(" UNION SELECT codSucursal FROM Cuentas WHERE "
                                                    "Cuentas.Eliminado=0 AND Cuentas.codSucursal=") +
                                     id);
  return !rs->AtEnd();
}

bool NumeroEnUso(adodb::Connection& connection, const QString& numero, qint32 id) {
  const auto rs = connection.Execute(QStringLiteral("SELECT Bancos.IDBanco FROM Bancos "
                                                    "WHERE Bancos.Eliminado=0 AND Bancos.Numero='") +
                                     TextoSql(numero) + QStringLiteral("' AND Bancos.IDBanco<>") + QString::number(id));
  return !rs->AtEnd();
}

qint32 InsertarBanco(adodb::Connection& connection, const Banco& banco, const ColeccionSucursales& sucursales) {
  adodb::Transaction transaction(connection);
  connection.Execute(QStringLiteral("INSERT INTO Bancos (Numero, Nombre) VALUES('") + TextoSql(banco.Numero) +
                     QStringLiteral("','") + TextoSql(banco.Nombre) + QStringLiteral("')"));
  const auto rs = connection.Execute(QStringLiteral("SELECT MAX(Bancos.IDBanco) AS MaxID FROM Bancos"));
  const qint32 id = automation::CLng(rs->Field(u"MAXID"));
  rs->Close();
  for (const std::shared_ptr<cSucursal>& sucursal : sucursales) {
    InsertarSucursal(connection, id, *sucursal);
  }
  transaction.Commit();
  return id;
}

void ModificarBanco(adodb::Connection& connection, qint32 id, const Banco& banco,
                    const ColeccionSucursales& sucursales) {
  adodb::Transaction transaction(connection);
  ExigirBancoVivo(connection, id);
  connection.Execute(QStringLiteral("UPDATE Bancos SET Numero='") + TextoSql(banco.Numero) +
                     QStringLiteral("',Nombre='") + TextoSql(banco.Nombre) + QStringLiteral("' WHERE IDBanco=") +
                     QString::number(id));
  QStringList eliminadas;
  const cConstAccion accion;
  for (const std::shared_ptr<cSucursal>& sucursal : sucursales) {
    if (!sucursal->ExisteEnBD) {
      InsertarSucursal(connection, id, *sucursal);
    } else if (sucursal->Estado == accion.Modificar()) {
      ModificarSucursal(connection, *sucursal);
    } else if (sucursal->Estado == accion.Eliminar()) {
      eliminadas.append(QString::number(sucursal->IDSucursal));
    }
  }
  if (!eliminadas.isEmpty()) {
    connection.Execute(QStringLiteral("UPDATE Sucursales SET Eliminado=-1 WHERE IDSucursal IN(") +
                       eliminadas.join(u',') + QStringLiteral(")"));
  }
  transaction.Commit();
}

QString ValoresSucursal(qint32 banco, const cSucursal& sucursal) {
  return QString::number(banco) + QStringLiteral(",'") + TextoSql(sucursal.Codigo) + QStringLiteral("','") +
         TextoSql(sucursal.Nombre) + QStringLiteral("','") + TextoSql(sucursal.Direccion) + QStringLiteral("','") +
         TextoSql(sucursal.Poblacion) + QStringLiteral("','") + TextoSql(sucursal.CodigoPostal) + QStringLiteral("',") +
         QString::number(sucursal.IDProvincia) + QStringLiteral(",") + QString::number(sucursal.IDPais);
}

}  // namespace BancoBD
