#include "reader/DesktopCell.h"

#include "reader/DateText.h"
#include "reader/DesktopText.h"

#include <QtEndian>

#include <charconv>
#include <cstring>
#include <optional>

namespace reader {

namespace {

constexpr qsizetype memoHead = 12;
constexpr quint32 isInline = 0x80000000;
constexpr quint32 isOnOnePage = 0x40000000;
constexpr int offsetMask = 0x1FFF;

template <typename Number>
std::optional<Number> Read(QByteArrayView bytes, qsizetype at = 0) {
  if (bytes.size() < at + qsizetype(sizeof(Number))) {
    return std::nullopt;
  }
  return qFromLittleEndian<Number>(bytes.data() + at);
}

CellValue Unreadable() {
  return {Cell::Unreadable, {}};
}

// The shortest text that is this number again.
template <typename Number>
CellValue Floating(QByteArrayView bytes) {
  const auto number = Read<Number>(bytes);
  char text[400];
  if (!number || !(*number - *number == 0)) {
    return Unreadable();
  }
  const auto end = std::to_chars(std::begin(text), std::end(text), *number, std::chars_format::fixed).ptr;
  return {Cell::Number, QByteArray(text, end - text)};
}

template <typename Number>
CellValue Whole(QByteArrayView bytes) {
  const auto number = Read<Number>(bytes);
  return number ? CellValue{Cell::Number, QByteArray::number(qint64(*number))} : Unreadable();
}

// Ten-thousandths, exact.
CellValue Money(QByteArrayView bytes) {
  const auto scaled = Read<qint64>(bytes);
  if (!scaled) {
    return Unreadable();
  }
  const quint64 size = *scaled < 0 ? quint64(0) - quint64(*scaled) : quint64(*scaled);
  const QByteArray text = (*scaled < 0 ? "-" : "") + QByteArray::number(size / 10000);
  const quint64 rest = size % 10000;
  return {Cell::Number, rest == 0 ? text : text + '.' + QByteArray::number(rest).rightJustified(4, '0')};
}

CellValue Date(QByteArrayView bytes) {
  const auto days = Read<double>(bytes);
  const QByteArray text = days ? DateText(*days) : QByteArray();
  return text.isEmpty() ? Unreadable() : CellValue{Cell::Date, text};
}

CellValue Numeric(MdbHandle& file, const MdbColumn& column, const MdbField& field) {
  constexpr int size = 17;
  if (field.siz < size) {
    return Unreadable();
  }
  char* const text = mdb_numeric_to_string(&file, field.start, column.col_scale, column.col_prec);
  const CellValue cell{Cell::Number, text};
  g_free(text);
  return cell;
}

// A piece of a long text, on another page, which stays until the next one is read.
std::optional<QByteArrayView> Piece(MdbHandle& file, quint32 place) {
  void* page = nullptr;
  int start = 0;
  size_t size = 0;
  if (place > quint32(INT_MAX) || mdb_find_pg_row(&file, int(place), &page, &start, &size) != 0) {
    return std::nullopt;
  }
  start &= offsetMask;
  if (page == nullptr || start < 0 || start + qint64(size) > file.fmt->pg_size) {
    return std::nullopt;
  }
  return QByteArrayView(static_cast<const char*>(page) + start, qsizetype(size));
}

std::optional<QByteArray> Chain(MdbHandle& file, quint32 place, qsizetype length) {
  constexpr qsizetype head = 4;
  QByteArray bytes;
  while (bytes.size() < length) {
    const auto piece = place == 0 ? std::nullopt : Piece(file, place);
    if (!piece || piece->size() <= head) {
      return std::nullopt;
    }
    place = *Read<quint32>(*piece);
    bytes.append(piece->sliced(head));
  }
  return bytes.size() == length ? std::optional(bytes) : std::nullopt;
}

std::optional<QByteArray> LongValue(MdbHandle& file, QByteArrayView bytes) {
  const auto head = Read<quint32>(bytes);
  const auto place = Read<quint32>(bytes, 4);
  if (!head || !place || bytes.size() < memoHead) {
    return std::nullopt;
  }
  const auto length = qsizetype(*head & ~(isInline | isOnOnePage));
  if ((*head & isInline) != 0) {
    const QByteArrayView rest = bytes.sliced(memoHead);
    return rest.size() >= length ? std::optional(rest.first(length).toByteArray()) : std::nullopt;
  }
  if ((*head & isOnOnePage) != 0) {
    const auto piece = Piece(file, *place);
    return piece && piece->size() >= length ? std::optional(piece->first(length).toByteArray()) : std::nullopt;
  }
  return Chain(file, *place, length);
}

// Files of 1997 have bytes of a code page.
CellValue TextOf(MdbHandle& file, QByteArrayView bytes) {
  if (!IS_JET3((&file))) {
    return {Cell::Text, DecodeText(bytes)};
  }
  QByteArray text(4 * bytes.size() + 4, '\0');
  const int size = mdb_unicode2ascii(&file, bytes.data(), size_t(bytes.size()), text.data(), size_t(text.size()));
  return size < 0 ? Unreadable() : CellValue{Cell::Text, text.left(size)};
}

CellValue Memo(MdbHandle& file, QByteArrayView bytes) {
  const auto value = LongValue(file, bytes);
  return value ? TextOf(file, *value) : Unreadable();
}

// Objects are not read, but for letters that were stored as such: RTF, whose bytes are characters.
CellValue Object(MdbHandle& file, QByteArrayView bytes) {
  const auto value = LongValue(file, bytes);
  if (!value) {
    return Unreadable();
  }
  return value->startsWith("{\\rtf") ? CellValue{Cell::Text, QString::fromLatin1(*value).toUtf8()} : CellValue{};
}

bool IsLetter(const MdbColumn& column) {
  return column.col_type == MDB_OLE && qstricmp(column.name, "Contenido") == 0;
}

}  // namespace

Cell KindOf(const MdbColumn& column) {
  switch (column.col_type) {
    case MDB_BOOL:
      return Cell::Boolean;
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
    case MDB_MONEY:
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_NUMERIC:
      return Cell::Number;
    case MDB_DATETIME:
      return Cell::Date;
    case MDB_TEXT:
    case MDB_MEMO:
      return Cell::Text;
    default:
      return IsLetter(column) ? Cell::Text : Cell::Foreign;
  }
}

CellValue ReadCell(MdbHandle& file, MdbColumn& column, const MdbField& field) {
  // A Boolean is the mark that others have for "no value".
  if (column.col_type == MDB_BOOL) {
    return {Cell::Boolean, field.is_null ? "0" : "-1"};
  }
  if (field.is_null || KindOf(column) == Cell::Foreign) {
    return {};
  }
  if (field.start < 0 || field.siz < 0 || field.start + qint64(field.siz) > file.fmt->pg_size) {
    return Unreadable();
  }
  const QByteArrayView bytes(reinterpret_cast<const char*>(file.pg_buf) + field.start, field.siz);
  switch (column.col_type) {
    case MDB_BYTE:
      return Whole<quint8>(bytes);
    case MDB_INT:
      return Whole<qint16>(bytes);
    case MDB_LONGINT:
      return Whole<qint32>(bytes);
    case MDB_MONEY:
      return Money(bytes);
    case MDB_FLOAT:
      return Floating<float>(bytes);
    case MDB_DOUBLE:
      return Floating<double>(bytes);
    case MDB_NUMERIC:
      return Numeric(file, column, field);
    case MDB_DATETIME:
      return Date(bytes);
    case MDB_TEXT:
      return TextOf(file, bytes);
    case MDB_MEMO:
      return Memo(file, bytes);
    default:
      return Object(file, bytes);
  }
}

}  // namespace reader
