#include "host/cli/Registration.h"

#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int permissionDenied = 70;

void Expect(bool done) {
  if (!done) {
    throw automation::Error(permissionDenied,
                            u"No se puede escribir el registro de clases «%1». Compruebe que la carpeta "
                            "existe y que tiene permiso para escribir en ella."_s.arg(automation::RegistryFile()));
  }
}

// The registry file is read from other folders later.
QString Absolute(const QString& library) {
  return QFileInfo(library).absoluteFilePath();
}

}  // namespace

void RegisterComponent(const QString& library) {
  automation::RequireUnexposed(automation::RegistryFile());
  Expect(automation::ComponentLibrary(Absolute(library)).Register());
}

void UnregisterComponent(const QString& library) {
  if (library.isEmpty()) {
    Expect(automation::RemoveFromRegistryFile(
        {u"KelConfiguracion.CPrincipal"_s, u"KelConfiguracion.cSucursal"_s, u"KelConfiguracion.cCampo"_s}));
    return;
  }
  Expect(automation::ComponentLibrary(Absolute(library)).Unregister());
}

}  // namespace host
