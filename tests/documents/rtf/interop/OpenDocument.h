#pragma once

#include <QList>
#include <QMap>
#include <QString>

namespace interop {

/// A run of text in a flat OpenDocument file, with the attributes of its styles: paragraph's, then characters'.
struct Run {
  QString text;
  QMap<QString, QString> attributes;
};

inline const QString paragraphMark = QStringLiteral("\u00B6");
inline const QString cellMark = QStringLiteral("\u00A6");

/// The runs in order, a mark in front of each paragraph and cell. Attributes come from automatic styles with their
/// parents, the defaults and the indents of their list's first level; a list item has the
/// attribute "list", its level's kind ("bullet" or the number format).
QList<Run> ReadRuns(const QString& path);

/// The rows of all tables in order, each cell as its text, paragraphs parted by a blank, and "(columns x rows)" where it
/// spans more than one; those that are part of another are left out. A table in a cell stands where its cell ends.
QList<QStringList> ReadRows(const QString& path);

}  // namespace interop
