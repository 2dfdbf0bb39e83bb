#include "letters/editor/LetterPage.h"

#include "letters/editor/LetterEdit.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

// As far as scroll bars went before they got a range.
constexpr int widestRange = 32767;

constexpr double zoomStep = 0.1;
constexpr double leastZoom = 0.5;
constexpr double mostZoom = 3.0;

// A notch of the wheel in the units of its events, and the steps that it scrolls.
constexpr int wheelNotch = 120;
constexpr int stepsPerNotch = 3;

// How far tables may reach over the text's sides.
constexpr Twips besideText{567};

constexpr double stripOpacity = 0.5;
const QString stripTip =
    u"El encabezado y el pie se imprimen en cada página. Aquí no se pueden cambiar; se guardan como están."_s;

// The room that stays around the caret.
constexpr Twips aroundCaret{300};

QScrollBar* NewScrollBar(Qt::Orientation orientation, const QString& name, QWidget* parent) {
  auto* bar = new QScrollBar(orientation, parent);
  bar->setObjectName(name);
  bar->setRange(0, widestRange);
  return bar;
}

// White paper with black text; what is selected looks as elsewhere.
QPalette PaperPalette(QPalette palette) {
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, Qt::black);
  return palette;
}

// The value of a bar, from `value`, at which everything from `from` to `to` is seen; all in twips from the range's
// start.
int Showing(int value, Twips from, Twips to, Twips seen) {
  return std::min(std::max(value, to.count - seen.count), from.count);
}

}  // namespace

LetterPage::LetterPage(QWidget* parent)
    : QFrame(parent),
      m_letter(new LetterEdit(this)),
      m_horizontal(NewScrollBar(Qt::Horizontal, u"hsbCarta"_s, this)),
      m_vertical(NewScrollBar(Qt::Vertical, u"vsbCarta"_s, this)) {
  setObjectName(u"picFondo"_s);
  setBackgroundRole(QPalette::Mid);
  setAutoFillBackground(true);
  m_letter->setObjectName(u"rtfCarta"_s);
  m_letter->setAccessibleName(u"Texto de la carta"_s);
  m_letter->setPalette(PaperPalette(palette()));
  connect(m_horizontal, &QScrollBar::valueChanged, this, &LetterPage::MoveSideways);
  connect(m_vertical, &QScrollBar::valueChanged, this, &LetterPage::MoveUpAndDown);
  connect(m_letter, &LetterEdit::HeightChanged, this, &LetterPage::OnHeightChanged);
  connect(m_letter, &LetterEdit::cursorPositionChanged, this, &LetterPage::ShowCaret);
  connect(m_letter, &LetterEdit::textChanged, this, &LetterPage::ShowCaret);
  // The letter's box covers the lower margin, too.
  m_letter->SetUnderlay([this](QPainter& letter, const QRect& part) {
    const int margin = ZoomedScale().Pixels(FromCentimetres(m_margins.bottom));
    if (part.bottom() + m_letter->y() > PaperRect().bottom() - margin) {
      letter.translate(-m_letter->pos());
      PaintStrips(letter);
      letter.translate(m_letter->pos());
    }
  });
  connect(m_letter, &LetterEdit::BesideChanged, this, [this](int top, int bottom) {
    const int beside = ZoomedScale().Pixels(besideText);
    const QRect letter = m_letter->geometry();
    update(letter.left() - beside, letter.top() + top, beside, bottom - top);
    update(letter.right() + 1, letter.top() + top, beside, bottom - top);
  });
  connect(m_letter, &LetterEdit::ZoomWanted, this, &LetterPage::ZoomBy);
}

void LetterPage::Place(const Margins& margins) {
  m_margins = margins;
  m_origin = PlacePage(margins, m_paper);
  m_page = m_origin;
  ShowStrips();
  m_leastRange = firstScroll;
  m_horizontal->setMaximum(std::max(m_horizontal->maximum(), firstScroll.count));
  m_horizontal->setValue(firstScroll.count);
  MoveSideways();
  MoveUpAndDown();
  Q_EMIT MarginsChanged();
}

void LetterPage::SetLeftMargin(const Margins& margins) {
  m_page = WithLeftEdgeMoved(m_page, TextWidth(margins, m_paper));
  SetWidth(m_page.width, margins);
}

void LetterPage::SetRightMargin(const Margins& margins) {
  SetWidth(TextWidth(margins, m_paper), margins);
}

void LetterPage::SetWidth(Twips width, const Margins& margins) {
  m_margins = margins;
  m_page.width = width;
  if (m_strips != nullptr) {
    m_strips->SetMargins(margins);
  }
  PutLetter();
  Fit();
  Q_EMIT MarginsChanged();
}

void LetterPage::OnHeightChanged(Twips height) {
  m_page.height = std::max(m_origin.height, height);
  PutLetter();
  Fit();
}

void LetterPage::PutLetter() {
  const Scale scale = ZoomedScale();
  m_letter->SetTextWidth(m_page.width);
  m_letter->setGeometry(scale.Pixels(m_page.left), scale.Pixels(m_page.top), scale.Pixels(m_page.width),
                        scale.Pixels(m_page.height));
  update();
}

Scale LetterPage::ZoomedScale() const {
  return ScreenScale(logicalDpiX(), m_zoom);
}

