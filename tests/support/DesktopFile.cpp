#include "support/DesktopFile.h"

#include <QtEndian>

#include <cstring>

using namespace Qt::StringLiterals;

namespace support {

namespace {

constexpr int pageSize = 4096;
constexpr int rowsBegin = 14;
constexpr int movedRow = 0x8000;
constexpr int deletedRow = 0x4000;

template <typename Number>
QByteArray Little(Number number) {
  const Number little = qToLittleEndian(number);
  return {reinterpret_cast<const char*>(&little), sizeof little};
}

// The header is hidden by RC4 under a key that everybody knows.
void Hide(QByteArray& page, int begin, int size) {
  const unsigned char key[] = {0xC7, 0xDA, 0x39, 0x6B};
  unsigned char state[256];
  for (int i = 0; i < 256; ++i) {
    state[i] = static_cast<unsigned char>(i);
  }
  for (int i = 0, j = 0; i < 256; ++i) {
    j = (j + state[i] + key[i % 4]) % 256;
    std::swap(state[i], state[j]);
  }
  for (int n = 0, i = 0, j = 0; n < size; ++n) {
    i = (i + 1) % 256;
    j = (j + state[i]) % 256;
    std::swap(state[i], state[j]);
    page[begin + n] = char(page[begin + n] ^ state[(state[i] + state[j]) % 256]);
  }
}

QByteArray Wide(const QString& text) {
  return {reinterpret_cast<const char*>(text.utf16()), 2 * text.size()};
}

bool IsNarrow(const QString& text) {
  return text.size() > 2 &&
         std::all_of(text.begin(), text.end(), [](QChar each) { return each > QChar(0) && each <= QChar(0xFF); });
}

// As the programs do: narrow where they can.
QByteArray TextBytes(const QVariant& value) {
  if (value.typeId() == QMetaType::QByteArray) {
    return value.toByteArray();
  }
  const QString text = value.toString();
  return IsNarrow(text) ? "\xFF\xFE" + text.toLatin1() : Wide(text);
}

int FixedSize(DesktopFile::Type type) {
  switch (type) {
    case DesktopFile::Byte:
      return 1;
    case DesktopFile::Int:
      return 2;
    case DesktopFile::Long:
    case DesktopFile::Float:
      return 4;
    case DesktopFile::Money:
    case DesktopFile::Double:
    case DesktopFile::Date:
      return 8;
    default:
      return 0;
  }
}

bool IsFixed(DesktopFile::Type type) {
  return type == DesktopFile::Bool || FixedSize(type) > 0;
}

const QList<DesktopFile::Column> catalogueColumns = {
    {u"Id"_s, DesktopFile::Long},  {u"ParentId"_s, DesktopFile::Long}, {u"Name"_s, DesktopFile::Text},
    {u"Type"_s, DesktopFile::Int}, {u"Flags"_s, DesktopFile::Long},    {u"LvProp"_s, DesktopFile::Ole}};

}  // namespace

DesktopFile::DesktopFile(Kind kind) {
  NewPage();
  NewPage();
  NewPage();  // The catalogue's definition is the third page.
  QByteArray& head = m_pages[0];
  const bool isNewer = kind == Kind::Accdb;
  head.replace(0, 20, QByteArray("\0\1\0\0", 4) + (isNewer ? "Standard ACE DB" : "Standard Jet DB") + '\0');
  head[0x14] = isNewer ? 2 : 1;
  Hide(head, 0x18, 128);
}

int DesktopFile::NewPage() {
  m_pages.append(QByteArray(pageSize, '\0'));
  return int(m_pages.size()) - 1;
}

void DesktopFile::Put(int page, int at, quint32 value, int bytes) {
  const QByteArray little = Little(value);
  m_pages[page].replace(at, bytes, little.left(bytes));
}

quint32 DesktopFile::AddToPage(int page, const QByteArray& row, int flags) {
  const int count = qFromLittleEndian<quint16>(m_pages[page].constData() + 12);
  const int start = m_free.value(page, pageSize) - int(row.size());
  m_pages[page].replace(start, row.size(), row);
  m_free[page] = start;
  Put(page, 12, quint32(count + 1), 2);
  Put(page, rowsBegin + 2 * count, quint32(start | flags), 2);
  return quint32(page << 8 | count);
}

int DesktopFile::PageFor(const QByteArray& row) {
  const int page = m_dataPages.isEmpty() ? 0 : m_dataPages.last();
  const int rows = qFromLittleEndian<quint16>(m_pages[page].constData() + 12);
  if (page == 0 || rows >= 250 || m_free.value(page, pageSize) - row.size() < rowsBegin + 2 * (rows + 1)) {
    m_dataPages.append(NewPage());
    m_pages[m_dataPages.last()][0] = 1;
    Put(m_dataPages.last(), 4, quint32(m_table), 4);
  }
  return m_dataPages.last();
}

void DesktopFile::AddTable(const QString& name, const QList<Column>& columns) {
  EndTable();
  m_table = NewPage();
  m_columns = columns;
  Catalogue(name, m_table, 1);
}

void DesktopFile::Catalogue(const QString& name, int page, int type) {
  m_catalogue.append({page, 0, name, type, 0, QVariant()});
}

void DesktopFile::AddLinkedTable(const QString& name) {
  Catalogue(name, 0x7000 + int(m_catalogue.size()), 6);
}

void DesktopFile::AddRow(const Row& row) {
  const QByteArray bytes = RowBytes(row);
  AddToPage(PageFor(bytes), bytes);
  ++m_rows;
}

void DesktopFile::AddDeletedRow(const Row& row) {
  const QByteArray bytes = RowBytes(row);
  AddToPage(PageFor(bytes), bytes, deletedRow | movedRow);
}

void DesktopFile::AddMovedRow(const Row& row) {
  const QByteArray bytes = RowBytes(row);
  AddToPage(PageFor(QByteArray(4, '\0')), Little(quint32(0)), deletedRow);
  AddToPage(PageFor(bytes), bytes, movedRow);
  ++m_rows;
}

void DesktopFile::AddOlderRow(const Row& row, int missing) {
  const QByteArray bytes = RowBytes(row, missing);
  AddToPage(PageFor(bytes), bytes);
  ++m_rows;
}

QByteArray DesktopFile::Memorandum(const QByteArray& bytes) {
  constexpr int inlineSize = 64;
  constexpr int pieceSize = 4000;
  const QByteArray rest(4, '\0');
  if (bytes.size() <= inlineSize) {
    return Little(quint32(bytes.size()) | 0x80000000) + Little(quint32(0)) + rest + bytes;
  }
  const auto add = [this](const QByteArray& piece) {
    const int page = NewPage();
    m_pages[page].replace(0, 8, QByteArray("\1\1\0\0LVAL", 8));
    return AddToPage(page, piece);
  };
  if (bytes.size() <= pieceSize) {
    return Little(quint32(bytes.size()) | 0x40000000) + Little(add(bytes)) + rest;
  }
  quint32 next = 0;
  for (qsizetype at = (bytes.size() - 1) / pieceSize * pieceSize; at >= 0; at -= pieceSize) {
    next = add(Little(next) + bytes.mid(at, pieceSize));
  }
  return Little(quint32(bytes.size())) + Little(next) + rest;
}

QByteArray DesktopFile::Stored(const QVariant& value, Type type) {
  switch (type) {
    case Byte:
      return Little(quint8(value.toInt()));
    case Int:
      return Little(qint16(value.toInt()));
    case Long:
      return Little(qint32(value.toInt()));
    case Money:
      return Little(qint64(value.toLongLong()));
    case Float:
      return Little(value.toFloat());
    case Double:
    case Date:
      return Little(value.toDouble());
    case Memo:
      return Memorandum(TextBytes(value));
    case Ole:
      return Memorandum(value.toByteArray());
    default:
      return TextBytes(value);
  }
}

QByteArray DesktopFile::RowBytes(const Row& row, int missing) {
  const int count = int(m_columns.size()) - missing;
  QByteArray fixed;
  QByteArray variable;
  QList<int> places;
  QByteArray marks((count + 7) / 8, '\0');
  int fixedEnd = 2;
  for (int i = 0; i < count; ++i) {
    fixedEnd += FixedSize(m_columns[i].type);
  }
  for (int i = 0; i < count; ++i) {
    const Type type = m_columns[i].type;
    const bool isThere = type == Bool ? row[i].toBool() : row[i].isValid();
    if (isThere) {
      marks[i / 8] = char(marks[i / 8] | 1 << i % 8);
    }
    if (!IsFixed(type)) {
      places.append(fixedEnd + int(variable.size()));
      variable += isThere ? Stored(row[i], type) : QByteArray();
    } else if (type != Bool) {
      fixed += isThere ? Stored(row[i], type) : QByteArray(FixedSize(type), '\0');
    }
  }
  QByteArray bytes = Little(quint16(count)) + fixed + variable + Little(quint16(fixedEnd + variable.size()));
  for (qsizetype i = places.size(); i-- > 0;) {
    bytes += Little(quint16(places[i]));
  }
  return bytes + Little(quint16(places.size())) + marks;
}

void DesktopFile::EndTable() {
  if (m_table != 0) {
    Define(m_table, m_columns, m_said < 0 ? m_rows : m_said, m_dataPages);
  }
  m_table = m_rows = 0;
  m_said = -1;
  m_dataPages.clear();
}

void DesktopFile::Define(int page, const QList<Column>& columns, int rows, const QList<int>& pages) {
  // The map of the table's pages: a bit for each page of the file from the first.
  QByteArray map(5 + (pages.isEmpty() ? 1 : pages.last() / 8 + 1), '\0');
  for (const int each : pages) {
    map[5 + each / 8] = char(map[5 + each / 8] | 1 << each % 8);
  }
  const int mapPage = NewPage();
  m_pages[mapPage][0] = 1;
  const quint32 place = AddToPage(mapPage, map);
  int variable = 0;
  int fixedAt = 0;
  QByteArray definitions;
  QByteArray names;
  for (int i = 0; i < columns.size(); ++i) {
    const Type type = columns[i].type;
    QByteArray entry(25, '\0');
    entry[0] = char(type);
    entry[5] = entry[9] = char(i);
    entry[7] = char(IsFixed(type) ? 0 : variable++);
    entry[15] = char(IsFixed(type) ? 3 : 2);
    entry.replace(21, 2, Little(quint16(IsFixed(type) ? fixedAt : 0)));
    entry.replace(23, 2, Little(quint16(IsFixed(type) ? FixedSize(type) : 510)));
    fixedAt += FixedSize(type);
    definitions += entry;
    names += Little(quint16(2 * columns[i].name.size())) + Wide(columns[i].name);
  }
  m_pages[page].replace(0, 2, QByteArray("\2\1", 2));
  Put(page, 16, quint32(rows), 4);
  m_pages[page][40] = 0x4E;
  Put(page, 41, quint32(columns.size()), 2);
  Put(page, 43, quint32(variable), 2);
  Put(page, 45, quint32(columns.size()), 2);
  Put(page, 55, place, 4);
  Put(page, 59, place, 4);
  m_pages[page].replace(63, definitions.size() + names.size(), definitions + names);
}

QByteArray DesktopFile::Bytes() {
  EndTable();
  m_table = 2;
  m_columns = catalogueColumns;
  for (const Row& row : std::as_const(m_catalogue)) {
    AddRow(row);
  }
  EndTable();
  return m_pages.join();
}

}  // namespace support
