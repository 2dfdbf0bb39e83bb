#include "host/services/Session.h"

#include "host/services/cListas.h"
#include "host/services/cPrincipal.h"
#include "platform/automation/ClassRegistry.h"

#include <QStandardPaths>

namespace host {

QString Session::DefaultSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Kel/kel-host.ini");
}

void RegisterClasses(Session& session) {
  automation::RegisterClass(QStringLiteral("KelAPI.cPrincipal"),
                            [&session] { return std::make_unique<cPrincipal>(session); });
  automation::RegisterClass(QStringLiteral("KelApi.cListas"),
                            [&session] { return std::make_unique<cListas>(session); });
}

void UnregisterClasses() {
  automation::UnregisterClass(QStringLiteral("KelAPI.cPrincipal"));
  automation::UnregisterClass(QStringLiteral("KelApi.cListas"));
}

}  // namespace host
