#include "framework/Mensajes.h"

#include "framework/Plataforma.h"
#include "framework/ServiciosHost.h"
#include "resources/Cadenas.h"

using resources::LoadResString;

int Mensaje(int stringId, int style) {
  return MensajeTexto(LoadResString(stringId), style);
}

int MensajeConAviso(int stringId, int style) {
  Plataforma::Current().Beep();
  return Mensaje(stringId, style);
}

int MensajeTexto(const QString& text, int style) {
  return Plataforma::Current().MsgBox(text, style, objApi().tituloaplicacion());
}

void MensajeError(int stringId, const automation::Error& error) {
  MensajeTexto(LoadResString(stringId) + QString::number(error.Number()) + QStringLiteral(": ") + error.Description(),
               vbCritical);
}

void VerError(const automation::Error& error, const QString& procedure, const QString& entity,
              const QString& component) {
  automation::Err().Set(error);
  objApi().VerError(procedure, entity, component);
  automation::Err().Clear();
}
