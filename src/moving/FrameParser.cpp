#include "moving/FrameParser.h"

#include "platform/automation/Error.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

using reader::Frame;

constexpr quint32 mostBytes = 256 << 20;
constexpr qsizetype longestName = 255;
constexpr qsizetype frameHead = 5;

[[noreturn]] void Nonsense() {
  throw automation::Error(automation::InvalidProcedureCall,
                          u"El archivo está dañado, o alguien lo ha hecho para dañar: su lectura no se entiende."_s);
}

void Require(bool isTrue) {
  if (!isTrue) {
    Nonsense();
  }
}

// The content of a frame from its beginning to its end, which it never passes.
class Content {
 public:
  explicit Content(QByteArrayView bytes) : m_bytes(bytes) {}

  bool AtEnd() const { return m_bytes.isEmpty(); }

  template <typename Number>
  Number Take() {
    const QByteArrayView bytes = Bytes(sizeof(Number));
    return qFromLittleEndian<Number>(bytes.data());
  }

  QString Text(qsizetype most) {
    const auto size = qsizetype(Take<quint32>());
    Require(size <= most);
    return QString::fromUtf8(Bytes(size));
  }

  QString Name() { return Text(4 * longestName).left(longestName); }

 private:
  QByteArrayView Bytes(qsizetype size) {
    Require(size <= m_bytes.size());
    const QByteArrayView taken = m_bytes.first(size);
    m_bytes = m_bytes.sliced(size);
    return taken;
  }

  QByteArrayView m_bytes;
};

Cell CellOf(char letter) {
  switch (const auto cell = Cell(letter)) {
    case Cell::None:
    case Cell::Text:
    case Cell::Number:
    case Cell::Date:
    case Cell::Boolean:
    case Cell::Unreadable:
    case Cell::Error:
    case Cell::Foreign:
      return cell;
  }
  Nonsense();
}

}  // namespace

void FrameParser::Take(const QByteArray& bytes) {
  Require(bytes.isEmpty() || !m_isOver);
  m_waiting += bytes;
  qsizetype at = 0;
  while (m_waiting.size() - at >= frameHead) {
    const auto size = qFromLittleEndian<quint32>(m_waiting.constData() + at + 1);
    Require(size <= mostBytes);
    if (m_waiting.size() - at - frameHead < qsizetype(size)) {
      break;
    }
    TakeFrame(m_waiting.at(at), QByteArrayView(m_waiting).sliced(at + frameHead, qsizetype(size)));
    at += frameHead + qsizetype(size);
  }
  m_waiting.remove(0, at);
}

void FrameParser::TakeFrame(char letter, QByteArrayView content) {
  const auto frame = Frame(letter);
  const bool isInside = frame == Frame::Row || frame == Frame::TableEnd;
  Require(m_hasFile != (frame == Frame::File) && isInside == m_isInTable && !m_isOver);
  switch (frame) {
    case Frame::File:
      m_hasFile = true;
      return;
    case Frame::Table:
      return TakeTable(content);
    case Frame::Row:
      return TakeRow(content);
    case Frame::TableEnd:
      return TakeTableEnd(content);
    case Frame::Linked:
      return m_listener->Linked(Content(content).Name());
    case Frame::Unreadable:
      return m_listener->Unreadable(Content(content).Name());
    case Frame::Protected:
    case Frame::Other:
    case Frame::End:
      m_last = frame;
      m_isOver = true;
      return;
  }
  Nonsense();
}

void FrameParser::TakeTable(QByteArrayView content) {
  Content rest(content);
  SourceTable table;
  table.name = rest.Name();
  const auto count = rest.Take<quint32>();
  if (count != reader::noCount) {
    table.count = count;
  }
  const int columns = rest.Take<quint16>();
  Require(columns <= reader::mostColumns);
  for (int i = 0; i < columns; ++i) {
    const QString name = rest.Name();
    table.columns.append({name, CellOf(rest.Take<char>())});
  }
  Require(rest.AtEnd());
  m_table = table;
  m_rows = 0;
  m_isInTable = true;
  m_listener->BeginTable(m_table);
}

void FrameParser::TakeRow(QByteArrayView content) {
  Content rest(content);
  SourceRow row;
  row.reserve(m_width);
  while (!rest.AtEnd()) {
    Require(row.size() < reader::mostColumns);
    const Cell kind = CellOf(rest.Take<char>());
    row.append({kind, reader::HasValue(kind) ? rest.Text(mostBytes) : QString()});
  }
  Require(m_table.columns.isEmpty() || row.size() == m_table.columns.size());
  Require(++m_allRows <= m_mostRows);
  m_width = row.size();
  ++m_rows;
  m_listener->Row(row);
}

void FrameParser::TakeTableEnd(QByteArrayView content) {
  Require(Content(content).Take<quint32>() == m_rows);
  m_isInTable = false;
  m_listener->EndTable(qMax(qint64(0), m_table.count.value_or(m_rows) - m_rows));
}

}  // namespace moving
