#include "framework/Ayuda.h"

#include "framework/Plataforma.h"
#include "framework/ServiciosHost.h"

namespace Ayuda {

namespace {

QString& File() {
  static QString file;
  return file;
}

}  // namespace

void SetFile(const QString& path) {
  File() = path;
}

void Show() {
  Plataforma::Current().ShowHelp(File(), objApi().tituloaplicacion());
}

}  // namespace Ayuda
