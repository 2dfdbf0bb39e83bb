#include "labels/UpDown.h"

#include "labels/SheetRules.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace labels {

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(MakeButton(Qt::UpArrow, u"Aumentar"_s, 1));
  layout->addWidget(MakeButton(Qt::DownArrow, u"Disminuir"_s, -1));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QToolButton* UpDown::MakeButton(Qt::ArrowType arrow, const QString& name, int direction) {
  auto* button = new QToolButton(this);
  button->setArrowType(arrow);
  button->setAccessibleName(name);
  button->setAutoRepeat(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  connect(button, &QToolButton::clicked, this, [this, button, direction] { Press(button, direction); });
  return button;
}

void UpDown::Bind(QLineEdit* box) {
  m_box = box;
  box->installEventFilter(this);
  setFixedSize(box->fontMetrics().height(), box->sizeHint().height());
}

void UpDown::SetBounds(documents::Limits bounds) {
  m_min = bounds.min;
  m_max = bounds.max;
}

void UpDown::Press(QToolButton* button, int direction) {
  m_box->setFocus(Qt::OtherFocusReason);
  Step(direction);
  // A message that came up swallowed the release of the mouse; the button must not go on stepping.
  if (!(QApplication::mouseButtons() & Qt::LeftButton)) {
    button->setDown(false);
  }
}

void UpDown::Step(int direction) {
  const std::optional<automation::Currency> number = BoundedNumber(m_box->text());
  if (!number) {
    return;
  }
  const double value = number->ToDouble();
  const double next = direction > 0 ? std::floor(value) + 1 : std::ceil(value) - 1;
  m_box->setText(QString::number(static_cast<int>(std::clamp(next, double(m_min), double(m_max)))));
  m_box->selectAll();
  Q_EMIT Clicked();
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_box && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isPlain = !(key->modifiers() & ~Qt::KeypadModifier);
    if (isPlain && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
      Step(key->key() == Qt::Key_Up ? 1 : -1);
      return true;
    }
  } else if (watched == m_box && event->type() == QEvent::Wheel && m_box->hasFocus()) {
    Turn(static_cast<QWheelEvent*>(event));
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void UpDown::wheelEvent(QWheelEvent* event) {
  if (m_box != nullptr && m_box->hasFocus()) {
    Turn(event);
  } else {
    event->ignore();
  }
}

// Fine wheels report parts of a notch.
void UpDown::Turn(QWheelEvent* event) {
  m_turned += event->angleDelta().y();
  while (std::abs(m_turned) >= QWheelEvent::DefaultDeltasPerStep) {
    const int direction = m_turned > 0 ? 1 : -1;
    m_turned -= direction * QWheelEvent::DefaultDeltasPerStep;
    Step(direction);
  }
  event->accept();
}

}  // namespace labels
