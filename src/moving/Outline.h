#pragma once

#include "moving/ReadFile.h"

#include <QStringList>

namespace moving {

/// A table of a file, to be looked at before anything is decided.
struct OutlinedTable {
  SourceTable table;
  qint64 rows = 0;
  QList<SourceRow> first;  ///< Its first twenty rows.
};

/// What is in a file.
struct Outline {
  QList<OutlinedTable> tables;
  QStringList elsewhere;
  QStringList unreadable;

  qint64 Rows() const;
};

/// Reads the whole file. Raises what ReadFile raises.
Outline ReadOutline(const QString& path, const ReadWishes& wishes, const database::Stop& stop);

}  // namespace moving
