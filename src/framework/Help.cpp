#include "framework/Help.h"

#include "framework/Desktop.h"
#include "framework/HostServices.h"

namespace framework::Help {

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
  Desktop::Current().ShowHelp(File(), objApi().tituloaplicacion());
}

}  // namespace framework::Help
