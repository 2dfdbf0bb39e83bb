#include "moving/OdsWriter.h"

#include "moving/CellText.h"
#include "moving/ZipPacking.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

// Of the programs that read such files.
constexpr int mostRows = 1'048'576;

constexpr char mediaType[] = "application/vnd.oasis.opendocument.spreadsheet";

const QString office = u"urn:oasis:names:tc:opendocument:xmlns:office:1.0"_s;
const QString table = u"urn:oasis:names:tc:opendocument:xmlns:table:1.0"_s;
const QString textNames = u"urn:oasis:names:tc:opendocument:xmlns:text:1.0"_s;

QByteArray Manifest() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
         "<manifest:manifest xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\" "
         "manifest:version=\"1.2\"><manifest:file-entry manifest:full-path=\"/\" manifest:version=\"1.2\" "
         "manifest:media-type=\"" +
         QByteArray(mediaType) +
         "\"/><manifest:file-entry manifest:full-path=\"content.xml\" manifest:media-type=\"text/xml\"/>"
         "</manifest:manifest>";
}

bool IsAllowedInXml(QChar each) {
  return each >= u' ' ? each != QChar(0xFFFE) && each != QChar(0xFFFF)
                      : each == u'\t' || each == u'\n' || each == u'\r';
}

// What no XML can hold (most control characters, lone surrogates) becomes U+FFFD.
QString ForXml(QString text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar each = text.at(i);
    if (each.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
      ++i;
    } else if (each.isSurrogate() || !IsAllowedInXml(each)) {
      text[i] = QChar::ReplacementCharacter;
    }
  }
  return text;
}

// Characters that names of sheets may not have.
QString SheetName(QString name) {
  static const QRegularExpression forbidden(u"[\\[\\]*?:/\\\\']"_s);
  return ForXml(name.replace(forbidden, u" "_s));
}

}  // namespace

OdsWriter::OdsWriter(const QString& path)
    : m_path(path), m_file(path), m_content(QFileInfo(path).absolutePath() + u"/.kel-XXXXXX"_s) {
  if (!m_content.open()) {
    Fail();
  }
  m_xml.setDevice(&m_content);
  m_xml.writeStartDocument();
  m_xml.writeNamespace(office, u"office"_s);
  m_xml.writeNamespace(table, u"table"_s);
  m_xml.writeNamespace(textNames, u"text"_s);
  m_xml.writeStartElement(office, u"document-content"_s);
  m_xml.writeAttribute(office, u"version"_s, u"1.2"_s);
  m_xml.writeStartElement(office, u"body"_s);
  m_xml.writeStartElement(office, u"spreadsheet"_s);
}

void OdsWriter::Begin(const QString& name, const QStringList& headings) {
  EndTable();
  m_xml.writeStartElement(table, u"table"_s);
  m_xml.writeAttribute(table, u"name"_s, SheetName(name));
  m_rows = 0;
  m_isInTable = true;
  const QList<QVariant> row(headings.begin(), headings.end());
  Write(row);
}

void OdsWriter::EndTable() {
  if (m_isInTable) {
    m_xml.writeEndElement();
  }
  m_isInTable = false;
}

void OdsWriter::Write(std::span<const QVariant> row) {
  if (++m_rows > mostRows) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"En una hoja de cálculo caben %1 filas, y son más. Use un archivo .csv."_s.arg(mostRows));
  }
  m_xml.writeStartElement(table, u"table-row"_s);
  for (const QVariant& value : row) {
    Cell(value);
  }
  m_xml.writeEndElement();
}

void OdsWriter::Cell(const QVariant& value) {
  if (IsNumber(value)) {
    const QString number = PlainNumber(value);
    m_xml.writeStartElement(table, u"table-cell"_s);
    m_xml.writeAttribute(office, u"value-type"_s, u"float"_s);
    m_xml.writeAttribute(office, u"value"_s, number);
    m_xml.writeTextElement(textNames, u"p"_s, QString(number).replace(u'.', u','));
    m_xml.writeEndElement();
  } else if (value.typeId() == QMetaType::Bool) {
    TextCell(value.toBool() ? u"Sí"_s : u"No"_s);
  } else if (const QString text = ForXml(automation::Text(value)); !text.isEmpty()) {
    TextCell(text);
  } else {
    m_xml.writeEmptyElement(table, u"table-cell"_s);
  }
}

void OdsWriter::TextCell(const QString& text) {
  m_xml.writeStartElement(table, u"table-cell"_s);
  m_xml.writeAttribute(office, u"value-type"_s, u"string"_s);
  if (text.contains(u'\r')) {
    // Paragraphs have one kind of break.
    m_xml.writeAttribute(office, u"string-value"_s, text);
  }
  static const QRegularExpression breaks(u"\r\n|\r|\n"_s);
  for (const QString& paragraph : text.split(breaks)) {
    m_xml.writeStartElement(textNames, u"p"_s);
    Paragraph(paragraph);
    m_xml.writeEndElement();
  }
  m_xml.writeEndElement();
}

// Blanks in a row count as one, and those at the ends as none, unless they are said in words.
void OdsWriter::Paragraph(const QString& text) {
  qsizetype written = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool isTab = text.at(i) == u'\t';
    const bool isLooseBlank =
        text.at(i) == u' ' && (i == 0 || i + 1 == text.size() || text.at(i - 1) == u' ' || text.at(i - 1) == u'\t');
    if (isTab || isLooseBlank) {
      m_xml.writeCharacters(text.mid(written, i - written));
      m_xml.writeEmptyElement(textNames, isTab ? u"tab"_s : u"s"_s);
      written = i + 1;
    }
  }
  m_xml.writeCharacters(written == 0 ? text : text.mid(written));
}

void OdsWriter::Finish() {
  EndTable();
  m_xml.writeEndDocument();
  const bool isWhole = !m_xml.hasError() && m_content.flush() && m_content.error() == QFile::NoError;
  // The media type comes first and unpacked, so that the kind of file shows in its first bytes.
  if (!isWhole || !Pack({{"mimetype", mediaType, nullptr, false},
                         {"META-INF/manifest.xml", Manifest(), nullptr, true},
                         {"content.xml", {}, &m_content, true}},
                        m_file.Device())) {
    Fail();
  }
  m_file.Finish();
}

void OdsWriter::Fail() const {
  throw automation::Error(
      automation::InvalidProcedureCall,
      u"No se puede escribir el archivo «%1». Compruebe la carpeta, sus permisos y si queda sitio en el disco."_s.arg(
          m_path));
}

}  // namespace moving
