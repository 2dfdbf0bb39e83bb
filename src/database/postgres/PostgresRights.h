#pragma once

#include "database/ServerRoles.h"
#include "database/postgres/PostgresHandle.h"

namespace database {

/// The groups of a database's people, roles of the server without a password of their own, named after the database
/// (`kel_usuarios` for `kel`). Each one may what the one before may:
///   - `_lectores`         look at everything
///   - `_usuarios`         write rows; notes of the change log are added and never changed
///   - `_administradores`  also the tables of users and of settings for all
/// and `_propietarios` own everything, so that they make, migrate and restore it.

/// All four, those that may most first.
QStringList GroupNames(const PostgresHandle& handle);

/// Inside a transaction: makes the groups that are missing. The session's user becomes an owner. Raises
/// DatabaseReadOnly, saying what is lacking, for a user who may not make them.
void MakeGroups(const PostgresHandle& handle);

/// Inside a transaction: what is made from here to its end belongs to the owners, where there is such a group and the
/// session's user is one of them.
void ActAsOwner(const PostgresHandle& handle);

/// Hands everything in the schema of the server's over to the owners' group.
void GiveToOwners(const PostgresHandle& handle, const QByteArray& schemaName);

/// Gives the groups their rights on everything in that schema, and nobody else any; does nothing where there are no
/// groups. By its owner.
void GrantRights(const PostgresHandle& handle, const QByteArray& schemaName);

/// Who may open the database, by name; or only the session's user, whatever that one may.
QList<ServerRole> RolesOn(const PostgresHandle& handle, bool onlyOwn);

/// Whether the session's user may make or migrate the tables.
bool MayDefine(const PostgresHandle& handle);

}  // namespace database
