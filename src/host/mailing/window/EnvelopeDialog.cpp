#include "host/mailing/window/EnvelopeDialog.h"

#include "documents/letter/Paper.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

#include <array>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString key = u"Correo/VentanaSobre"_s;
constexpr QRectF usual(20, 45, 90, 35);

QRectF Paper() {
  constexpr double millimetres = 10;
  const documents::Paper& paper = documents::UsualPaper();
  return {0, 0, documents::InCentimetres(paper.width) * millimetres,
          documents::InCentimetres(paper.height) * millimetres};
}

}  // namespace

QRectF EnvelopeWindow() {
  const QRectF stored = QSettings().value(key).toRectF();
  return !stored.isEmpty() && Paper().contains(stored) ? stored : usual;
}

bool AskForEnvelopeWindow(QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName(u"dlgVentanaSobre"_s);
  dialog.setWindowTitle(u"Ventana del sobre"_s);
  auto* form = new QFormLayout(&dialog);
  const QRectF before = EnvelopeWindow();
  const auto add = [&](const QString& text, const char* name, double value, double most) {
    auto* box = new QSpinBox(&dialog);
    box->setObjectName(QString::fromLatin1(name));
    box->setSuffix(u" mm"_s);
    box->setRange(0, static_cast<int>(most));
    box->setValue(qRound(value));
    form->addRow(text, box);
    return box;
  };
  const QSpinBox* left = add(u"Desde la &izquierda:"_s, "numIzquierda", before.left(), Paper().width());
  const QSpinBox* top = add(u"Desde &arriba:"_s, "numArriba", before.top(), Paper().height());
  const QSpinBox* width = add(u"A&nchura:"_s, "numAnchura", before.width(), Paper().width());
  const QSpinBox* height = add(u"Al&tura:"_s, "numAltura", before.height(), Paper().height());
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  buttons->button(QDialogButtonBox::Ok)->setText(u"Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"Cancelar"_s);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  form->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) {
    return false;
  }
  QSettings().setValue(key, QRectF(left->value(), top->value(), width->value(), height->value()));
  return true;
}

}  // namespace host
