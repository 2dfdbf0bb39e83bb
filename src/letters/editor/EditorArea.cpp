#include "letters/editor/EditorArea.h"

#include "letters/editor/LetterPage.h"

#include <QToolBar>

#include <algorithm>

namespace letters {

namespace {

constexpr Twips usualWidth{13500};
constexpr Twips usualHeight{11000};
// What the strip needs, which is more than the page does where texts are large.
constexpr int stripCharacters = 72;

}  // namespace

EditorArea::EditorArea(QWidget* parent) : QWidget(parent) {}

void EditorArea::SetParts(const QList<QToolBar*>& bars, LetterPage* ground, QWidget* strip) {
  m_bars = bars;
  m_ground = ground;
  m_strip = strip;
}

QSize EditorArea::sizeHint() const {
  const Scale scale = ScreenScale(logicalDpiX());
  const int strip = stripCharacters * fontMetrics().horizontalAdvance(u'0');
  return {std::max(scale.Pixels(usualWidth), strip), scale.Pixels(usualHeight)};
}

void EditorArea::Arrange() {
  if (m_ground == nullptr || window()->isMinimized()) {
    return;
  }
  int bottom = 0;
  for (QToolBar* bar : std::as_const(m_bars)) {
    if (!bar->isHidden()) {
      bar->setGeometry(0, bottom, width(), bar->sizeHint().height());
      bottom += bar->height();
    }
  }
  const Scale scale = ScreenScale(logicalDpiX());
  const Ground ground = PlaceGround(scale.FromPixels(width()), scale.FromPixels(height()), scale.FromPixels(bottom));
  m_ground->setGeometry(0, scale.Pixels(ground.top), scale.Pixels(ground.width), scale.Pixels(ground.height));
  const int below = m_ground->geometry().bottom() + 1;
  // In a narrow window its last parts have no room, rather than all of them being pressed into each other.
  m_strip->setGeometry(0, below, std::max(width(), m_strip->minimumSizeHint().width()), height() - below);
  m_ground->Fit();
}

void EditorArea::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}

}  // namespace letters
