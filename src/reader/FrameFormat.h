#pragma once

/// What kel-lector writes to its output, a pipe: frames, each a letter, the length of the rest as 32 bits, and the
/// rest. Numbers are little-endian, texts UTF-8 behind their length as 32 bits.
namespace reader {

enum class Frame : char {
  File = 'V',   ///< Text: the kind of file ("mdb", "accdb", "ods", "xlsx"). The first frame.
  Table = 'T',  ///< Text: name; 32 bits: rows that the file says it has, noCount where it does not say; 16 bits: number
                ///< of columns, 0 in a spreadsheet; for each its name as a text and its kind, a Cell's letter.
  Row = 'R',    ///< For each cell a Cell's letter and, where it has one, its value as a text.
  TableEnd = 'E',    ///< 32 bits: rows that were written.
  Linked = 'L',      ///< Text: name of a table that is in another file.
  Unreadable = 'X',  ///< Text: name of a table whose definition can't be read.
  Protected = 'P',   ///< Nothing: the file is encrypted.
  Other = 'O',       ///< Nothing: an archive, but no spreadsheet.
  End = 'Z',         ///< Nothing: all was read. Without it the reading failed.
};

constexpr unsigned noCount = 0xFFFFFFFF;

/// What a cell holds. Numbers are decimal, with a point; dates yyyy-mm-dd, with Thh:mm:ss behind where there is a time;
/// Booleans -1 or 0.
enum class Cell : char {
  None = '-',  ///< Without a value.
  Text = 't',
  Number = 'n',
  Date = 'd',
  Boolean = 'b',
  Unreadable = '!',  ///< There is something that can't be read.
  Error = 'e',       ///< A sheet shows an error there, or the file has a formula without its value.
  Foreign = '?',     ///< Only of columns: a kind that is not read at all; its cells are None.
};

constexpr bool HasValue(Cell kind) {
  return kind != Cell::None && kind != Cell::Unreadable && kind != Cell::Error;
}

/// What a table or a spreadsheet may have.
constexpr int mostColumns = 256;

}  // namespace reader
