#pragma once

#include "reader/FrameFormat.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace reader {

/// Writes frames to the standard output by the system's own `write`, for more is not allowed there. The process ends
/// where nobody reads them.
class FrameWriter {
 public:
  struct Column {
    QByteArray name;
    Cell kind = Cell::Text;
  };

  void File(const char* kind);
  /// `columns` are none for a spreadsheet.
  void Table(QByteArrayView name, unsigned count, const QList<Column>& columns);
  void AddCell(Cell kind, QByteArrayView value = {});
  void EndRow();
  void EndTable();
  void Named(Frame frame, QByteArrayView name);
  /// Protected, Other or End; nothing follows them.
  void Plain(Frame frame);

 private:
  void Put(Frame frame, QByteArrayView content);
  void Flush();

  QByteArray m_row;
  QByteArray m_waiting;
  unsigned m_rows = 0;
};

}  // namespace reader
