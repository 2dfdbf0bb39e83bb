#pragma once

#include "database/Export.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

namespace database {

/// What a column holds, and so how the dialect layer converts what is written into it.
enum class ColumnType {
  Key,       ///< The table's own identifier, given by the engine, never used twice.
  Id,        ///< The identifier of a row of another table; 0 means none.
  Text,      ///< Text of a usual number of characters; a longer one fits, too, in any engine.
  LongText,  ///< Text without a usual length.
  Boolean,   ///< -1 or 0.
  Integer,   ///< Whole number of 32 bits.
  Decimal,   ///< Floating point number.
  Money,     ///< Amount, exact to four decimals.
};

/// True for every type that a number is stored in.
constexpr bool IsNumericType(ColumnType type) {
  return type != ColumnType::Text && type != ColumnType::LongText;
}

/// One column of the schema.
struct Column {
  QString name;
  ColumnType type = ColumnType::Text;
  int length = 0;         ///< Characters (Unicode code points), for Text; 0 elsewhere.
  bool required = false;  ///< NOT NULL.
  QString defaultValue;   ///< The default as SQL text ("0"); empty for none.
  int since = 1;          ///< The schema version that brought it.
};

/// One index of the schema.
struct Index {
  QString name;
  QStringList columns;
  bool unique = false;
  bool liveOnly = false;  ///< Covers only the rows that are not marked Eliminado.
  int since = 1;
};

/// One table of the schema; columns in the order that `SELECT *` gives them.
struct KELDATOS_EXPORT Table {
  QString name;
  std::vector<Column> columns;
  std::vector<Index> indexes;
  int since = 1;

  /// The column of that name without regard to case, nullptr for none.
  const Column* FindColumn(QStringView columnName) const;
};

/// The schema, as the compiled-in description gives it: the one source of the tables' DDL, of the migrations and
/// of the column types that statements are converted by.
class KELDATOS_EXPORT Schema {
 public:
  /// The schema of this version of the program.
  static const Schema& Current();

  /// Reads a description (see schema/schema.txt for its form). Raises InvalidSchema, naming the line, for a
  /// description that is wrong; that is a fault of the program, not of its user.
  static Schema Parse(QStringView description);

  /// The highest version that anything in the description has.
  int Version() const { return m_version; }
  const std::vector<Table>& Tables() const { return m_tables; }
  /// The table of that name without regard to case, nullptr for none.
  const Table* FindTable(QStringView name) const;
  /// The table whose rows a column of identifiers names: CodPais those of the key IDPais, CodTipoDeduccionFisica those
  /// of IDTipoDeduccion, CodDeduccion, too. nullptr for a column that names none.
  const Table* ReferredTable(const Column& column) const;

 private:
  std::vector<Table> m_tables;
  QHash<QString, std::size_t> m_byName;
  int m_version = 0;
};

/// The version of the schema that this program writes.
KELDATOS_EXPORT int SchemaVersion();

}  // namespace database
