#include "host/services/MessageBox.h"

#include <QApplication>

namespace host {

void ShowMessage(QMessageBox::Icon icon, const QString& text, const QString& title) {
  QMessageBox box(icon, title, text, QMessageBox::Ok, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace host
