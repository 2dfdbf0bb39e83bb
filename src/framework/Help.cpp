#include "framework/Help.h"

#include "framework/HostServices.h"
#include "framework/Platform.h"

namespace Help {

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
  Platform::Current().ShowHelp(File(), objApi().tituloaplicacion());
}

}  // namespace Help
