#include "host/mailing/printing/CalibrationRecords.h"

#include "documents/people/SpanishDates.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QDate>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString Decimal(double value) {
  constexpr int decimals = 6;
  return QString::number(value, 'f', decimals).replace(u'.', u',');
}

double NumberIn(const QVariant& stored) {
  return automation::IsNumeric(stored) ? automation::CDbl(stored) : 0;
}

}  // namespace

std::optional<KeptCalibration> FindCalibration(adodb::Connection& connection, const PrinterTray& place) {
  const auto row = adodb::Execute(connection,
                                  u"SELECT DesplazamientoX, DesplazamientoY, EscalaX, EscalaY, Usuario, Fecha FROM "
                                  u"ImpresorasCalibracion WHERE Equipo='{}' AND Impresora='{}' AND Bandeja='{}'",
                                  QSysInfo::machineHostName(), place.printer, place.tray);
  if (row->AtEnd()) {
    return {};
  }
  const KeptCalibration kept{.calibration = {.offset = {NumberIn(row->Field(0)), NumberIn(row->Field(1))},
                                             .scale = {NumberIn(row->Field(2)), NumberIn(row->Field(3))}},
                             .user = automation::Text(row->Field(4)),
                             .date = documents::ShortDate(documents::DateIn(automation::Text(row->Field(5))))};
  if (!kept.calibration.IsPossible()) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"La calibración de la impresora «%1» no sirve. Calíbrela otra vez."_s.arg(place.printer));
  }
  return kept;
}

void KeepCalibration(adodb::Connection& connection, const PrinterTray& place, const documents::Calibration& calibration,
                     const QString& user) {
  adodb::Transaction transaction(connection);
  DropCalibration(connection, place);
  adodb::Execute(connection,
                 u"INSERT INTO ImpresorasCalibracion (Equipo, Impresora, Bandeja, DesplazamientoX, DesplazamientoY, "
                 u"EscalaX, EscalaY, Usuario, Fecha) VALUES ('{}', '{}', '{}', '{}', '{}', '{}', '{}', '{}', '{}')",
                 QSysInfo::machineHostName(), place.printer, place.tray, Decimal(calibration.offset.x()),
                 Decimal(calibration.offset.y()), Decimal(calibration.scale.x()), Decimal(calibration.scale.y()), user,
                 QDate::currentDate().toString(Qt::ISODate));
  transaction.Commit();
}

void DropCalibration(adodb::Connection& connection, const PrinterTray& place) {
  adodb::Execute(connection, u"DELETE FROM ImpresorasCalibracion WHERE Equipo='{}' AND Impresora='{}' AND Bandeja='{}'",
                 QSysInfo::machineHostName(), place.printer, place.tray);
}

}  // namespace host
