#include "moving/CsvReader.h"

#include "moving/CsvText.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

constexpr qint64 mostBytes = 512 << 20;

[[noreturn]] void Refuse(qint64 line, QStringView what) {
  throw automation::Error(automation::InvalidProcedureCall, u"Línea %1 de la lista: %2."_s.arg(line).arg(what));
}

class Fields {
 public:
  Fields(const QString& text, QChar separator) : m_text(text), m_separator(separator) {}

  bool AtEnd() const { return m_at >= m_text.size(); }
  qint64 Line() const { return m_line; }

  SourceRow NextRow() {
    SourceRow row;
    for (bool goesOn = true; goesOn;) {
      row.append(NextField());
      goesOn = m_at < m_text.size() && m_text.at(m_at) == m_separator;
      m_at += goesOn ? 1 : 0;
      if (row.size() > reader::mostColumns) {
        Refuse(m_line, u"tiene demasiadas columnas");
      }
    }
    EndLine();
    return row;
  }

 private:
  SourceCell NextField() {
    const QString text = m_at < m_text.size() && m_text.at(m_at) == u'"' ? Quoted() : Plain();
    return {text.isEmpty() ? Cell::None : Cell::Text, text};
  }

  QString Plain() {
    const qsizetype begin = m_at;
    while (m_at < m_text.size() && m_text.at(m_at) != m_separator && m_text.at(m_at) != u'\n' &&
           m_text.at(m_at) != u'\r') {
      ++m_at;
    }
    return m_text.mid(begin, m_at - begin);
  }

  QString Quoted() {
    const qint64 begin = m_line;
    QString text;
    for (++m_at; m_at < m_text.size(); ++m_at) {
      const QChar each = m_text.at(m_at);
      m_line += each == u'\n' ? 1 : 0;
      if (each != u'"') {
        text.append(each);
      } else if (m_at + 1 < m_text.size() && m_text.at(m_at + 1) == u'"') {
        text.append(each);
        ++m_at;
      } else {
        ++m_at;
        return text + Plain();
      }
    }
    Refuse(begin, u"unas comillas no se cierran nunca");
  }

  void EndLine() {
    m_at += m_at < m_text.size() && m_text.at(m_at) == u'\r' ? 1 : 0;
    m_at += m_at < m_text.size() && m_text.at(m_at) == u'\n' ? 1 : 0;
    ++m_line;
  }

  const QString& m_text;
  QChar m_separator;
  qsizetype m_at = 0;
  qint64 m_line = 1;
};

// How many fields the first rows have with a separator; 0 where they don't agree.
qsizetype CommonFields(const QString& text, QChar separator) {
  constexpr int looked = 50;
  constexpr qsizetype enough = 500'000;
  const QString begin = text.left(enough);
  qsizetype common = -1;
  try {
    Fields fields(begin, separator);
    for (int i = 0; i < looked && !fields.AtEnd(); ++i) {
      const qsizetype size = fields.NextRow().size();
      // The last one may be cut.
      if (fields.AtEnd() && begin.size() < text.size()) {
        break;
      }
      common = common < 0 || common == size ? size : 0;
    }
  } catch (const automation::Error&) {
    return 0;
  }
  return common;
}

QChar SeparatorOf(const QString& text) {
  for (const QChar separator : {u';', u'\t', u',', u'|'}) {
    if (CommonFields(text, separator) >= 2) {
      return separator;
    }
  }
  // A list of one column, or a ragged one.
  return u';';
}

QString Content(const QString& path, const QString& encoding) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"No se puede leer el archivo «%1». Compruebe sus permisos."_s.arg(path));
  }
  const QByteArray bytes = file.read(mostBytes + 1);
  if (bytes.size() > mostBytes) {
    throw automation::Error(automation::InvalidProcedureCall, u"El archivo «%1» es demasiado grande."_s.arg(path));
  }
  return DecodeList(bytes, encoding);
}

}  // namespace

void ReadCsv(const QString& path, const ListForm& form, SourceListener& listener, const database::Stop& stop) {
  const QString text = Content(path, form.encoding);
  if (const qsizetype nul = text.indexOf(QChar(0)); nul >= 0) {
    Refuse(QStringView(text).first(nul).count(u'\n') + 1, u"no es texto");
  }
  Fields fields(text, form.separator.isNull() ? SeparatorOf(text) : form.separator);
  listener.BeginTable({QFileInfo(path).completeBaseName(), std::nullopt, {}});
  while (!fields.AtEnd()) {
    if (stop && stop()) {
      throw automation::Error(adodb::Stopped, u"La lectura se ha cancelado. No se ha traído nada."_s);
    }
    listener.Row(fields.NextRow());
  }
  listener.EndTable(0);
}

}  // namespace moving
