#pragma once

#include "host/records/Rights.h"
#include "platform/adodb/Connection.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace host {

/// A user as the sign-in knows one: a live row of Usuarios, and the row of Claves beside it where there is one.
struct Account {
  int id = 0;
  QString name;      ///< At most 50 characters, whatever a file holds.
  QString fullName;  ///< At most 100.
  /// An administrator is whom Usuarios.Administrador calls so; of the others Claves says more. Without a row there a
  /// user changes and deletes; with one that says nothing valid, only looks.
  Rights rights = Rights::Viewer;
  bool isOff = false;  ///< May not enter.
  bool mustChange = false;
  QString hash = {};             ///< Empty for a user without a password, who may not enter.
  QDateTime passwordSince = {};  ///< These two in UTC; invalid where not known.
  QDateTime lastEntry = {};

  bool IsAdministrator() const { return rights == Rights::Administrator; }
  bool MayEnter() const { return !isOff && !hash.isEmpty(); }
};

// Errors of the database leave all functions.

/// Everybody who is not deleted, by name.
QList<Account> ReadAccounts(adodb::Connection& connection);
/// Nothing for a user who is deleted.
std::optional<Account> ReadAccount(adodb::Connection& connection, int id);
/// The first one of that name, without regard to case and blanks around it.
std::optional<Account> FindAccount(adodb::Connection& connection, const QString& name);

/// Whether a user and a password are asked for at the start.
bool AsksForPasswords(adodb::Connection& connection);
void AskForPasswords(adodb::Connection& connection, bool wanted);

/// After how many minutes without use the program locks, 1 to 240; 0 for never.
int IdleMinutes(adodb::Connection& connection);
void SetIdleMinutes(adodb::Connection& connection, int minutes);
constexpr int usualIdleMinutes = 15;
constexpr int mostIdleMinutes = 240;

}  // namespace host
