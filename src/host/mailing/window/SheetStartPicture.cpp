#include "host/mailing/window/SheetStartPicture.h"

#include <QAccessible>
#include <QAccessibleValueChangeEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// It is a paper: its colours hold in dark themes, too.
constexpr QRgb paper = 0xFFFFFFFF;
constexpr QRgb free = 0xFFDCEBF5;
constexpr QRgb used = 0xFFE3E5E7;
constexpr QRgb first = 0xFF2A6F97;
constexpr QRgb edge = 0xFF7A9BAF;
constexpr QRgb usedEdge = 0xFFB4B8BA;
constexpr QRgb number = 0xFF35566B;
constexpr QRgb focus = 0xFF101418;

QPen Line(QRgb colour, double width = 1, Qt::PenStyle style = Qt::SolidLine) {
  return {QColor(colour), width, style};
}

}  // namespace

SheetStartPicture::SheetStartPicture(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  Tell();
}

void SheetStartPicture::Show(const std::optional<documents::Sheet>& sheet, const documents::SheetStart& start) {
  m_sheet = sheet;
  m_start = start;
  const int totals = sheet ? sheet->totals : 1;
  m_start.first = std::clamp(m_start.first, 1, totals);
  m_start.skipped.removeIf([&](int label) { return label <= m_start.first || label > totals; });
  m_current = m_start.first;
  Tell();
  update();
}

void SheetStartPicture::SetFirst(int label) {
  Show(m_sheet, {label, m_start.skipped});
}

QSize SheetStartPicture::sizeHint() const {
  const documents::Paper& sheet = documents::UsualPaper();
  const int width = 11 * fontMetrics().height();
  return {width, static_cast<int>(width * sheet.height / sheet.width)};
}

QTransform SheetStartPicture::Scale() const {
  const documents::Paper& sheet = documents::UsualPaper();
  const double scale = std::min((width() - 2) / double(sheet.width), (height() - 2) / double(sheet.height));
  return QTransform::fromTranslate(1, 1).scale(scale, scale);
}

int SheetStartPicture::LabelAt(QPointF point) const {
  if (!m_sheet) {
    return 0;
  }
  const std::vector<QRectF> labels = LabelRectangles(*m_sheet);
  const QPointF at = Scale().inverted().map(point);
  const auto found = std::ranges::find_if(labels, [&](const QRectF& label) { return label.contains(at); });
  return found == labels.end() ? 0 : 1 + static_cast<int>(found - labels.begin());
}

void SheetStartPicture::Begin(int label) {
  const documents::SheetStart before = m_start;
  Show(m_sheet, {label, m_start.skipped});
  if (before.first != m_start.first || before.skipped != m_start.skipped) {
    Q_EMIT Changed();
  }
}

// Where the print begins can't be left out.
void SheetStartPicture::Skip(int label) {
  MoveTo(label);
  if (label <= m_start.first) {
    return;
  }
  if (!m_start.skipped.remove(label)) {
    m_start.skipped.insert(label);
  }
  Tell();
  update();
  Q_EMIT Changed();
}

void SheetStartPicture::MoveTo(int label) {
  m_current = std::clamp(label, 1, m_sheet ? m_sheet->totals : 1);
  Tell();
  update();
}

QString SheetStartPicture::TextOf(int label) const {
  if (!m_sheet) {
    return u"Ninguna hoja"_s;
  }
  const QString state = label == m_start.first            ? u"aquí empieza"_s
                        : label < m_start.first           ? u"gastada"_s
                        : m_start.skipped.contains(label) ? u"se salta"_s
                                                          : u"libre"_s;
  return u"Etiqueta %1 de %2, %3"_s.arg(label).arg(m_sheet->totals).arg(state);
}

void SheetStartPicture::Tell() {
  setAccessibleName(TextOf(m_current));
  setAccessibleDescription(u"Intro empieza en esta etiqueta; la barra espaciadora la salta."_s);
  QAccessibleEvent changed(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&changed);
}

void SheetStartPicture::DrawLabel(QPainter& painter, int label, const QRectF& box) const {
  const bool isSkipped = m_start.skipped.contains(label);
  const bool isUsed = label < m_start.first || isSkipped;
  const bool isFirst = label == m_start.first;
  painter.setPen(Line(isUsed ? usedEdge : edge));
  painter.setBrush(QColor(isFirst ? first : isUsed ? used : free));
  painter.drawRect(box);
  if (isUsed) {
    painter.drawLine(box.topLeft(), box.bottomRight());
    if (isSkipped) {
      painter.drawLine(box.topRight(), box.bottomLeft());
    }
    return;
  }
  const QString text = QString::number(label);
  if (fontMetrics().horizontalAdvance(text) < box.width() && fontMetrics().ascent() < box.height()) {
    painter.setPen(isFirst ? QColor(Qt::white) : QColor(number));
    painter.drawText(box, Qt::AlignCenter, text);
  }
}

void SheetStartPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QTransform scale = Scale();
  const documents::Paper& sheet = documents::UsualPaper();
  const QRectF page = scale.mapRect(QRectF(0, 0, sheet.width, sheet.height));
  painter.fillRect(page, QColor(paper));
  painter.setClipRect(page.adjusted(-1, -1, 1, 1));
  int label = 0;
  QRectF current;
  if (m_sheet) {
    for (const QRectF& place : LabelRectangles(*m_sheet)) {
      const QRectF box = scale.mapRect(place);
      DrawLabel(painter, ++label, box);
      current = label == m_current ? box : current;
    }
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(Line(usedEdge));
  painter.drawRect(page);
  if (hasFocus() && !current.isNull()) {
    painter.setPen(Line(focus, 2, Qt::DotLine));
    painter.drawRect(current.adjusted(2, 2, -2, -2));
  }
}

void SheetStartPicture::mousePressEvent(QMouseEvent* event) {
  const int label = LabelAt(event->position());
  if (label == 0 || event->button() != Qt::LeftButton) {
    QWidget::mousePressEvent(event);
  } else if ((event->modifiers() & Qt::ControlModifier) != 0) {
    Skip(label);
  } else {
    Begin(label);
  }
}

void SheetStartPicture::keyPressEvent(QKeyEvent* event) {
  const int perRow = m_sheet ? m_sheet->perRow : 1;
  switch (event->key()) {
    case Qt::Key_Left:
      MoveTo(m_current - 1);
      return;
    case Qt::Key_Right:
      MoveTo(m_current + 1);
      return;
    case Qt::Key_Up:
      MoveTo(m_current > perRow ? m_current - perRow : m_current);
      return;
    case Qt::Key_Down:
      MoveTo(m_current + perRow);
      return;
    case Qt::Key_Home:
      MoveTo(1);
      return;
    case Qt::Key_End:
      MoveTo(m_sheet ? m_sheet->totals : 1);
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Begin(m_current);
      return;
    case Qt::Key_Space:
      Skip(m_current);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void SheetStartPicture::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void SheetStartPicture::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

bool SheetStartPicture::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    auto* help = static_cast<QHelpEvent*>(event);
    const int label = LabelAt(help->pos());
    QToolTip::showText(help->globalPos(), label == 0 ? QString() : TextOf(label), this);
    return true;
  }
  return QWidget::event(event);
}

}  // namespace host
