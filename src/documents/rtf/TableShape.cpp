#include "documents/rtf/TableShape.h"

#include <algorithm>
#include <utility>

namespace rtf {

namespace {

// Of a line that doesn't say how wide it is: three quarters of a point.
constexpr int usualLine = 15;
constexpr int widestLine = 240;
constexpr int widestPadding = 2880;

struct Line {
  BorderLine line;
  bool isSaid = false;
  bool isNone = true;
  bool hasWidth = false;
};

/// The widths of a row's or cell's inner margins with their units; only twips (3) count.
struct Padding {
  int width = -1;
  int unit = 3;
};

class Reading {
 public:
  std::optional<RowShape> Read(const QString& definition) {
    for (const CarriedWord& word : WordsFromText(definition)) {
      const Keyword& keyword = KeywordOf(word.word);
      const std::string_view name = keyword.name;
      if (keyword.action == Action::BorderAttribute) {
        ApplyBorder(name, word.parameter);
      } else if (name == "cellx") {
        EndCell(word.parameter);
      } else if (name.starts_with("cl")) {
        ApplyCell(name.substr(2), word.parameter);
      } else {
        ApplyRow(name, word.parameter);
      }
    }
    return Finish();
  }

 private:
  struct Cell {
    CellShape shape;
    std::array<Line, sides> lines;
    std::array<Padding, sides> padding;
    int back = automaticColour;
    int fore = automaticColour;
    int pattern = 0;  ///< Hundredths of a percent of the foreground.
  };

  static int SideOf(char letter) {
    constexpr std::string_view letters = "tblr";
    return static_cast<int>(letters.find(letter));
  }

  void ApplyBorder(std::string_view name, int parameter) {
    if (m_line == nullptr) {
      return;
    }
    if (name == "brdrw") {
      m_line->line.width = std::clamp(parameter, 0, widestLine);
      m_line->hasWidth = true;
    } else if (name == "brdrcf") {
      m_line->line.colour = parameter;
    } else if (name == "brdrnone" || name == "brdrnil") {
      m_line->isNone = true;
    } else if (name != "brsp" && name != "brdrart") {
      m_line->isNone = false;
      m_line->line.kind = KindOf(name);
    }
  }

  static BorderLine::Kind KindOf(std::string_view name) {
    if (name == "brdrdb" || name == "brdrtriple") {
      return BorderLine::Kind::Double;
    }
    if (name == "brdrdot") {
      return BorderLine::Kind::Dots;
    }
    return name.starts_with("brdrdash") ? BorderLine::Kind::Dashes : BorderLine::Kind::Single;
  }

  static Line* Begin(Line& line) {
    line = {.line = {}, .isSaid = true};
    return &line;
  }

