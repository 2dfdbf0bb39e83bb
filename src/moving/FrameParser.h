#pragma once

#include "moving/Source.h"

#include <QByteArray>

#include <limits>

namespace moving {

/// Takes kel-lector's output apart and tells what is in it. Raises 5 for anything that no reader writes: a length, a
/// number or an order that can't be.
class FrameParser {
 public:
  /// More rows than `mostRows` are none that the file can have.
  explicit FrameParser(SourceListener& listener, qint64 mostRows = std::numeric_limits<qint64>::max())
      : m_listener(&listener), m_mostRows(mostRows) {}

  /// The next bytes of the output, in any pieces.
  void Take(const QByteArray& bytes);
  /// Whether the whole file was read. Nothing may come behind.
  bool IsWhole() const { return m_isOver && m_last == reader::Frame::End; }
  bool IsProtected() const { return m_isOver && m_last == reader::Frame::Protected; }
  /// An archive of something else.
  bool IsOther() const { return m_isOver && m_last == reader::Frame::Other; }
  /// The table that was being read.
  QString TableName() const { return m_table.name; }

 private:
  void TakeFrame(char letter, QByteArrayView content);
  void TakeTable(QByteArrayView content);
  void TakeRow(QByteArrayView content);
  void TakeTableEnd(QByteArrayView content);

  SourceListener* m_listener;
  qint64 m_mostRows;
  qint64 m_allRows = 0;
  QByteArray m_waiting;
  SourceTable m_table;
  qint64 m_rows = 0;
  qsizetype m_width = 0;  ///< Of the row before.
  bool m_hasFile = false;
  bool m_isInTable = false;
  bool m_isOver = false;
  reader::Frame m_last = reader::Frame::End;
};

}  // namespace moving
