#include "reader/FrameWriter.h"

#include <QtEndian>

#include <unistd.h>

namespace reader {

namespace {

template <typename Number>
void AppendNumber(QByteArray& bytes, Number number) {
  const Number little = qToLittleEndian(number);
  bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

void AppendText(QByteArray& bytes, QByteArrayView text) {
  AppendNumber(bytes, quint32(text.size()));
  bytes.append(text);
}

}  // namespace

void FrameWriter::File(const char* kind) {
  Named(Frame::File, kind);
}

void FrameWriter::Table(QByteArrayView name, unsigned count, const QList<Column>& columns) {
  QByteArray content;
  AppendText(content, name);
  AppendNumber(content, quint32(count));
  AppendNumber(content, quint16(columns.size()));
  for (const Column& column : columns) {
    AppendText(content, column.name);
    content.append(char(column.kind));
  }
  Put(Frame::Table, content);
  m_rows = 0;
}

void FrameWriter::AddCell(Cell kind, QByteArrayView value) {
  m_row.append(char(kind));
  if (HasValue(kind)) {
    AppendText(m_row, value);
  }
}

void FrameWriter::EndRow() {
  Put(Frame::Row, m_row);
  m_row.resize(0);
  ++m_rows;
}

void FrameWriter::EndTable() {
  QByteArray content;
  AppendNumber(content, quint32(m_rows));
  Put(Frame::TableEnd, content);
}

void FrameWriter::Named(Frame frame, QByteArrayView name) {
  QByteArray content;
  AppendText(content, name);
  Put(frame, content);
}

void FrameWriter::Plain(Frame frame) {
  Put(frame, {});
  Flush();
}

void FrameWriter::Put(Frame frame, QByteArrayView content) {
  constexpr qsizetype worthWriting = 60'000;
  m_waiting.append(char(frame));
  AppendNumber(m_waiting, quint32(content.size()));
  m_waiting.append(content);
  if (m_waiting.size() > worthWriting) {
    Flush();
  }
}

void FrameWriter::Flush() {
  qsizetype written = 0;
  while (written < m_waiting.size()) {
    const ssize_t now = write(STDOUT_FILENO, m_waiting.constData() + written, size_t(m_waiting.size() - written));
    if (now <= 0) {
      _exit(1);
    }
    written += now;
  }
  m_waiting.resize(0);
}

}  // namespace reader
