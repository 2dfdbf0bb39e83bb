#include "host/desktop/HelpMenu.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace host {

void OpenHelp(QWidget* parent, const QString& title, const QString& file) {
  if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
    QMessageBox::warning(parent, title, u"No hay ningún programa que abra la ayuda «%1»."_s.arg(file));
  }
}

void ShowAbout(QWidget* parent, const QString& title) {
  QMessageBox::about(parent, title,
                     u"kel-host %1\n\nPrograma anfitrión del componente KelConfiguracion."_s.arg(
                         QCoreApplication::applicationVersion()));
}

}  // namespace host
