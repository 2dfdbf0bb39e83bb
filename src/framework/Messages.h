#pragma once

#include "framework/HostServices.h"
#include "platform/automation/Error.h"
#include "resources/StringTable.h"

#include <QString>

namespace framework {

/// Messages of the dialogs, titled with the host's `tituloaplicacion`.

using resources::LoadResString;

/// Shows the string of that number. `style` is a sum of MsgBoxStyle; the answer one of MsgBoxResult.
int ShowMessage(int stringId, int style);
/// The same after a beep.
int ShowMessageWithBeep(int stringId, int style);
/// Shows a text that was put together.
int ShowText(const QString& text, int style);

/// Shows string `stringId` (a dialog's "Error "), the error's number, ": " and its description, with the critical
/// icon.
void ShowError(int stringId, const automation::Error& error);

/// The component's name in reports.
inline const QString ownComponent = QStringLiteral("KelConfiguracion");

/// Reports an error that a procedure trapped through the host's VerError: the procedure's name as its reports spell
/// it, and the dialog or entity.
void ReportError(const automation::Error& error, const QString& procedure, const QString& entity,
                 const QString& component = ownComponent, const HostServices& services = objApi());

}  // namespace framework
