#pragma once

#include "documents/Export.h"
#include "documents/letter/Paper.h"
#include "platform/automation/Conversion.h"

#include <QRectF>

#include <array>
#include <optional>
#include <vector>

namespace adodb {
class Recordset;
}

/// A sheet of labels on its paper.
namespace documents {

/// What describes a sheet: two counts, and lengths in centimetres.
enum class SheetNumber { Totals, PerRow, Width, Height, HorizontalGap, VerticalGap, Left, Top };
inline constexpr std::size_t sheetNumberCount = 8;

/// What a number may be.
struct Limits {
  int min = 0;
  int max = 0;
};

/// The column of ETIQUETAS that holds the number.
KELDOCUMENTOS_EXPORT QString ColumnOf(SheetNumber number);
/// The bounds within which a sheet is described.
KELDOCUMENTOS_EXPORT Limits BoundsOf(SheetNumber number);
inline constexpr int mostRows = 10;

/// A sheet that can be drawn: both counts are at least 1, no length is negative.
struct Sheet {
  int totals = 1;
  int perRow = 1;
  Micrometres width = 0;
  Micrometres height = 0;
  Micrometres horizontalGap = 0;
  Micrometres verticalGap = 0;
  Micrometres left = 0;
  Micrometres top = 0;

  bool operator==(const Sheet&) const = default;
};

/// The numbers of a sheet in the order of their enumeration.
using SheetNumbers = std::array<std::optional<automation::Currency>, sheetNumberCount>;

/// The sheet of these numbers; nothing while one is missing or can't be drawn. Decimals of a count don't count. The
/// bounds are not asked: a sheet outside them can be drawn.
KELDOCUMENTOS_EXPORT std::optional<Sheet> MakeSheet(const SheetNumbers& numbers);
/// The sheet of the current row of ETIQUETAS, by the names of its columns. Raises what the row raises.
KELDOCUMENTOS_EXPORT std::optional<Sheet> ReadSheet(adodb::Recordset& row);

/// One rectangle per label, row by row from the upper left, in micrometres from the paper's upper left corner.
KELDOCUMENTOS_EXPORT std::vector<QRectF> LabelRectangles(const Sheet& sheet);

/// Where the last column and the last row end.
KELDOCUMENTOS_EXPORT Micrometres UsedWidth(const Sheet& sheet);
KELDOCUMENTOS_EXPORT Micrometres UsedHeight(const Sheet& sheet);
KELDOCUMENTOS_EXPORT bool Fits(const Sheet& sheet, const Paper& paper);

}  // namespace documents
