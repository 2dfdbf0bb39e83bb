#pragma once

#include "documents/labels/Calibration.h"
#include "platform/adodb/Connection.h"

#include <QString>

#include <optional>

/// What printers do to pages, measured once for a printer and its tray and kept for this machine.
namespace host {

struct PrinterTray {
  QString printer;
  QString tray;  ///< Empty for the printer's own choice.
};

struct KeptCalibration {
  documents::Calibration calibration;
  QString user;
  QString date;  ///< As people write it.
};

/// Nothing for one that was never measured. Raises 5, in words, where what is kept is nothing that a printer does.
std::optional<KeptCalibration> FindCalibration(adodb::Connection& connection, const PrinterTray& place);
/// In the place of an earlier one.
void KeepCalibration(adodb::Connection& connection, const PrinterTray& place, const documents::Calibration& calibration,
                     const QString& user);
void DropCalibration(adodb::Connection& connection, const PrinterTray& place);

}  // namespace host
