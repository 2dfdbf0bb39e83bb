#include "platform/adodb/Statement.h"

namespace adodb::detail {

namespace {

void Append(QString& statement, const Value& value) {
  switch (value.kind) {
    case ValueKind::Number:
      statement += QString::number(value.number);
      break;
    case ValueKind::Verbatim:
      statement += value.text;
      break;
    case ValueKind::Text:
      for (const QChar character : value.text) {
        if (character == u'\'') {
          statement += character;
        }
        statement += character;
      }
      break;
  }
}

}  // namespace

QString Fill(const char16_t* form, std::span<const Value> values) {
  qsizetype size = std::char_traits<char16_t>::length(form);
  for (const Value& value : values) {
    size += value.text.size();
  }
  QString statement;
  statement.reserve(size);
  std::size_t next = 0;
  for (const char16_t* at = form; *at != 0; ++at) {
    if (*at != u'{') {
      statement += QChar(*at);
    } else if (*++at == u'}') {
      Append(statement, values[next++]);
    } else {
      Append(statement, values[static_cast<std::size_t>(*at++ - u'0')]);
    }
  }
  return statement;
}

}  // namespace adodb::detail
