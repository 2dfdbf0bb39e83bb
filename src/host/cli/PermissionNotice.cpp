#include "host/cli/PermissionNotice.h"

#include "platform/process/Exposure.h"
#include "platform/process/PrivateFiles.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

QString PermissionNotice(const QStringList& files) {
  const QString key = u"Avisos/Permisos"_s;
  QSettings settings;
  QStringList told = settings.value(key).toStringList();
  QStringList commands;
  for (const QString& file : files) {
    if (process::IsOpenToOthers(file) && !told.contains(file)) {
      told.append(file);
      // The files that the engine keeps beside it have the same mode.
      commands.append(u"chmod go-rwx %1*"_s.arg(process::ForShell(file)));
    }
  }
  if (commands.isEmpty()) {
    return {};
  }
  settings.setValue(key, told);
  return u"Otras cuentas de este equipo pueden leer o cambiar archivos del programa. Si no ha de ser así, ciérrelos "
         u"con "
         "estas órdenes:\n\n%1\n\nEste aviso no se repite."_s.arg(commands.join(u'\n'));
}

}  // namespace host
