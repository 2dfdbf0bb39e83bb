#include "host/desktop/HelpMenu.h"

#include "host/services/MessageBox.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace host {

void OpenHelp(const QString& title, const QString& file) {
  if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
    ShowMessage(QMessageBox::Warning, u"No hay ningún programa que abra la ayuda «%1»."_s.arg(file), title);
  }
}

void ShowAbout(QWidget* parent, const QString& title) {
  QMessageBox::about(parent, title,
                     u"kel-host %1\n\nPrograma anfitrión del componente KelConfiguracion."_s.arg(
                         QCoreApplication::applicationVersion()));
}

}  // namespace host
