// The letter between the half-points of its document and the pixels of the screen.

#include "letters/editor/LetterEdit.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTextFrame>

namespace letters {

namespace {

QMouseEvent AtHalfPoints(const QMouseEvent& event, double pixelsPerHalfPoint) {
  return QMouseEvent(event.type(), event.position() / pixelsPerHalfPoint, event.scenePosition(), event.globalPosition(),
                     event.button(), event.buttons(), event.modifiers(), event.pointingDevice());
}

}  // namespace

void LetterEdit::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  if (m_underlay) {
    m_underlay(painter, event->rect());
  }
  const double scale = PixelsPerHalfPoint();
  painter.scale(scale, scale);
  Draw(painter, QRectF(QPointF(event->rect().topLeft()) / scale, QSizeF(event->rect().size()) / scale));
}

void LetterEdit::Draw(QPainter& painter, const QRectF& clip) const {
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette = palette();
  context.clip = clip;
  const QTextCursor cursor = textCursor();
  if (cursor.hasSelection()) {
    QAbstractTextDocumentLayout::Selection selection;
    selection.cursor = cursor;
    selection.format.setBackground(palette().brush(QPalette::Highlight));
    selection.format.setForeground(palette().brush(QPalette::HighlightedText));
    context.selections.append(selection);
  }
  if (hasFocus() && m_caretShows) {
    context.cursorPosition = cursor.position();
  }
  document()->documentLayout()->draw(&painter, context);
}

void LetterEdit::PaintBeside(QPainter& painter, Twips reach) const {
  const double scale = PixelsPerHalfPoint();
  const double width = lineWrapColumnOrWidth();
  const QList<QTextFrame*> frames = document()->rootFrame()->childFrames();
  const int beside = ToHalfPoints(reach);
  for (QTextFrame* frame : frames) {
    const QRectF rect = document()->documentLayout()->frameBoundingRect(frame);
    for (const QRectF& side :
         {QRectF(-beside, rect.top(), beside, rect.height()), QRectF(width, rect.top(), beside, rect.height())}) {
      // A line at the edge lies half outside.
      if (side.intersects(rect.adjusted(-1, 0, 1, 0))) {
        painter.save();
        painter.scale(scale, scale);
        // Lines are put on whole pixels, so a line at the edge may lie a pixel outside.
        painter.setClipRect(side.adjusted(0, -2, 0, 2), Qt::IntersectClip);
        // The layout passes over all that lies beside the text, if that is all that is asked for.
        Draw(painter, rect.adjusted(-1, -1, 1, 1));
        painter.restore();
      }
    }
  }
}

void LetterEdit::Repaint(const QRectF& halfPoints) {
  const double scale = PixelsPerHalfPoint();
  const QRectF seen(QPointF(), QSizeF(viewport()->size()) / scale);
  const QRectF changed = halfPoints & seen;
  viewport()->update(QRectF(changed.topLeft() * scale, changed.size() * scale).toAlignedRect().adjusted(-2, -2, 2, 2));
  if (!document()->rootFrame()->childFrames().isEmpty()) {
    Q_EMIT BesideChanged(qFloor(changed.top() * scale) - 2, qCeil(changed.bottom() * scale) + 2);
  }
}

void LetterEdit::ShowCaretNow() {
  m_caretShows = true;
  const int flash = QGuiApplication::styleHints()->cursorFlashTime();
  if (flash > 1 && hasFocus()) {
    m_blink.start(flash / 2, this);
  }
  viewport()->update();
}

void LetterEdit::timerEvent(QTimerEvent* event) {
  if (event->timerId() == m_blink.timerId()) {
    m_caretShows = !m_caretShows;
    viewport()->update(CaretRect().adjusted(-2, -2, 2, 2));
  } else {
    QTextEdit::timerEvent(event);
  }
}

// The fonts of a letter are its own, not those of the desktop.
void LetterEdit::changeEvent(QEvent* event) {
  if (event->type() != QEvent::FontChange && event->type() != QEvent::ApplicationFontChange) {
    QTextEdit::changeEvent(event);
  }
}

QVariant LetterEdit::inputMethodQuery(Qt::InputMethodQuery query) const {
  return query == Qt::ImCursorRectangle ? QVariant(CaretRect()) : QTextEdit::inputMethodQuery(query);
}

void LetterEdit::mousePressEvent(QMouseEvent* event) {
  QMouseEvent scaled = AtHalfPoints(*event, PixelsPerHalfPoint());
  QTextEdit::mousePressEvent(&scaled);
  event->setAccepted(scaled.isAccepted());
}

void LetterEdit::mouseMoveEvent(QMouseEvent* event) {
  QMouseEvent scaled = AtHalfPoints(*event, PixelsPerHalfPoint());
  QTextEdit::mouseMoveEvent(&scaled);
  event->setAccepted(scaled.isAccepted());
}

void LetterEdit::mouseDoubleClickEvent(QMouseEvent* event) {
  QMouseEvent scaled = AtHalfPoints(*event, PixelsPerHalfPoint());
  QTextEdit::mouseDoubleClickEvent(&scaled);
  event->setAccepted(scaled.isAccepted());
}

void LetterEdit::mouseReleaseEvent(QMouseEvent* event) {
  QMouseEvent scaled = AtHalfPoints(*event, PixelsPerHalfPoint());
  QTextEdit::mouseReleaseEvent(&scaled);
  event->setAccepted(scaled.isAccepted());
  if (event->button() == Qt::RightButton) {
    Q_EMIT MenuWanted(event->globalPosition().toPoint());
  }
}

void LetterEdit::dragMoveEvent(QDragMoveEvent* event) {
  QDragMoveEvent scaled((event->position() / PixelsPerHalfPoint()).toPoint(), event->possibleActions(),
                        event->mimeData(), event->buttons(), event->modifiers());
  scaled.setDropAction(event->dropAction());
  QTextEdit::dragMoveEvent(&scaled);
  event->setDropAction(scaled.dropAction());
  event->setAccepted(scaled.isAccepted());
}

void LetterEdit::dropEvent(QDropEvent* event) {
  QDropEvent scaled(event->position() / PixelsPerHalfPoint(), event->possibleActions(), event->mimeData(),
                    event->buttons(), event->modifiers());
  scaled.setDropAction(event->dropAction());
  QTextEdit::dropEvent(&scaled);
  event->setDropAction(scaled.dropAction());
  event->setAccepted(scaled.isAccepted());
}

}  // namespace letters
