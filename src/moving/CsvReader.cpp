#include "moving/CsvReader.h"

#include "moving/CsvText.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

constexpr qint64 mostBytes = 512 << 20;

[[noreturn]] void Refuse(qint64 line, QStringView what) {
  throw automation::Error(automation::InvalidProcedureCall, u"Línea %1 de la lista: %2."_s.arg(line).arg(what));
}

// Works on the bytes: a list has many times the size of what is taken out of it at a time.
class Fields {
 public:
  Fields(QByteArrayView text, char separator) : m_text(text), m_separator(separator) {}

  bool AtEnd() const { return m_at >= m_text.size(); }
  qint64 Line() const { return m_line; }

  SourceRow NextRow() {
    SourceRow row;
    row.reserve(m_width);
    for (bool goesOn = true; goesOn;) {
      row.append(NextField());
      goesOn = Is(m_separator);
      m_at += goesOn ? 1 : 0;
      if (row.size() > reader::mostColumns) {
        Refuse(m_line, u"tiene demasiadas columnas");
      }
    }
    m_width = row.size();
    EndLine();
    return row;
  }

 private:
  SourceCell NextField() {
    const QString text = Is('"') ? Quoted() : QString::fromUtf8(Plain());
    return {text.isEmpty() ? Cell::None : Cell::Text, text};
  }

  bool Is(char wanted) const { return m_at < m_text.size() && m_text[m_at] == wanted; }

  QByteArrayView Plain() {
    const qsizetype begin = m_at;
    while (!AtEndOfField()) {
      ++m_at;
    }
    return m_text.sliced(begin, m_at - begin);
  }

  QString Quoted() {
    const qint64 begin = m_line;
    QByteArrayView piece = UpToQuote(begin);
    if (!Is('"') && AtEndOfField()) {
      return QString::fromUtf8(piece);
    }
    // A quote that stands twice is one of the text; what follows the last one is text again.
    QByteArray text = piece.toByteArray();
    while (Is('"')) {
      piece = UpToQuote(begin);
      text.append('"').append(piece);
    }
    return QString::fromUtf8(text.append(Plain()));
  }

  // From the quote here to the next one, behind which it goes on.
  QByteArrayView UpToQuote(qint64 firstLine) {
    const qsizetype end = m_text.indexOf('"', m_at + 1);
    if (end < 0) {
      Refuse(firstLine, u"unas comillas no se cierran nunca");
    }
    const QByteArrayView piece = m_text.sliced(m_at + 1, end - m_at - 1);
    m_line += piece.count('\n');
    m_at = end + 1;
    return piece;
  }

  bool AtEndOfField() const { return AtEnd() || m_text[m_at] == m_separator || Is('\n') || Is('\r'); }

  void EndLine() {
    m_at += Is('\r') ? 1 : 0;
    m_at += Is('\n') ? 1 : 0;
    ++m_line;
  }

  QByteArrayView m_text;
  char m_separator;
  qsizetype m_at = 0;
  qint64 m_line = 1;
  qsizetype m_width = 0;  ///< Of the row before.
};

// How many fields the first rows have with a separator; 0 where they don't agree.
qsizetype CommonFields(QByteArrayView text, char separator) {
  constexpr int looked = 50;
  constexpr qsizetype enough = 500'000;
  const QByteArrayView begin = text.first(std::min(text.size(), enough));
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

char SeparatorOf(QByteArrayView text) {
  for (const char separator : {';', '\t', ',', '|'}) {
    if (CommonFields(text, separator) >= 2) {
      return separator;
    }
  }
  // A list of one column, or a ragged one.
  return ';';
}

QByteArray Content(const QString& path, const QString& encoding) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"No se puede leer el archivo «%1». Compruebe sus permisos."_s.arg(path));
  }
  QByteArray bytes = file.read(mostBytes + 1);
  if (bytes.size() > mostBytes) {
    throw automation::Error(automation::InvalidProcedureCall, u"El archivo «%1» es demasiado grande."_s.arg(path));
  }
  return ListAsUtf8(std::move(bytes), encoding);
}

}  // namespace

void ReadCsv(const QString& path, const ListForm& form, SourceListener& listener, const database::Stop& stop) {
  const QByteArray text = Content(path, form.encoding);
  if (const qsizetype nul = text.indexOf('\0'); nul >= 0) {
    Refuse(QByteArrayView(text).first(nul).count('\n') + 1, u"no es texto");
  }
  Fields fields(text, form.separator.isNull() ? SeparatorOf(text) : form.separator.toLatin1());
  listener.BeginTable({QFileInfo(path).completeBaseName(), std::nullopt, {}, true});
  while (!fields.AtEnd()) {
    if (stop && stop()) {
      throw automation::Error(adodb::Stopped, u"La lectura se ha cancelado. No se ha traído nada."_s);
    }
    listener.Row(fields.NextRow());
  }
  listener.EndTable(0);
}

}  // namespace moving
