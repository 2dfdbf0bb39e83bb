#include "documents/rtf/CellFormat.h"

#include "documents/rtf/ParagraphFormat.h"
#include "documents/rtf/Properties.h"

#include <QBrush>
#include <QTextLength>

namespace rtf {

namespace {

QTextFrameFormat::BorderStyle StyleOf(BorderLine::Kind kind) {
  switch (kind) {
    case BorderLine::Kind::Double:
      return QTextFrameFormat::BorderStyle_Double;
    case BorderLine::Kind::Dots:
      return QTextFrameFormat::BorderStyle_Dotted;
    case BorderLine::Kind::Dashes:
      return QTextFrameFormat::BorderStyle_Dashed;
    default:
      return QTextFrameFormat::BorderStyle_Solid;
  }
}

QColor ColourOf(int colour) {
  return colour == automaticColour ? QColor(Qt::black) : QColor::fromRgb(static_cast<QRgb>(colour));
}

void SetBorders(QTextTableCellFormat& format, const CellShape& shape) {
  constexpr int border[] = {QTextFormat::TableCellTopBorder, QTextFormat::TableCellBottomBorder,
                            QTextFormat::TableCellLeftBorder, QTextFormat::TableCellRightBorder};
  constexpr int style[] = {QTextFormat::TableCellTopBorderStyle, QTextFormat::TableCellBottomBorderStyle,
                           QTextFormat::TableCellLeftBorderStyle, QTextFormat::TableCellRightBorderStyle};
  constexpr int brush[] = {QTextFormat::TableCellTopBorderBrush, QTextFormat::TableCellBottomBorderBrush,
                           QTextFormat::TableCellLeftBorderBrush, QTextFormat::TableCellRightBorderBrush};
  constexpr int padding[] = {QTextFormat::TableCellTopPadding, QTextFormat::TableCellBottomPadding,
                             QTextFormat::TableCellLeftPadding, QTextFormat::TableCellRightPadding};
  for (int side = 0; side < sides; ++side) {
    const BorderLine& line = shape.borders[side];
    if (line.width > 0) {
      format.setProperty(border[side], line.width / twipsPerPixel);
      format.setProperty(style[side], int(StyleOf(line.kind)));
      format.setProperty(brush[side], QBrush(ColourOf(line.colour)));
    }
    if (shape.padding[side] > 0) {
      format.setProperty(padding[side], shape.padding[side] / twipsPerPixel);
    }
  }
}

void SetPlace(QTextTableCellFormat& format, CellShape::Place place) {
  if (place == CellShape::Place::Top) {
    return;
  }
  format.setProperty(MarkAlignmentProperty, int(format.verticalAlignment()));
  format.setVerticalAlignment(place == CellShape::Place::Middle ? QTextCharFormat::AlignMiddle
                                                                : QTextCharFormat::AlignBottom);
}

/// Qt tells formats apart by a hash of their numbers and texts.
QString NameOf(const EmptyCells& cells) {
  size_t hash = 0;
  for (const EmptyCell& cell : cells) {
    hash = qHashMulti(hash, cell.row, cell.cell);
    for (const QTextFormat& format : {QTextFormat(cell.format), QTextFormat(cell.mark)}) {
      const QMap<int, QVariant> properties = format.properties();
      for (auto it = properties.begin(); it != properties.end(); ++it) {
        hash = qHashMulti(hash, it.key(), it.value().toString());
      }
    }
  }
  return QString::number(hash, 16);
}

}  // namespace

QTextTableFormat TableFormat(const Grid& grid, Alignment alignment) {
  QTextTableFormat format;
  format.setBorder(0);
  format.setCellSpacing(0);
  format.setCellPadding(0);
  format.setBorderCollapse(true);
  QList<QTextLength> widths;
  for (qsizetype i = 1; i < grid.edges.size(); ++i) {
    widths.append(QTextLength(QTextLength::FixedLength, (grid.edges[i] - grid.edges[i - 1]) / twipsPerPixel));
  }
  format.setColumnWidthConstraints(widths);
  if (grid.headerRows > 0) {
    format.setHeaderRowCount(grid.headerRows);
  }
  if (alignment == Alignment::Centre || alignment == Alignment::Right) {
    format.setAlignment(alignment == Alignment::Centre ? Qt::AlignHCenter : Qt::AlignRight);
  } else {
    format.setLeftMargin(grid.edges.first() / twipsPerPixel);
  }
  return format;
}

QTextCharFormat CellFormat(const QTextCharFormat& mark, const CellLook& look) {
  QTextTableCellFormat format = mark.toTableCellFormat();
  format.setProperty(RowDefinitionProperty, look.definition);
  format.setProperty(CellNumberProperty, look.number);
  if (look.shape.shading != automaticColour) {
    format.setProperty(ShadingProperty, look.shape.shading);
    format.setBackground(ColourOf(look.shape.shading));
  }
  SetBorders(format, look.shape);
  SetPlace(format, look.shape.place);
  if (!look.empty.isEmpty()) {
    format.setProperty(EmptyCellsNameProperty, NameOf(look.empty));
    format.setProperty(EmptyCellsProperty, QVariant::fromValue(look.empty));
  }
  return format;
}

QTextCharFormat WithoutCell(QTextCharFormat format) {
  if (format.hasProperty(ShadingProperty)) {
    const auto shading = static_cast<QRgb>(format.intProperty(ShadingProperty));
    if (format.background() == QBrush(QColor::fromRgb(shading))) {
      format.clearBackground();
    }
    if (const int own = format.intProperty(BackgroundProperty);
        format.hasProperty(BackgroundProperty) && !format.hasProperty(QTextFormat::BackgroundBrush)) {
      format.setBackground(QColor::fromRgb(static_cast<QRgb>(own & 0xFFFFFF)));
    }
  }
  if (format.hasProperty(MarkAlignmentProperty)) {
    format.setVerticalAlignment(QTextCharFormat::VerticalAlignment(format.intProperty(MarkAlignmentProperty)));
  }
  return format;
}

}  // namespace rtf
