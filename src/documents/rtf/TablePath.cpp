#include "documents/rtf/TablePath.h"

#include "documents/rtf/Properties.h"

#include <QStringList>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace rtf {

size_t HashOf(const TablePath& path) {
  size_t hash = 0;
  for (const TableLevel& level : path) {
    hash = qHashMulti(hash, level.row, level.cell, level.definition);
  }
  return hash;
}

void SetPath(QTextBlockFormat& format, const TablePath& path) {
  if (path.isEmpty()) {
    format.clearProperty(TableProperty);
    format.clearProperty(TableDefinitionsProperty);
    return;
  }
  QString places;
  QStringList definitions;
  for (const TableLevel& level : path) {
    places += QStringLiteral("%1,%2,%3|").arg(level.row).arg(level.cell).arg(qHash(level.definition));
    definitions.append(level.definition);
  }
  format.setProperty(TableProperty, places);
  format.setProperty(TableDefinitionsProperty, definitions);
}

TablePath PathOf(const QTextBlockFormat& format) {
  TablePath path;
  const QString places = format.stringProperty(TableProperty);
  const QStringList definitions = format.property(TableDefinitionsProperty).toStringList();
  const auto levels = QStringView(places).split(u'|', Qt::SkipEmptyParts);
  for (qsizetype i = 0; i < levels.size() && i < definitions.size(); ++i) {
    const auto fields = levels[i].split(u',');
    path.append({.row = fields.value(0).toInt(), .cell = fields.value(1).toInt(), .definition = definitions[i]});
  }
  return path;
}

namespace {

/// The levels at the front that all paragraphs share: cells around the whole document.
qsizetype CommonCells(const QTextDocument& document) {
  const TablePath first = PathOf(document.begin().blockFormat());
  qsizetype common = first.size();
  for (QTextBlock block = document.begin(); block.isValid() && common > 0; block = block.next()) {
    const TablePath path = PathOf(block.blockFormat());
    common = std::min(common, path.size());
    const auto [end, other] = std::mismatch(first.begin(), first.begin() + common, path.begin());
    common = end - first.begin();
  }
  return common;
}

}  // namespace

void MoveToCell(QTextDocument& document, const TablePath& cell) {
  const qsizetype common = CommonCells(document);
  if (common == 0 && cell.isEmpty()) {
    return;
  }
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    QTextBlockFormat format = block.blockFormat();
    const TablePath path = cell + PathOf(format).mid(common);
    SetPath(format, path.first(std::min<qsizetype>(path.size(), deepestTable)));
    QTextCursor(block).setBlockFormat(format);
  }
}

}  // namespace rtf
