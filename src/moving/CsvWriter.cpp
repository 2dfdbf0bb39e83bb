#include "moving/CsvWriter.h"

#include "moving/CellText.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

bool LooksLikeAFormula(const QString& text) {
  return !text.isEmpty() && u"=+-@\t\r"_s.contains(text.front());
}

bool NeedsQuotes(const QString& text) {
  return std::any_of(text.begin(), text.end(),
                     [](QChar each) { return each == u';' || each == u'"' || each == u'\n' || each == u'\r'; });
}

QString Quoted(QString text) {
  return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

}  // namespace

void CsvWriter::Begin(const QString& /*name*/, const QStringList& headings) {
  if (m_hasBegun) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"En un archivo .csv cabe una sola tabla. Use uno .ods, o un archivo para cada tabla."_s);
  }
  m_hasBegun = true;
  m_file.Device().write("\xEF\xBB\xBF");
  const QList<QVariant> row(headings.begin(), headings.end());
  Write(row);
}

void CsvWriter::Write(std::span<const QVariant> row) {
  QStringList fields;
  for (const QVariant& value : row) {
    fields.append(Field(value));
  }
  // A line without anything would be no row.
  const QString line = fields.size() == 1 && fields.front().isEmpty() ? u"\"\""_s : fields.join(u';');
  m_file.Device().write((line + u"\r\n"_s).toUtf8());
}

QString CsvWriter::Field(const QVariant& value) const {
  if (IsNumber(value)) {
    return PlainNumber(value).replace(u'.', u',');
  }
  if (value.typeId() == QMetaType::Bool) {
    return value.toBool() ? u"Sí"_s : u"No"_s;
  }
  QString text = automation::Text(value);
  if (m_purpose == Purpose::List && LooksLikeAFormula(text)) {
    text.prepend(u'\'');
  }
  return NeedsQuotes(text) ? Quoted(text) : text;
}

void CsvWriter::Finish() {
  m_file.Finish();
}

}  // namespace moving
