#include "reader/XlsxParts.h"

#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

#include <functional>

using namespace Qt::StringLiterals;

namespace reader {

namespace {

// Calls `take` at each element's beginning; false where the part is damaged. A part that is not there has no elements.
bool ForEachElement(const ZipFile& file, const QByteArray& part, const std::function<void(QXmlStreamReader&)>& take) {
  const auto device = file.Open(part);
  if (!device) {
    return true;
  }
  QXmlStreamReader xml(device.get());
  while (!xml.atEnd()) {
    xml.readNext();
    if (xml.isDTD()) {
      return false;
    }
    if (xml.isStartElement()) {
      take(xml);
    }
  }
  return !xml.hasError();
}

// Numbers of built-in formats that show a date (ECMA-376 part 1, 18.8.30).
bool IsBuiltInDate(int format) {
  return (format >= 14 && format <= 17) || format == 22 || (format >= 27 && format <= 36) ||
         (format >= 50 && format <= 58);
}

// A format's own code shows a date if it has a year or a day outside what is quoted, escaped or in brackets.
bool ShowsADate(QStringView code) {
  QChar until;
  for (qsizetype i = 0; i < code.size(); ++i) {
    const QChar each = code.at(i).toLower();
    if (!until.isNull()) {
      until = each == until ? QChar() : until;
    } else if (each == u'"') {
      until = u'"';
    } else if (each == u'[') {
      until = u']';
    } else if (each == u'\\' || each == u'_' || each == u'*') {
      ++i;
    } else if (each == u'y' || each == u'd') {
      return true;
    }
  }
  return false;
}

QByteArray PartOf(const QString& target) {
  const QString path = target.startsWith(u'/') ? target.mid(1) : u"xl/"_s + target;
  return path.toUtf8();
}

}  // namespace

std::optional<Workbook> ReadWorkbook(const ZipFile& file) {
  QHash<QString, QString> targets;
  const bool hasTargets = ForEachElement(file, "xl/_rels/workbook.xml.rels", [&](const QXmlStreamReader& xml) {
    const QXmlStreamAttributes given = xml.attributes();
    targets.insert(given.value(u"Id"_s).toString(), given.value(u"Target"_s).toString());
  });
  Workbook workbook;
  const bool isWhole = ForEachElement(file, "xl/workbook.xml", [&](const QXmlStreamReader& xml) {
    const QXmlStreamAttributes given = xml.attributes();
    if (xml.name() == u"workbookPr") {
      workbook.from1904 = given.value(u"date1904"_s) == u"1" || given.value(u"date1904"_s) == u"true";
    } else if (xml.name() == u"sheet") {
      const QString target = targets.value(given.value(u"r:id"_s).toString());
      workbook.sheets.append({given.value(u"name"_s).toUtf8(), PartOf(target)});
    }
  });
  return hasTargets && isWhole ? std::optional(workbook) : std::nullopt;
}

QByteArray PlainText(const QString& text) {
  constexpr qsizetype length = 7;  // _xHHHH_
  constexpr qsizetype digits = 4;
  constexpr int hexadecimal = 16;
  QString plain = text;
  for (qsizetype at = plain.indexOf(u"_x"); at >= 0 && at + length <= plain.size(); at = plain.indexOf(u"_x", at + 1)) {
    bool isNumber = false;
    const ushort code = QStringView(plain).mid(at + 2, digits).toUShort(&isNumber, hexadecimal);
    if (isNumber && plain.at(at + length - 1) == u'_') {
      plain.replace(at, length, QChar(code));
    }
  }
  return plain.toUtf8();
}

std::optional<QByteArrayList> ReadSharedTexts(const ZipFile& file) {
  QByteArrayList texts;
  const bool isWhole = ForEachElement(file, "xl/sharedStrings.xml", [&](QXmlStreamReader& xml) {
    if (xml.name() == u"si") {
      texts.append(QByteArray());
    } else if (xml.name() == u"rPh") {
      xml.skipCurrentElement();
    } else if (xml.name() == u"t" && !texts.isEmpty()) {
      texts.last() += PlainText(xml.readElementText());
    }
  });
  return isWhole ? std::optional(texts) : std::nullopt;
}

std::optional<std::vector<bool>> ReadDateStyles(const ZipFile& file) {
  QSet<int> dates;
  std::vector<bool> styles;
  bool isInCells = false;
  const bool isWhole = ForEachElement(file, "xl/styles.xml", [&](const QXmlStreamReader& xml) {
    const QXmlStreamAttributes given = xml.attributes();
    if (xml.name() == u"numFmt" && ShowsADate(given.value(u"formatCode"_s))) {
      dates.insert(given.value(u"numFmtId"_s).toInt());
    } else if (xml.name() == u"cellXfs" || xml.name() == u"cellStyleXfs" || xml.name() == u"cellStyles") {
      isInCells = xml.name() == u"cellXfs";
    } else if (xml.name() == u"xf" && isInCells) {
      const int format = given.value(u"numFmtId"_s).toInt();
      styles.push_back(IsBuiltInDate(format) || dates.contains(format));
    }
  });
  return isWhole ? std::optional(styles) : std::nullopt;
}

}  // namespace reader
