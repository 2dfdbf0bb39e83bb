#pragma once

#include "host/records/RecordLocks.h"
#include "host/records/Rights.h"
#include "platform/adodb/Connection.h"

#include <QString>

#include <functional>
#include <optional>

namespace host {

class OfficeConnection;

/// What every services object of the process shares. The program fills it before the first of them is made.
struct Session {
  adodb::Connection* connection = nullptr;  ///< Borrowed; outlives the session's use.
  OfficeConnection* office = nullptr;       ///< The same one, for who asks what was written or makes batches.
  QString title;                            ///< `tituloaplicacion`: the title of every message box.
  QString icon;                             ///< Path of the icon of every dialog.
  QString helpFile;                         ///< Path of the help file.
  QString database;  ///< `configuracion.Identidad`: what tells this database from every other one.
  int userId = 0;
  QString userName;  ///< As other users see it when this one holds a record.
  int userKind = 0;  ///< 1 is an administrator.
  bool IsAdministrator() const { return userKind == 1; }
  bool velumar = false;
  /// Records may be deleted from the lists.
  bool mayDelete = true;
  /// The user may only look, whatever the database allows: `readOnly`, too, and nothing of the office's is written.
  bool isViewer = false;
  /// What all of that comes to.
  Rights UserRights() const;
  /// Looks whether the user still has the session's rights, before each act of theirs; none where nobody signs in.
  std::function<void(adodb::Connection& connection)> lookAtRights;
  /// The same, where somebody does.
  void LookAtRights(adodb::Connection& connection) const;
  /// Nothing can be written: no record is locked, every one opens as if another user held it.
  bool readOnly = false;
  /// The file of column widths; DefaultSettingsFile() unless set.
  QString settingsFile = DefaultSettingsFile();
  /// Whether BloqueoRegistro tells the user who holds a record.
  bool showRefusedLocks = true;
  /// Who held the record that BloqueoRegistro was refused last; nothing after a lock was taken.
  std::optional<LockHolder> lastRefusal;
  /// Set when a dialog that was only looked at closed because its record is free: this session holds its lock now, and
  /// whoever showed the dialog shows it again and then releases the lock.
  std::optional<LockHolder> openAgain;
  /// What Locks() holds on a server.
  LockMemory lockMemory;
  /// The locks of this user. Raises 91 without a connection; opens a closed one.
  RecordLocks Locks();

  /// `kel-host.ini` in the folder "Kel" of the user's configuration folder.
  static QString DefaultSettingsFile();
};

}  // namespace host
