#include "host/services/ErrorBox.h"

#include "host/services/Advice.h"
#include "host/services/PlainBox.h"

#include <QApplication>
#include <QClipboard>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString NumberAndOrigin(const automation::Error& error, const QString& separator) {
  QString text = u"Error %1"_s.arg(error.Number());
  if (!error.Source().isEmpty()) {
    text += separator + u"Origen: "_s + error.Source();
  }
  return text;
}

// A button that does not end the box.
void AddCopyButton(QMessageBox& box, const QString& report) {
  QPushButton* copy = box.addButton(u"&Copiar"_s, QMessageBox::ActionRole);
  QObject::disconnect(copy, &QPushButton::clicked, nullptr, nullptr);
  QObject::connect(copy, &QPushButton::clicked, &box, [report] { QApplication::clipboard()->setText(report); });
}

}  // namespace

void ShowError(QWidget* parent, const QString& title, const QString& what, const automation::Error& error) {
  const QString advice = AdviceFor(error.Number());
  QString details = NumberAndOrigin(error, u"\n"_s);
  if (!advice.isEmpty()) {
    details.prepend(error.Description() + u'\n');
  }
  PlainBox box(QMessageBox::Critical, title, what, QMessageBox::Ok, parent);
  box.SetFurtherText(advice.isEmpty() ? error.Description() : advice);
  box.setDetailedText(details);
  AddCopyButton(box, ErrorReport(what, error));
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Ok);
  box.exec();
}

QString ErrorReport(const QString& what, const automation::Error& error) {
  return u"%1\n\n%2\n\n%3"_s.arg(what, error.Description(), NumberAndOrigin(error, u" · "_s));
}

}  // namespace host
