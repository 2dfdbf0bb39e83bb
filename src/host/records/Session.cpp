#include "host/records/Session.h"

#include "host/records/OpenConnection.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

QString Session::DefaultSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/Kel/kel-host.ini"_s;
}

void Session::LookAtRights(adodb::Connection& at) const {
  if (lookAtRights) {
    lookAtRights(at);
  }
}

Rights Session::UserRights() const {
  if (readOnly) {
    return Rights::Viewer;
  }
  if (!mayDelete) {
    return Rights::Changes;
  }
  return IsAdministrator() ? Rights::Administrator : Rights::ChangesAndDeletes;
}

RecordLocks Session::Locks() {
  return {Opened(connection), userId, userName, &lockMemory};
}

}  // namespace host