  void ApplyCell(std::string_view name, int parameter) {
    m_line = nullptr;
    CellShape& shape = m_cell.shape;
    if (name.size() == 5 && name.starts_with("brdr")) {
      m_line = Begin(m_cell.lines[SideOf(name.back())]);
    } else if (name.starts_with("padf") && name.size() == 5) {
      m_cell.padding[Swapped(SideOf(name.back()))].unit = parameter;
    } else if (name.starts_with("pad") && name.size() == 4) {
      m_cell.padding[Swapped(SideOf(name.back()))].width = parameter;
    } else if (name == "mgf") {
      shape.beginsRow = true;
    } else if (name == "mrg") {
      shape.goesOnInRow = true;
    } else if (name == "vmrg") {
      shape.goesOnBelow = true;
    } else if (name == "vertalc") {
      shape.place = CellShape::Place::Middle;
    } else if (name == "vertalb") {
      shape.place = CellShape::Place::Bottom;
    } else if (name == "cbpat") {
      m_cell.back = parameter;
    } else if (name == "cfpat") {
      m_cell.fore = parameter;
    } else if (name == "shdng") {
      m_cell.pattern = std::clamp(parameter, 0, 10'000);
    }
  }

  /// What is named after the top is the left one's in all that word processors write, and the other way round.
  static int Swapped(int side) { return side == Top ? Left : (side == Left ? Top : side); }

  void ApplyRow(std::string_view name, int parameter) {
    m_line = nullptr;
    if (name == "trleft") {
      m_row.left = std::clamp(parameter, -largestTwips, largestTwips);
    } else if (name == "trgaph") {
      m_gap = std::clamp(parameter, 0, widestPadding);
    } else if (name == "trqc") {
      m_row.alignment = Alignment::Centre;
    } else if (name == "trqr") {
      m_row.alignment = Alignment::Right;
    } else if (name == "trhdr") {
      m_row.isHeader = true;
    } else if (name.starts_with("trpaddf")) {
      m_padding[SideOf(name.back())].unit = parameter;
    } else if (name.starts_with("trpadd")) {
      m_padding[SideOf(name.back())].width = parameter;
    } else if (name == "trbrdrh") {
      m_line = Begin(m_betweenRows);
    } else if (name == "trbrdrv") {
      m_line = Begin(m_betweenCells);
    } else if (name.starts_with("trbrdr")) {
      m_line = Begin(m_lines[SideOf(name.back())]);
    }
  }

  void EndCell(int right) {
    m_line = nullptr;
    m_cell.shape.right = right;
    m_cells.append(std::exchange(m_cell, {}));
  }

  std::optional<RowShape> Finish() {
    int edge = m_row.left;
    for (const Cell& cell : m_cells) {
      if (cell.shape.right < edge + narrowestCell || cell.shape.right > largestTwips) {
        return std::nullopt;
      }
      edge = cell.shape.right;
    }
    for (qsizetype i = 0; i < m_cells.size(); ++i) {
      Cell& cell = m_cells[i];
      for (int side = 0; side < sides; ++side) {
        cell.shape.borders[side] = Shown(cell.lines[side].isSaid ? cell.lines[side] : RowLine(side, i));
        cell.shape.padding[side] = PaddingOf(cell, side);
      }
      cell.shape.shading = Shading(cell);
      m_row.cells.append(cell.shape);
    }
    return m_cells.isEmpty() ? std::nullopt : std::optional(m_row);
  }

  /// The row's line at that side of a cell. Between rows the lower one's upper line is as good as the other's lower
  /// one.
  const Line& RowLine(int side, qsizetype cell) const {
    if ((side == Left && cell > 0) || (side == Right && cell + 1 < m_cells.size())) {
      return m_betweenCells;
    }
    return side == Top && m_betweenRows.isSaid && !m_lines[Top].isSaid ? m_betweenRows : m_lines[side];
  }

  static BorderLine Shown(const Line& line) {
    BorderLine shown = line.line;
    shown.width = line.isNone ? 0 : (line.hasWidth ? std::max(1, shown.width) : usualLine);
    return shown;
  }

  int PaddingOf(const Cell& cell, int side) const {
    for (const Padding& padding : {cell.padding[side], m_padding[side]}) {
      if (padding.width >= 0 && padding.unit == 3) {
        return std::min(padding.width, widestPadding);
      }
    }
    return side == Left || side == Right ? m_gap : 0;
  }

  static int Shading(const Cell& cell) {
    if (cell.pattern == 0) {
      return cell.back;
    }
    const int fore = cell.fore == automaticColour ? 0 : cell.fore;
    const int back = cell.back == automaticColour ? 0xFFFFFF : cell.back;
    int mixed = 0;
    for (int shift = 16; shift >= 0; shift -= 8) {
      const int sum = ((fore >> shift) & 0xFF) * cell.pattern + ((back >> shift) & 0xFF) * (10'000 - cell.pattern);
      mixed = (mixed << 8) | (sum / 10'000);
    }
    return mixed;
  }

  RowShape m_row;
  QList<Cell> m_cells;
  Cell m_cell;
  Line* m_line = nullptr;
  std::array<Line, sides> m_lines;
  Line m_betweenRows;
  Line m_betweenCells;
  std::array<Padding, sides> m_padding;
  int m_gap = 0;
};

}  // namespace

std::optional<RowShape> ShapeOf(const QString& definition) {
  return Reading().Read(definition);
}

DefinitionParts PartsOf(const QString& definition) {
  DefinitionParts parts;
  QList<CarriedWord> row;
  QList<CarriedWord> cell;
  bool ofCell = false;
  for (const CarriedWord& word : WordsFromText(definition)) {
    const Keyword& keyword = KeywordOf(word.word);
    if (keyword.name == "cellx") {
      parts.cells.append(ToText(std::exchange(cell, {})));
      continue;
    }
    if (keyword.action != Action::BorderAttribute) {
      ofCell = keyword.name.starts_with("cl");
    }
    (ofCell ? cell : row).append(word);
  }
  parts.row = ToText(row);
  return parts;
}

int CellsOf(const QString& definition) {
  return static_cast<int>(definition.count(QLatin1StringView("\\cellx")));
}

}  // namespace rtf
