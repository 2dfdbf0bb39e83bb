#include "host/access/PasswordLine.h"

#include <QAccessible>
#include <QAction>
#include <QIcon>
#include <QLayout>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// For a desktop that has no icons: what looks.
QIcon DrawnEye(const QColor& colour) {
  constexpr int size = 32;
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 3));
  painter.drawEllipse(QRectF(2, 8, 28, 16));
  painter.setBrush(colour);
  painter.drawEllipse(QPointF(16, 16), 3, 3);
  painter.end();
  return picture;
}

}  // namespace

PasswordLine::PasswordLine(const QString& name, QWidget* parent) : QLineEdit(parent) {
  constexpr int longest = 10'000;
  setObjectName(name);
  setMaxLength(longest);
  setEchoMode(Password);
  setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhSensitiveData);
  QAction* show =
      addAction(QIcon::fromTheme(u"password-show-on"_s, DrawnEye(palette().color(QPalette::Text))), TrailingPosition);
  show->setCheckable(true);
  show->setText(u"Mostrar la contraseña"_s);
  show->setToolTip(show->text());
  connect(show, &QAction::toggled, this, [this](bool isShown) { setEchoMode(isShown ? Normal : Password); });
}

AlertLabel::AlertLabel(QWidget* parent) : QLabel(parent) {
  setObjectName(u"alert"_s);
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setAutoFillBackground(true);
  // Black on this stands out of light and dark colours.
  setPalette(QPalette(Qt::white, QColor(0xFF, 0xD8, 0x73)));
  setMargin(fontMetrics().height() / 2);
  hide();
}

// A layout by itself squeezes what is there.
void AlertLabel::MakeRoom() {
  QLayout* layout = window()->layout();
  if (layout == nullptr) {
    return;
  }
  layout->activate();
  const QSize size = window()->size();
  const int wanted =
      layout->hasHeightForWidth() ? layout->totalHeightForWidth(size.width()) : layout->totalSizeHint().height();
  window()->resize(size.width(), std::max(size.height(), wanted));
}

void AlertLabel::Say(const QString& text) {
  setText(text);
  setVisible(!text.isEmpty());
  if (!text.isEmpty()) {
    MakeRoom();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
  }
}

}  // namespace host
