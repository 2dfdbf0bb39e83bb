#include "host/desktop/ErrorBox.h"

#include "host/services/PlainBox.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString Details(const automation::Error& error) {
  QString text = u"%1\n\nError %2"_s.arg(error.Description(), QString::number(error.Number()));
  if (!error.Source().isEmpty()) {
    text += u" · Origen: "_s + error.Source();
  }
  return text;
}

}  // namespace

void ShowError(QWidget* parent, const QString& title, const QString& what, const automation::Error& error) {
  PlainBox box(QMessageBox::Critical, title, what, QMessageBox::Ok, parent);
  box.SetFurtherText(Details(error));
  box.exec();
}

QString ErrorReport(const QString& what, const automation::Error& error) {
  return what + u"\n\n"_s + Details(error);
}

}  // namespace host
