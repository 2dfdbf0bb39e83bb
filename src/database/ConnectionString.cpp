#include "database/ConnectionString.h"

#include "database/Errors.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr int longestWait = 600000;

bool IsQuote(QChar c) {
  return c == u'"' || c == u'\'';
}

QString ReadQuoted(QStringView text, qsizetype& position) {
  const QChar quote = text[position++];
  QString value;
  while (position < text.size()) {
    const QChar c = text[position++];
    if (c != quote) {
      value += c;
    } else if (position < text.size() && text[position] == quote) {
      value += quote;
      ++position;
    } else {
      return value;
    }
  }
  throw BadConnectionString(u"falta cerrar unas comillas"_s);
}

void SkipBlanks(QStringView text, qsizetype& position) {
  while (position < text.size() && text[position].isSpace()) {
    ++position;
  }
}

QString ReadValue(QStringView text, qsizetype& position) {
  SkipBlanks(text, position);
  QString value;
  if (position < text.size() && IsQuote(text[position])) {
    value = ReadQuoted(text, position);
    SkipBlanks(text, position);
    if (position < text.size() && text[position] != u';') {
      throw BadConnectionString(u"sobra texto detrás de unas comillas"_s);
    }
  } else {
    const qsizetype end = text.indexOf(u';', position);
    value = text.mid(position, end < 0 ? -1 : end - position).trimmed().toString();
    position = end < 0 ? text.size() : end;
  }
  ++position;
  return value;
}

}  // namespace

ConnectionString::ConnectionString(const QString& text) {
  QSet<QString> seen;
  qsizetype position = 0;
  while (position < text.size()) {
    SkipBlanks(text, position);
    if (position >= text.size() || text[position] == u';') {
      ++position;
      continue;
    }
    const qsizetype equals = text.indexOf(u'=', position);
    if (equals < 0) {
      throw BadConnectionString(u"falta un signo «=»"_s);
    }
    const QString key = text.mid(position, equals - position).trimmed().toCaseFolded();
    position = equals + 1;
    if (seen.contains(key)) {
      throw BadConnectionString(u"«%1» está repetido"_s.arg(key));
    }
    seen.insert(key);
    Take(key, ReadValue(text, position));
  }
  if (m_file.isEmpty()) {
    throw BadConnectionString(u"falta «Archivo»"_s);
  }
}

void ConnectionString::Take(const QString& key, const QString& value) {
  if (key == u"motor") {
    m_engine = value.toCaseFolded();
  } else if (key == u"archivo") {
    if (value.contains(QChar(0))) {
      throw BadConnectionString(u"el nombre del archivo tiene un carácter nulo"_s);
    }
    m_file = value;
  } else if (key == u"espera") {
    bool isNumber = false;
    m_wait = value.toInt(&isNumber);
    if (!isNumber || m_wait < 0 || m_wait > longestWait) {
      throw BadConnectionString(u"«Espera» va de 0 a %1 milisegundos"_s.arg(longestWait));
    }
  } else if (key == u"acceso") {
    if (value.compare(u"lectura", Qt::CaseInsensitive) != 0 && value.compare(u"escritura", Qt::CaseInsensitive) != 0) {
      throw BadConnectionString(u"«Acceso» es «lectura» o «escritura»"_s);
    }
    m_readOnly = value.compare(u"lectura", Qt::CaseInsensitive) == 0;
  } else {
    throw BadConnectionString(u"no se conoce «%1»"_s.arg(key));
  }
}

ConnectionString ConnectionString::WithWait(std::chrono::milliseconds wait) const {
  ConnectionString other = *this;
  other.m_wait = static_cast<int>(wait.count());
  return other;
}

QString ConnectionString::Quoted(const QString& value) {
  const bool plain = !value.isEmpty() && value == value.trimmed() && !IsQuote(value.front()) && !value.contains(u';') &&
                     !value.contains(u'=');
  if (plain) {
    return value;
  }
  QString doubled = value;
  doubled.replace(u'"', u"\"\""_s);
  return u'"' + doubled + u'"';
}

}  // namespace database
