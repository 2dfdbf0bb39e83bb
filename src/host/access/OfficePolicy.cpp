#include "host/access/OfficePolicy.h"

#include "host/access/Accounts.h"
#include "host/records/OfficeSettings.h"
#include "platform/adodb/Statement.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString logSetting = u"CambiosMeses"_s;
const QString copiesSetting = u"CopiasDias"_s;

int NumberSetting(adodb::Connection& connection, const QString& name, int least, int most, int usual) {
  bool isNumber = false;
  const int stored = OfficeSetting(connection, name).toInt(&isNumber);
  return isNumber && stored >= least && stored <= most ? stored : usual;
}

}  // namespace

OfficePolicy ReadOfficePolicy(adodb::Connection& connection) {
  const OfficePolicy usual;
  return {.name = OfficeName(connection),
          .idleMinutes = IdleMinutes(connection),
          .monthsOfLog = NumberSetting(connection, logSetting, 1, OfficePolicy::mostMonthsOfLog, usual.monthsOfLog),
          .daysOfCopies = NumberSetting(connection, copiesSetting, OfficePolicy::fewestDaysOfCopies,
                                        OfficePolicy::mostDaysOfCopies, usual.daysOfCopies)};
}

void StoreOfficePolicy(adodb::Connection& connection, const OfficePolicy& before, const OfficePolicy& wanted) {
  if (wanted.name != before.name) {
    adodb::Execute(connection, u"UPDATE configuracion SET NombreEntidad='{}'", wanted.name);
  }
  if (wanted.idleMinutes != before.idleMinutes) {
    SetIdleMinutes(connection, wanted.idleMinutes);
  }
  if (wanted.monthsOfLog != before.monthsOfLog) {
    SetOfficeSetting(connection, logSetting, QString::number(wanted.monthsOfLog));
  }
  if (wanted.daysOfCopies != before.daysOfCopies) {
    SetOfficeSetting(connection, copiesSetting, QString::number(wanted.daysOfCopies));
  }
}

}  // namespace host
