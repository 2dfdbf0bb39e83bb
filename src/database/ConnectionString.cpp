#include "database/ConnectionString.h"

#include "database/Errors.h"

#include <QSet>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr int longestWait = 600000;
constexpr QStringView postgres = u"postgres";

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

automation::Error PasswordRefused() {
  return BadConnectionString(
      u"no puede llevar la contraseña, que se vería en la lista de procesos; guárdela en el archivo ~/.pgpass"_s);
}

}  // namespace

ConnectionString::ConnectionString(const QString& text) {
  qsizetype position = 0;
  if (text.startsWith(u"postgresql://"_s) || text.startsWith(u"postgres://"_s)) {
    const qsizetype end = text.indexOf(u';');
    TakeAddress(text.left(end));
    position = end < 0 ? text.size() : end;
  }
  QSet<QString> seen;
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
  CheckParts();
}

// The text itself never stands in the message: it may hold a password.
void ConnectionString::TakeAddress(const QString& address) {
  const QUrl url(address, QUrl::StrictMode);
  if (!url.password().isEmpty() || url.query().contains(u"password"_s)) {
    throw PasswordRefused();
  }
  if (!url.isValid() || url.hasQuery() || url.hasFragment()) {
    throw BadConnectionString(u"la dirección tiene la forma postgresql://usuario@servidor:puerto/base"_s);
  }
  m_engine = postgres.toString();
  m_server = {url.host(), url.port() < 0 ? QString() : QString::number(url.port()), url.path().mid(1), url.userName(),
              QString()};
}

void ConnectionString::CheckParts() const {
  if (m_engine == u"sqlite" && m_file.isEmpty()) {
    throw BadConnectionString(u"falta «Archivo»"_s);
  }
  const ServerPlace& place = m_server;
  const bool namesServer = !(place.host + place.port + place.base + place.user + place.service).isEmpty();
  if ((m_engine == u"sqlite" && namesServer) || (m_engine == postgres && !m_file.isEmpty())) {
    throw BadConnectionString(
        u"«Archivo» es de un archivo; «Servidor», «Puerto», «Base», «Usuario» y «Servicio», de un "
        "servidor"_s);
  }
  if (m_engine == postgres && place.base.isEmpty() && place.service.isEmpty()) {
    throw BadConnectionString(u"falta «Base»"_s);
  }
}

QString ConnectionString::ShownName() const {
  if (m_engine != postgres) {
    return m_file;
  }
  const ServerPlace& place = m_server;
  if (place.base.isEmpty()) {
    return u"servicio "_s + place.service;
  }
  const QString user = place.user.isEmpty() ? QString() : u", usuario "_s + place.user;
  return place.base + (place.host.isEmpty() ? QString() : u" en "_s + place.host) + user;
}

QString* ConnectionString::ServerPart(const QString& key) {
  const std::pair<QStringView, QString*> parts[] = {{u"servidor", &m_server.host},
                                                    {u"puerto", &m_server.port},
                                                    {u"base", &m_server.base},
                                                    {u"usuario", &m_server.user},
                                                    {u"servicio", &m_server.service}};
  for (const auto& [name, part] : parts) {
    if (key == name) {
      return part;
    }
  }
  return nullptr;
}

void ConnectionString::Take(const QString& key, const QString& value) {
  if (QString* part = ServerPart(key)) {
    if (value.contains(QChar(0))) {
      throw BadConnectionString(u"«%1» tiene un carácter nulo"_s.arg(key));
    }
    *part = value;
  } else if (key == u"contraseña" || key == u"clave" || key == u"password") {
    throw PasswordRefused();
  } else if (key == u"motor") {
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
