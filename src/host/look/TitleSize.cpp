#include "host/look/TitleSize.h"

#include <QEvent>

namespace host {

QFont Enlarged(QFont font, double times) {
  if (font.pointSizeF() > 0) {
    font.setPointSizeF(font.pointSizeF() * times);
  } else {
    font.setPixelSize(qRound(font.pixelSize() * times));
  }
  return font;
}

TitleSize::TitleSize(QWidget& title, double times) : QObject(&title), m_title(title), m_times(times) {
  Dress(*title.parentWidget());
  title.parentWidget()->installEventFilter(this);
}

bool TitleSize::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    Dress(*static_cast<QWidget*>(watched));
  }
  return QObject::eventFilter(watched, event);
}

void TitleSize::Dress(const QWidget& around) {
  QFont font = Enlarged(around.font(), m_times);
  font.setBold(true);
  m_title.setFont(font);
}

}  // namespace host
