#pragma once

#include "reader/FrameWriter.h"

namespace reader {

/// The cells of a spreadsheet on their way into frames: what is empty at the end of a row or a sheet is left out,
/// however often it is said to be repeated. Every function is false where a sheet is larger than any that a person
/// made.
class SheetRows {
 public:
  explicit SheetRows(FrameWriter& frames) : m_frames(&frames) {}

  void BeginSheet(QByteArrayView name);
  bool AddCells(qint64 times, Cell kind, QByteArrayView value);
  bool EndRow(qint64 times);
  void EndSheet();

 private:
  struct Waiting {
    Cell kind;
    QByteArray value;
  };

  FrameWriter* m_frames;
  QList<Waiting> m_row;     ///< Up to the last filled cell.
  qint64 m_emptyCells = 0;  ///< Behind it.
  qint64 m_emptyRows = 0;
  qint64 m_filled = 0;  ///< Cells of all sheets.
  qint64 m_rows = 0;
};

}  // namespace reader
