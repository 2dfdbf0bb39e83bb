#include "host/desktop/Strip.h"

#include "host/look/PlainLabel.h"
#include "platform/text/AsItStands.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype longestText = 600;
constexpr qsizetype longestTip = 4000;

}  // namespace

Strip::Strip(const StripText& content, QWidget* parent)
    : QFrame(parent), m_mayGo(!content.ways.isEmpty() && !content.stays) {
  setObjectName(content.subject);
  setAccessibleName(content.text);
  setAutoFillBackground(true);
  setPalette(StripPalette(content.tone));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  QLabel* text = PlainLabel(content.text, this);
  text->setObjectName(u"stripText"_s);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  if (content.text.size() > longestText) {
    // The list below wants its place; who needs the rest finds it in the tip.
    text->setText(content.text.left(longestText) + u'…');
    text->setToolTip(texts::AsItStands(content.text.left(longestTip)));
  }
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
