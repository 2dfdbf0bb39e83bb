#pragma once

#include "moving/Source.h"
#include "moving/TableRules.h"

#include <QMap>

#include <optional>

namespace moving {

/// What a person says for a table or column of a file that has no place here.
const QString nothingHere = QStringLiteral("-");

/// What a person said about names that do not match by themselves; names of the file in any case.
struct NameWishes {
  QMap<QString, QString>
      tables;  ///< Table of the file, "*" for any other, to table here; "-" for one that does not come in.
  QMap<QString, QString> columns;  ///< "Table.Column" of the file to column here.

  bool operator==(const NameWishes&) const = default;
};

/// Where a table of a file goes.
struct TableMatch {
  const TableRule* rule = nullptr;
  /// For each column of the file its column here, nullptr for one that goes nowhere.
  QList<const database::Column*> columns;
  int key = -1;  ///< Position of the key; -1 where the rows have none.
};

/// Names without case, accents, anything but letters and digits.
QString FoldedName(const QString& name);

/// The table here that a table's name or a wish means, whether its columns fit or not; nullptr for none.
const TableRule* MeantTable(const SourceTable& table, const NameWishes& wishes);
/// For each column its column of that table, nullptr for one that goes nowhere.
QList<const database::Column*> MeantColumns(const TableRule& rule, const SourceTable& table, const NameWishes& wishes);

/// Whether half of a row's cells, and two at least, name columns of one table here.
bool AreHeadings(const SourceRow& row);

/// The match of a table by its name and columns: equal names; else without "tbl", "t" and a plural ending; it must have
/// the key, or be a list without one, and half of the other columns or four of them; one column is enough where a wish
/// names the table. Nothing where no table fits.
std::optional<TableMatch> MatchTable(const SourceTable& table, const NameWishes& wishes);

}  // namespace moving
