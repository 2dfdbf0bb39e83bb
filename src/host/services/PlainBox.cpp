#include "host/services/PlainBox.h"

#include <QLabel>

namespace host {

PlainBox::PlainBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons, QWidget* parent)
    : QMessageBox(icon, title, text, buttons, parent) {
  setTextFormat(Qt::PlainText);
}

// The box's own format holds for its first text only.
void PlainBox::SetFurtherText(const QString& text) {
  setInformativeText(text);
  const QList<QLabel*> labels = findChildren<QLabel*>();
  for (QLabel* label : labels) {
    label->setTextFormat(Qt::PlainText);
  }
}

}  // namespace host
