#include "taxes/WrappedCheckBox.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTextLayout>

namespace taxes {
namespace {

constexpr int charactersInALine = 60;

}  // namespace

WrappedCheckBox::WrappedCheckBox(QWidget* parent) : QCheckBox(parent) {
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

QSize WrappedCheckBox::sizeHint() const {
  const int width = charactersInALine * fontMetrics().averageCharWidth();
  return {width, heightForWidth(width)};
}

QSize WrappedCheckBox::minimumSizeHint() const {
  return sizeHint();
}

int WrappedCheckBox::heightForWidth(int width) const {
  if (m_measured != text()) {
    m_heights.clear();
    m_measured = text();
  }
  auto known = m_heights.constFind(width);
  if (known == m_heights.constEnd()) {
    known = m_heights.insert(width, MeasuredHeight(width));
  }
  return *known;
}

// With another font or style, for example.
void WrappedCheckBox::changeEvent(QEvent* event) {
  m_heights.clear();
  QCheckBox::changeEvent(event);
}

int WrappedCheckBox::MeasuredHeight(int width) const {
  QStyleOptionButton option;
  initStyleOption(&option);
  const QSize text = fontMetrics().size(Qt::TextShowMnemonic, Wrapped(width));
  return style()->sizeFromContents(QStyle::CT_CheckBox, &option, text, this).height();
}

void WrappedCheckBox::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text = Wrapped(width());
  painter.drawControl(QStyle::CE_CheckBox, option);
}

// The text with breaks between its lines, for a box of that width.
QString WrappedCheckBox::Wrapped(int width) const {
  QStyleOptionButton option;
  initStyleOption(&option);
  option.rect = QRect(0, 0, width, height());
  const int room = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this).width();
  QTextLayout layout(text(), font());
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(room);
    lines.append(text().mid(line.textStart(), line.textLength()).trimmed());
  }
  layout.endLayout();
  return lines.join(u'\n');
}

}  // namespace taxes
