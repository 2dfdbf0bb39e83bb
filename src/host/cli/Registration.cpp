#include "host/cli/Registration.h"

#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"

#include <QFileInfo>

namespace host {

namespace {

constexpr int permissionDenied = 70;

void Expect(bool done) {
  if (!done) {
    throw automation::Error(permissionDenied,
                            QStringLiteral("No se puede escribir el registro de clases «%1». Compruebe que la carpeta "
                                           "existe y que tiene permiso para escribir en ella.")
                                .arg(automation::RegistryFile()));
  }
}

// The registry file is read from other folders later.
QString Absolute(const QString& library) {
  return QFileInfo(library).absoluteFilePath();
}

}  // namespace

void RegisterComponent(const QString& library) {
  Expect(automation::ComponentLibrary(Absolute(library)).Register());
}

void UnregisterComponent(const QString& library) {
  if (library.isEmpty()) {
    Expect(automation::RemoveFromRegistryFile({QStringLiteral("KelConfiguracion.CPrincipal"),
                                               QStringLiteral("KelConfiguracion.cSucursal"),
                                               QStringLiteral("KelConfiguracion.cCampo")}));
    return;
  }
  Expect(automation::ComponentLibrary(Absolute(library)).Unregister());
}

}  // namespace host
