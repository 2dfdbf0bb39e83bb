#pragma once

#include "database/Schema.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace moving {

/// How a table comes in from another program's file; the words are those of schema/traslado.txt.
struct TableRule {
  const database::Table* table = nullptr;
  QList<QStringList> same;
  QString identifier;  ///< nif
  QString beside;
  QStringList owners;
  QStringList alike;
  QString grant;
  QHash<QString, int> widths;  ///< pad, by columns in small letters.
  QString postcode;
  QStringList dates;
  QStringList zeros;
  QString freeKey;     ///< The column of `free`,
  QString freeText;    ///< and its text.
  QString unique;      ///< The column of `unique`,
  QString uniqueName;  ///< and its name.
  QStringList settings;
  bool onlyKnown = false;
  bool asks = false;

  /// Every column that decides which record a row is.
  QStringList MatchColumns() const;
};

/// The rules, tables that others refer to first.
const std::vector<TableRule>& TableRules();

}  // namespace moving
