#include "platform/adodb/Statement.h"

namespace adodb::detail {

namespace {

void AppendQuoted(QString& statement, QStringView text) {
  qsizetype from = 0;
  for (qsizetype at = text.indexOf(u'\''); at >= 0; at = text.indexOf(u'\'', from)) {
    statement.append(text.sliced(from, at + 1 - from)).append(u'\'');
    from = at + 1;
  }
  statement.append(text.sliced(from));
}

void Append(QString& statement, const Value& value) {
  switch (value.kind) {
    case ValueKind::Number:
      statement += QString::number(value.number);
      break;
    case ValueKind::Verbatim:
      statement += value.text;
      break;
    case ValueKind::Text:
      AppendQuoted(statement, value.text);
      break;
  }
}

}  // namespace

QString Fill(const char16_t* form, std::span<const Value> values) {
  QStringView rest(form);
  qsizetype size = rest.size();
  for (const Value& value : values) {
    size += value.text.size();
  }
  QString statement;
  statement.reserve(size);
  std::size_t next = 0;
  for (qsizetype place = rest.indexOf(u'{'); place >= 0; place = rest.indexOf(u'{')) {
    const bool isNumbered = rest[place + 1] != u'}';
    statement.append(rest.first(place));
    Append(statement, values[isNumbered ? static_cast<std::size_t>(rest[place + 1].unicode() - u'0') : next++]);
    rest = rest.sliced(place + (isNumbered ? 3 : 2));
  }
  return statement.append(rest);
}

}  // namespace adodb::detail
