#include "framework/Messages.h"

#include "framework/Desktop.h"

using namespace Qt::StringLiterals;

namespace framework {

int ShowMessage(int stringId, int style) {
  return ShowText(LoadResString(stringId), style);
}

int ShowMessageWithBeep(int stringId, int style) {
  Desktop::Current().Beep();
  return ShowMessage(stringId, style);
}

int ShowText(const QString& text, int style) {
  return Desktop::Current().MsgBox(text, style, objApi().tituloaplicacion());
}

void ShowError(int stringId, const automation::Error& error) {
  ShowText(LoadResString(stringId) + QString::number(error.Number()) + u": "_s + error.Description(), vbCritical);
}

void ReportError(const automation::Error& error, const QString& procedure, const QString& entity,
                 const QString& component, const HostServices& services) {
  automation::Err().Set(error);
  services.VerError(procedure, entity, component);
  automation::Err().Clear();
}

}  // namespace framework
