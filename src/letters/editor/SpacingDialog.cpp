#include "letters/editor/SpacingDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLocale>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

// What RTF can say of a paragraph's room.
constexpr double mostPoints = 1584;
constexpr double pointStep = 6;

// Multiples that are nobody's usual ones, and distances that are no multiple, stay unless another one is chosen.
void FillLines(QComboBox& box, const std::optional<double>& initial) {
  box.addItem(u"Sencillo"_s, 1.0);
  box.addItem(u"1,15 líneas"_s, 1.15);
  box.addItem(u"1,5 líneas"_s, 1.5);
  box.addItem(u"Doble"_s, 2.0);
  const auto isShown = [&](int item) { return initial && qFuzzyCompare(box.itemData(item).toDouble(), *initial); };
  for (int item = 0; item < box.count(); ++item) {
    if (isShown(item)) {
      box.setCurrentIndex(item);
      return;
    }
  }
  if (initial) {
    box.addItem(u"%1 líneas"_s.arg(QLocale(QLocale::Spanish, QLocale::Spain).toString(*initial, 'g', 3)), *initial);
  } else {
    box.addItem(u"Fijo, como está"_s);
  }
  box.setCurrentIndex(box.count() - 1);
}

}  // namespace

SpacingDialog::SpacingDialog(const Spacing& initial, QWidget* parent) : QDialog(parent) {
  setWindowTitle(u"Párrafo"_s);
  auto* rows = new QFormLayout(this);
  m_lines = new QComboBox(this);
  m_lines->setObjectName(u"cboInterlineado"_s);
  FillLines(*m_lines, initial.lines);
  rows->addRow(u"&Interlineado:"_s, m_lines);
  m_before = AddPoints(rows, u"Espacio &anterior:"_s, u"spnAnterior"_s, initial.before);
  m_after = AddPoints(rows, u"Espacio &posterior:"_s, u"spnPosterior"_s, initial.after);
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(u"Aceptar"_s, QDialogButtonBox::AcceptRole);
  buttons->addButton(u"Cancelar"_s, QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addRow(buttons);
}

QDoubleSpinBox* SpacingDialog::AddPoints(QFormLayout* rows, const QString& label, const QString& name, double points) {
  auto* box = new QDoubleSpinBox(this);
  box->setObjectName(name);
  box->setRange(0, mostPoints);
  box->setSingleStep(pointStep);
  box->setDecimals(2);
  box->setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
  box->setSuffix(u" pt"_s);
  box->setValue(points);
  rows->addRow(label, box);
  return box;
}

Spacing SpacingDialog::Chosen() const {
  const QVariant lines = m_lines->currentData();
  return {.lines = lines.isValid() ? std::optional(lines.toDouble()) : std::nullopt,
          .before = m_before->value(),
          .after = m_after->value()};
}

}  // namespace letters
