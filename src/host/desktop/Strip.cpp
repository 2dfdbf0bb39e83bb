#include "host/desktop/Strip.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

Strip::Strip(const StripText& content, QWidget* parent)
    : QFrame(parent), m_mayGo(!content.ways.isEmpty() && !content.stays) {
  setObjectName(content.subject);
  setAccessibleName(content.text);
  setAutoFillBackground(true);
  setPalette(StripPalette(content.tone));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* text = new QLabel(content.text, this);
  text->setObjectName(u"stripText"_s);
  text->setTextFormat(Qt::PlainText);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text->setWordWrap(true);
  auto* row = new QHBoxLayout(this);
  const int margin = fontMetrics().height() / 3;
  row->setContentsMargins(margin * 2, margin, margin * 2, margin);
  row->addWidget(text, 1);
  for (const StripText::Way& way : content.ways) {
    auto* button = new QPushButton(way.text, this);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, act = way.act, stays = way.stays] {
      if (!stays) {
        Leave();
      }
      if (act) {
        act();
      }
    });
  }
}

void Strip::keyPressEvent(QKeyEvent* event) {
  if (m_mayGo && event->key() == Qt::Key_Escape) {
    Leave();
    return;
  }
  QFrame::keyPressEvent(event);
}

void Strip::Leave() {
  hide();
  deleteLater();
  Q_EMIT Left();
}

}  // namespace host
