#include "documents/rtf/Portrait.h"

#include "documents/rtf/Preamble.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/TablePath.h"

#include <QBrush>
#include <QCryptographicHash>
#include <QHash>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextFrame>
#include <QTextList>
#include <QTextOption>
#include <QTextTable>

namespace support {

namespace {

QString Digest(const QByteArray& bytes) {
  return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(12)) + u'/' +
         QString::number(bytes.size());
}

QString Describe(const QTextFormat& format);

QString Value(const QVariant& value) {
  if (value.canConvert<rtf::Piece>()) {
    return Digest(value.value<rtf::Piece>().Bytes());
  }
  if (value.canConvert<rtf::Links>()) {
    QString text;
    for (const rtf::Link& link : value.value<rtf::Links>()) {
      text += QStringLiteral("%1:%2:%3:%4 ")
                  .arg(link.serial)
                  .arg(link.isObject)
                  .arg(Digest(link.head.Bytes()), link.target);
    }
    return text;
  }
  if (value.userType() == QMetaType::QBrush) {
    return value.value<QBrush>().color().name();
  }
  if (value.userType() == qMetaTypeId<rtf::EmptyCells>()) {
    QString text;
    for (const rtf::EmptyCell& cell : value.value<rtf::EmptyCells>()) {
      text += QStringLiteral("(%1,%2").arg(cell.row).arg(cell.cell) + Describe(cell.format) + u';' +
              Describe(cell.mark) + u')';
    }
    return text;
  }
  if (value.userType() == QMetaType::QVariantList && value.toList().value(0).userType() == QMetaType::QTextLength) {
    QString text;
    for (const QVariant& width : value.toList()) {
      text += QString::number(width.value<QTextLength>().rawValue()) + u' ';
    }
    return text;
  }
  if (value.userType() == QMetaType::QVariantList) {
    QString text;
    for (const QVariant& item : value.toList()) {
      const auto tab = item.value<QTextOption::Tab>();
      text += QStringLiteral("%1/%2 ").arg(tab.position).arg(int(tab.type));
    }
    return text;
  }
  return value.userType() == QMetaType::QStringList ? value.toStringList().join(u'+') : value.toString();
}

QString Describe(const QTextFormat& format) {
  QString text;
  const QMap<int, QVariant> properties = format.properties();
  for (auto it = properties.begin(); it != properties.end(); ++it) {
    // The number of a list or frame, not what it is.
    if (it.key() != QTextFormat::ObjectIndex) {
      text += QStringLiteral(" %1=").arg(it.key(), 0, 16) + Value(it.value());
    }
  }
  return text;
}

QString Describe(const QTextDocument& document) {
  const auto preamble = document.rootFrame()->frameFormat().property(rtf::PreambleProperty).value<rtf::Preamble>();
  const rtf::PreambleData& data = *preamble.data;
  return QStringLiteral("preamble %1 %2 %3 %4 %5 %6 %7")
      .arg(data.codePage)
      .arg(data.defaultTab)
      .arg(data.sectionDefaults)
      .arg(Digest(data.listTables), Digest(data.groups), rtf::ToText(data.words.Words()),
           rtf::ToText(data.sectionWords.Words()) + Digest(data.sectionGroups));
}

}  // namespace

QStringList Portrait(const QTextDocument& document) {
  QStringList lines{Describe(document)};
  QHash<const QTextList*, int> lists;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    const QTextTable* table = QTextCursor(block).currentTable();
    if (table != nullptr && table->firstPosition() == block.position()) {
      lines.append(QStringLiteral("table %1 %2").arg(table->rows()).arg(table->columns()) + Describe(table->format()));
    }
    lines.append(QStringLiteral("paragraph") + Describe(block.blockFormat()));
    if (const QTextList* list = block.textList()) {
      const int number = lists.value(list, static_cast<int>(lists.size()));
      lists.insert(list, number);
      lines.append(QStringLiteral("list %1").arg(number) + Describe(list->format()));
    }
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      lines.append(QStringLiteral("run '%1'").arg(at.fragment().text()) + Describe(at.fragment().charFormat()));
    }
    lines.append(QStringLiteral("end") + Describe(block.charFormat()));
  }
  return lines;
}

QString Difference(const QStringList& one, const QStringList& other) {
  for (qsizetype i = 0; i < qMax(one.size(), other.size()); ++i) {
    if (one.value(i) != other.value(i)) {
      return QStringLiteral("line %1\n  %2\n  %3").arg(i).arg(one.value(i).left(1500), other.value(i).left(1500));
    }
  }
  return {};
}

}  // namespace support
