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

/// The runs of the body in order. Attributes come from automatic styles with their parents; a list item has the
/// attribute "list", its level's kind ("bullet" or the number format).
QList<Run> ReadRuns(const QString& path);

}  // namespace interop
