#pragma once

#include "banking/cSucursal.h"
#include "platform/adodb/Connection.h"

/// What the bank dialogs read and write, as statements to the letter. Errors of the connection pass through.
namespace BancoBD {

struct Banco {
  QString Numero;
  QString Nombre;
};

/// Raises 3021 for a bank that does not exist. Deleted banks are read, too.
Banco LeerBanco(adodb::Connection& connection, qint32 id);

/// The bank's live branches by their code. A branch whose country or province was deleted is not among them.
ColeccionSucursales LeerSucursales(adodb::Connection& connection, qint32 banco);

/// True when a live collaborator account or account uses the branch.
bool SucursalEnUso(adodb::Connection& connection, qint32 sucursal);

/// True when a live bank other than `id` has the number.
bool NumeroEnUso(adodb::Connection& connection, const QString& numero, qint32 id);

/// Writes a new bank with its branches in one transaction; returns its key.
qint32 InsertarBanco(adodb::Connection& connection, const Banco& banco, const ColeccionSucursales& sucursales);

/// Writes an existing bank, its new and edited branches and the marks of its deleted ones, in one transaction. Raises
/// 3021 and writes nothing when the bank was marked deleted meanwhile.
void ModificarBanco(adodb::Connection& connection, qint32 id, const Banco& banco,
                    const ColeccionSucursales& sucursales);

/// The values of an INSERT of a branch of that bank, without the parentheses.
QString ValoresSucursal(qint32 banco, const cSucursal& sucursal);

}  // namespace BancoBD
