#include "host/services/MessageBox.h"

#include "host/services/PlainBox.h"

#include <QApplication>

namespace host {

void ShowMessage(QMessageBox::Icon icon, const QString& text, const QString& title) {
  PlainBox(icon, title, text, QMessageBox::Ok, QApplication::activeWindow()).exec();
}

}  // namespace host
