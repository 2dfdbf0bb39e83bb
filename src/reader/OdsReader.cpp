#include "reader/OdsReader.h"

#include "reader/SheetRows.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace reader {

namespace {

class Content {
 public:
  Content(QIODevice& device, FrameWriter& frames) : m_xml(&device), m_rows(frames) {}

  bool Read() {
    while (!m_xml.atEnd()) {
      m_xml.readNext();
      if (m_xml.isDTD()) {
        return false;
      }
      if (m_xml.isStartElement() && !Start()) {
        return false;
      }
      if (m_xml.isEndElement() && !End()) {
        return false;
      }
    }
    return !m_xml.hasError() && m_hasSheet;
  }

 private:
  bool IsNamed(QStringView name) const { return m_xml.name() == name; }

  static qint64 Repeated(const QXmlStreamAttributes& given, const QString& name) {
    const QStringView text = given.value(name);
    bool isNumber = true;
    const qint64 times = text.isEmpty() ? 1 : text.toLongLong(&isNumber);
    return isNumber ? times : -1;
  }

  bool Start() {
    const QXmlStreamAttributes given = m_xml.attributes();
    if (IsNamed(u"table")) {
      // A sheet inside a cell is none of the file's sheets.
      if (++m_depth == 1) {
        m_rows.BeginSheet(given.value(u"table:name"_s).toUtf8());
        m_hasSheet = true;
      }
    } else if (m_depth == 1 && IsNamed(u"table-row")) {
      m_rowRepeated = Repeated(given, u"table:number-rows-repeated"_s);
    } else if (m_depth == 1 && (IsNamed(u"table-cell") || IsNamed(u"covered-table-cell"))) {
      return ReadCell(given);
    }
    return true;
  }

  bool End() {
    if (IsNamed(u"table") && --m_depth == 0) {
      m_rows.EndSheet();
    } else if (m_depth == 1 && IsNamed(u"table-row")) {
      return m_rows.EndRow(m_rowRepeated);
    }
    return true;
  }

  bool ReadCell(const QXmlStreamAttributes& given) {
    const qint64 times = Repeated(given, u"table:number-columns-repeated"_s);
    const QStringView type = given.value(u"office:value-type"_s);
    const bool isError =
        given.value(u"calcext:value-type"_s) == u"error" || (type.isEmpty() && given.hasAttribute(u"table:formula"_s));
    const QString shown = ReadText();
    if (isError) {
      return m_rows.AddCells(times, Cell::Error, {});
    }
    if (type == u"float" || type == u"percentage" || type == u"currency") {
      return m_rows.AddCells(times, Cell::Number, given.value(u"office:value"_s).toUtf8());
    }
    if (type == u"date") {
      return m_rows.AddCells(times, Cell::Date, given.value(u"office:date-value"_s).toUtf8());
    }
    if (type == u"boolean") {
      return m_rows.AddCells(times, Cell::Boolean, given.value(u"office:boolean-value"_s) == u"true" ? "-1" : "0");
    }
    const QStringView whole = given.value(u"office:string-value"_s);
    const QByteArray text = whole.isEmpty() ? shown.toUtf8() : whole.toUtf8();
    return m_rows.AddCells(times, text.isEmpty() ? Cell::None : Cell::Text, text);
  }

  // The cell's paragraphs, up to its end; notes and drawings are no part of its value.
  QString ReadText() {
    QString text;
    int depth = 1;
    int paragraphs = 0;
    bool isInParagraph = false;
    while (depth > 0 && !m_xml.atEnd()) {
      m_xml.readNext();
      if (m_xml.isStartElement()) {
        if (IsNamed(u"annotation") || IsNamed(u"shapes") || IsNamed(u"frame") || IsNamed(u"table")) {
          m_xml.skipCurrentElement();
          continue;
        }
        ++depth;
        if (IsNamed(u"p")) {
          text += paragraphs++ > 0 ? u"\n"_s : QString();
          isInParagraph = true;
        } else {
          text += Said();
        }
      } else if (m_xml.isEndElement()) {
        --depth;
        isInParagraph = isInParagraph && !IsNamed(u"p");
      } else if (m_xml.isCharacters() && isInParagraph) {
        text += m_xml.text();
      }
    }
    return text;
  }

  // Blanks and breaks that are said in words.
  QString Said() const {
    if (IsNamed(u"tab")) {
      return u"\t"_s;
    }
    if (IsNamed(u"line-break")) {
      return u"\n"_s;
    }
    constexpr qint64 mostBlanks = 10'000;
    const qint64 blanks = IsNamed(u"s") ? Repeated(m_xml.attributes(), u"text:c"_s) : 0;
    return QString(qBound(qint64(0), blanks, mostBlanks), u' ');
  }

  QXmlStreamReader m_xml;
  SheetRows m_rows;
  int m_depth = 0;
  qint64 m_rowRepeated = 1;
  bool m_hasSheet = false;
};

QByteArray Part(const ZipFile& file, const char* name) {
  constexpr qint64 enough = 1 << 20;
  const auto part = file.Open(name);
  return part ? part->read(enough) : QByteArray();
}

}  // namespace

bool ReadOds(const ZipFile& file, FrameWriter& frames) {
  frames.File("ods");
  const auto content = file.Open("content.xml");
  const QByteArray kind = Part(file, "mimetype");
  if (!content || (!kind.isEmpty() && !kind.startsWith("application/vnd.oasis.opendocument.spreadsheet"))) {
    frames.Plain(Frame::Other);
    return false;
  }
  if (Part(file, "META-INF/manifest.xml").contains(":encryption-data")) {
    frames.Plain(Frame::Protected);
    return false;
  }
  return Content(*content, frames).Read();
}

}  // namespace reader
