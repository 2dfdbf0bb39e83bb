#include "host/desktop/ErrorBox.h"

#include <QMessageBox>

namespace host {

namespace {

QString Details(const automation::Error& error) {
  QString text = QStringLiteral("%1\n\nError %2").arg(error.Description(), QString::number(error.Number()));
  if (!error.Source().isEmpty()) {
    text += QStringLiteral(" · Origen: ") + error.Source();
  }
  return text;
}

}  // namespace

void ShowError(QWidget* parent, const QString& title, const QString& what, const automation::Error& error) {
  QMessageBox box(QMessageBox::Critical, title, what, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(Details(error));
  box.exec();
}

QString ErrorReport(const QString& what, const automation::Error& error) {
  return what + QStringLiteral("\n\n") + Details(error);
}

}  // namespace host
