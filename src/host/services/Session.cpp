#include "host/services/Session.h"

#include "host/services/OpenConnection.h"
#include "host/services/cListas.h"
#include "host/services/cPrincipal.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

QString Session::DefaultSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/Kel/kel-host.ini"_s;
}

RecordLocks Session::Locks() const {
  return {Opened(connection), userId, userName};
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

void RegisterClasses(Session& session) {
  automation::RegisterClass(u"KelAPI.cPrincipal"_s, [&session] { return std::make_unique<cPrincipal>(session); });
  automation::RegisterClass(u"KelApi.cListas"_s, [&session] { return std::make_unique<cListas>(session); });
}

void UnregisterClasses() {
  automation::UnregisterClass(u"KelAPI.cPrincipal"_s);
  automation::UnregisterClass(u"KelApi.cListas"_s);
}

}  // namespace host