void LetterPage::Fit() {
  const int thickness = ScreenScale(logicalDpiX()).Pixels(scrollBarThickness);
  m_vertical->setGeometry(width() - thickness, 0, thickness, height() - thickness);
  m_horizontal->setGeometry(0, height() - thickness, width() - thickness, thickness);
  const Scale scale = ZoomedScale();
  const Twips seenWidth = scale.FromPixels(width());
  const Twips seenHeight = scale.FromPixels(height());
  m_horizontal->setMaximum(std::max(ScrollRange(m_page.width, m_origin.left, seenWidth), m_leastRange).count);
  m_vertical->setMaximum(ScrollRange(m_page.height, m_origin.top, seenHeight).count);
  m_horizontal->setPageStep(std::max(1, seenWidth.count));
  m_vertical->setPageStep(std::max(1, seenHeight.count));
  m_horizontal->setSingleStep(scrollBarThickness.count);
  m_vertical->setSingleStep(scrollBarThickness.count);
  m_letter->SetPageStep(scale.FromPixels(height() - 2 * thickness));
}

// Intended: the place that is counted from is that of the load, whatever the margins became since.
void LetterPage::MoveSideways() {
  m_page.left = m_origin.left - Twips{m_horizontal->value()};
  PutLetter();
}

void LetterPage::MoveUpAndDown() {
  m_page.top = m_origin.top - Twips{m_vertical->value()};
  PutLetter();
}

void LetterPage::ShowCaret() {
  if (!isVisible()) {
    return;
  }
  const QRect caret = m_letter->CaretRect().translated(m_letter->pos());
  const Scale scale = ZoomedScale();
  const int thickness = m_vertical->width();
  const auto show = [&](QScrollBar* bar, int from, int to, int seen) {
    const Twips start = scale.FromPixels(from) + Twips{bar->value()} - aroundCaret;
    const Twips end = scale.FromPixels(to) + Twips{bar->value()} + aroundCaret;
    bar->setValue(Showing(bar->value(), start, end, scale.FromPixels(seen)));
  };
  show(m_vertical, caret.top(), caret.bottom(), height() - thickness);
  show(m_horizontal, caret.left(), caret.right(), width() - thickness);
}

void LetterPage::ZoomBy(int steps) {
  const double zoom = std::clamp(std::round(m_zoom / zoomStep + steps) * zoomStep, leastZoom, mostZoom);
  if (zoom == m_zoom) {
    return;
  }
  m_zoom = zoom;
  m_letter->SetScale(ZoomedScale());
  PutLetter();
  Fit();
  Q_EMIT ZoomChanged();
}

QRect LetterPage::PaperRect() const {
  const Scale scale = ZoomedScale();
  const int left = scale.Pixels(FromCentimetres(m_margins.left));
  const int right = scale.Pixels(FromCentimetres(m_margins.right));
  const int top = scale.Pixels(FromCentimetres(m_margins.top));
  const int bottom = scale.Pixels(FromCentimetres(m_margins.bottom));
  const QRect text = m_letter->geometry().adjusted(-left, -top, right, bottom);
  return QRect(text.topLeft(), QSize(text.width(), text.height() - top).expandedTo(QSize(0, 0)));
}

void LetterPage::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Shadow));
  painter.setBrush(Qt::white);
  painter.drawRect(PaperRect().adjusted(-1, -1, 0, 0));
  painter.translate(m_letter->pos());
  m_letter->PaintBeside(painter, besideText);
  painter.translate(-m_letter->pos());
  PaintStrips(painter);
}

void LetterPage::ShowStrips() {
  m_strips = std::make_unique<documents::LetterStrips>(*m_letter->document(), m_margins, m_paper);
  if (m_strips->IsEmpty()) {
    m_strips.reset();
  }
}

void LetterPage::PaintStrips(QPainter& painter) const {
  if (m_strips == nullptr) {
    return;
  }
  const QRect paper = PaperRect();
  const double scale = ZoomedScale().pixelsPerTwip * documents::FromHalfPoints(1).count;
  painter.save();
  painter.translate(paper.topLeft());
  painter.scale(scale, scale);
  painter.setOpacity(stripOpacity);
  m_strips->Paint(painter, 0, 1, paper.height() / scale);
  painter.restore();
}

bool LetterPage::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const QRect sheet = PaperRect();
    const int foot = sheet.bottom() - ZoomedScale().Pixels(FromCentimetres(m_margins.bottom));
    const bool isStrip = m_strips != nullptr && sheet.contains(help->pos()) &&
                         (help->pos().y() < m_letter->y() || help->pos().y() > foot);
    QToolTip::showText(help->globalPos(), isStrip ? stripTip : QString(), this);
    return true;
  }
  return QFrame::event(event);
}

void LetterPage::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  // Becoming the maximised window is still part of the load.
  if (isVisible() && !window()->isMaximized()) {
    m_leastRange = {};
  }
  Fit();
}

void LetterPage::wheelEvent(QWheelEvent* event) {
  const bool sideways = (event->modifiers() & Qt::ShiftModifier) != 0 || event->angleDelta().y() == 0;
  QScrollBar* bar = sideways ? m_horizontal : m_vertical;
  const int turned = event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
  bar->setValue(bar->value() - turned * stepsPerNotch * bar->singleStep() / wheelNotch);
  event->accept();
}

}  // namespace letters
