#pragma once

#include "documents/rtf/Styles.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace rtf {

/// A line of a cell or row: no line where it is 0 wide. Lengths are twips.
struct BorderLine {
  enum class Kind : std::uint8_t { Single, Double, Dots, Dashes };

  int width = 0;
  Kind kind = Kind::Single;
  int colour = automaticColour;

  bool operator==(const BorderLine&) const = default;
};

enum Side : std::uint8_t { Top, Bottom, Left, Right };
constexpr int sides = 4;

/// What a row's definition says of one of its cells.
struct CellShape {
  int right = 0;             ///< `\cellx`, from the column's edge.
  bool beginsRow = false;    ///< `\clmgf`: the next cells with `goesOnInRow` are part of it.
  bool goesOnInRow = false;  ///< `\clmrg`
  bool goesOnBelow = false;  ///< `\clvmrg`: part of the cell above.
  std::array<BorderLine, sides> borders;
  std::array<int, sides> padding{};
  int shading = automaticColour;
  enum class Place : std::uint8_t { Top, Middle, Bottom } place = Place::Top;
};

/// A row's definition (`\trowd` to `\cellx`) taken apart.
/// Source: Rich Text Format Specification 1.9.1, "Table Definitions".
struct RowShape {
  int left = 0;  ///< `\trleft`
  Alignment alignment = Alignment::Left;
  bool isHeader = false;  ///< `\trhdr`
  QList<CellShape> cells;
};

/// Narrower cells are none.
inline constexpr int narrowestCell = 30;

/// None for a definition that no table can have: no `\cellx`, or edges that go back.
std::optional<RowShape> ShapeOf(const QString& definition);

/// A definition's words, cell by cell: the row's own, and each cell's up to its `\cellx`, which is left out.
struct DefinitionParts {
  QString row;
  QStringList cells;
};
DefinitionParts PartsOf(const QString& definition);
/// How many cells it defines.
int CellsOf(const QString& definition);

}  // namespace rtf
