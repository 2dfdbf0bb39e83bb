#pragma once

#include <QRectF>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

/// A sheet of labels on its paper.
namespace labels {

/// A ten-thousandth of a centimetre: what a fixed-point measure holds exactly, so that ten labels of 2,97 cm fill a
/// page of 29,7 cm and don't exceed it.
using Micrometres = qint64;

/// The paper: A4.
inline constexpr Micrometres pageWidth = 210000;
inline constexpr Micrometres pageHeight = 297000;

/// The boxes of measures, in the order of their control array.
enum MeasureBox : std::size_t { Width, Height, HorizontalGap, VerticalGap, Left, Top, MeasureBoxes };

/// A sheet that can be drawn: both counts are at least 1, no measure is negative.
struct SheetMeasures {
  int totals = 1;
  int perRow = 1;
  std::array<Micrometres, MeasureBoxes> measures = {};
};

/// The sheet that the texts of the boxes mean; nothing while one is missing or is no number. No error.
std::optional<SheetMeasures> ReadSheet(const QString& totals, const QString& perRow,
                                       const std::array<QString, MeasureBoxes>& measures);

/// One rectangle per label, row by row from the upper left, in micrometres from the paper's upper left corner.
std::vector<QRectF> LabelRectangles(const SheetMeasures& sheet);

/// Where the last column and the last row end.
Micrometres UsedWidth(const SheetMeasures& sheet);
Micrometres UsedHeight(const SheetMeasures& sheet);
bool FitsPage(const SheetMeasures& sheet);

/// Says in words whether the sheet fits its paper, and what is too much.
QString FitText(const std::optional<SheetMeasures>& sheet);

}  // namespace labels
