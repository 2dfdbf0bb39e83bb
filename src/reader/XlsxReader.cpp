#include "reader/XlsxReader.h"

#include "reader/DateText.h"
#include "reader/SheetRows.h"
#include "reader/XlsxParts.h"

#include <QLocale>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace reader {

namespace {

constexpr int daysTo1904 = 1462;

// The column of "BC12", from 0; -1 for what is none.
int ColumnOf(QStringView place) {
  int column = 0;
  qsizetype i = 0;
  for (; i < place.size() && i < 3 && place.at(i) >= u'A' && place.at(i) <= u'Z'; ++i) {
    column = column * 26 + (place.at(i).unicode() - u'A' + 1);
  }
  return i > 0 ? column - 1 : -1;
}

class Sheet {
 public:
  Sheet(QIODevice& device, const Workbook& workbook, const QByteArrayList& texts, const std::vector<bool>& dates,
        SheetRows& rows)
      : m_xml(&device), m_workbook(&workbook), m_texts(&texts), m_dates(&dates), m_rows(&rows) {}

  bool Read() {
    while (!m_xml.atEnd()) {
      m_xml.readNext();
      const bool isGood = !m_xml.isDTD() && (!m_xml.isStartElement() || Start()) && (!m_xml.isEndElement() || End());
      if (!isGood) {
        return false;
      }
    }
    return !m_xml.hasError();
  }

 private:
  bool Start() {
    const QXmlStreamAttributes given = m_xml.attributes();
    if (m_xml.name() == u"row") {
      return StartRow(given.value(u"r"_s));
    }
    return m_xml.name() != u"c" || ReadCell(given);
  }

  bool End() {
    if (m_xml.name() != u"row") {
      return true;
    }
    ++m_row;
    m_column = 0;
    return m_rows->EndRow(1);
  }

  // Rows and cells that are empty are not there at all.
  bool StartRow(QStringView number) {
    const qint64 row = number.isEmpty() ? m_row : number.toLongLong() - 1;
    if (row < m_row) {
      return false;
    }
    const qint64 skipped = row - m_row;
    m_row = row;
    return m_rows->EndRow(skipped);
  }

  bool ReadCell(const QXmlStreamAttributes& given) {
    const QStringView place = given.value(u"r"_s);
    const int column = place.isEmpty() ? m_column : ColumnOf(place);
    if (column < m_column || !m_rows->AddCells(column - m_column, Cell::None, {})) {
      return false;
    }
    m_column = column + 1;
    QString value;
    QString inlined;
    bool isCalculated = false;
    bool hasValue = false;
    while (!m_xml.atEnd() && !(m_xml.isEndElement() && m_xml.name() == u"c")) {
      m_xml.readNext();
      if (m_xml.isStartElement() && m_xml.name() == u"v") {
        value = m_xml.readElementText();
        hasValue = true;
      } else if (m_xml.isStartElement() && m_xml.name() == u"f") {
        isCalculated = true;
      } else if (m_xml.isStartElement() && m_xml.name() == u"rPh") {
        m_xml.skipCurrentElement();
      } else if (m_xml.isStartElement() && m_xml.name() == u"t") {
        inlined += m_xml.readElementText();
      }
    }
    const QStringView type = given.value(u"t"_s);
    // The program that made the file left the calculation to others.
    const bool isOpen = isCalculated && (type == u"str" ? !hasValue : value.isEmpty());
    return isOpen ? m_rows->AddCells(1, Cell::Error, {}) : Add(type, given.value(u"s"_s), value, inlined);
  }

  bool Add(QStringView type, QStringView style, const QString& value, const QString& inlined) {
    if (type == u"s") {
      bool isNumber = false;
      const qsizetype number = value.toLongLong(&isNumber);
      return isNumber && number >= 0 && number < m_texts->size() && AddText(m_texts->at(number));
    }
    if (type == u"inlineStr" || type == u"str") {
      return AddText(PlainText(type == u"str" ? value : inlined));
    }
    if (type == u"e") {
      return m_rows->AddCells(1, Cell::Error, {});
    }
    if (value.isEmpty()) {
      return m_rows->AddCells(1, Cell::None, {});
    }
    if (type == u"b") {
      return m_rows->AddCells(1, Cell::Boolean, value == u"1" ? "-1" : "0");
    }
    if (type == u"d") {
      return m_rows->AddCells(1, Cell::Date, value.toUtf8());
    }
    return AddNumber(style.toUInt(), value);
  }

  bool AddText(const QByteArray& text) { return m_rows->AddCells(1, text.isEmpty() ? Cell::None : Cell::Text, text); }

  bool AddNumber(std::size_t style, const QString& value) {
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber) {
      return m_rows->AddCells(1, Cell::Unreadable, {});
    }
    if (style < m_dates->size() && (*m_dates)[style]) {
      const QByteArray date = DateText(m_workbook->from1904 ? number + daysTo1904 : number);
      return m_rows->AddCells(1, date.isEmpty() ? Cell::Unreadable : Cell::Date, date);
    }
    // Half of the programs write 1E-3; in full it is a number to everybody.
    return m_rows->AddCells(1, Cell::Number, QByteArray::number(number, 'f', QLocale::FloatingPointShortest));
  }

  QXmlStreamReader m_xml;
  const Workbook* m_workbook;
  const QByteArrayList* m_texts;
  const std::vector<bool>* m_dates;
  SheetRows* m_rows;
  qint64 m_row = 0;
  int m_column = 0;
};

}  // namespace

bool ReadXlsx(const ZipFile& file, FrameWriter& frames) {
  const auto workbook = ReadWorkbook(file);
  const auto texts = ReadSharedTexts(file);
  const auto dates = ReadDateStyles(file);
  if (!workbook || !texts || !dates) {
    return false;
  }
  frames.File("xlsx");
  SheetRows rows(frames);
  for (const WorkbookSheet& sheet : workbook->sheets) {
    const auto device = file.Open(sheet.part);
    // Of a chart that has a page for itself there are no cells.
    if (!device) {
      frames.Named(Frame::Unreadable, sheet.name);
      continue;
    }
    rows.BeginSheet(sheet.name);
    if (!Sheet(*device, *workbook, *texts, *dates, rows).Read()) {
      return false;
    }
    rows.EndSheet();
  }
  return true;
}

}  // namespace reader
