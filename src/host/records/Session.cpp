#include "host/records/Session.h"

#include "host/records/OpenConnection.h"
#include "platform/automation/Error.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

QString Session::DefaultSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/Kel/kel-host.ini"_s;
}

RecordLocks Session::Locks() {
  return {Opened(connection), userId, userName, &lockMemory};
}

void Session::ReleaseWhatWaits() {
  const QList<std::pair<QString, int>> waiting = std::exchange(unreleased, {});
  for (const auto& [keyColumn, key] : waiting) {
    try {
      Locks().Release(keyColumn, key);
    } catch (const automation::Error&) {
      unreleased.append({keyColumn, key});
    }
  }
}

}  // namespace host
