#include "database/sqlite/SqliteDdl.h"

#include "database/sqlite/SqliteTarget.h"

using namespace Qt::StringLiterals;

namespace database {

const Target& SqliteDdl::ItsTarget() const {
  return SqliteTarget::Instance();
}

QString SqliteDdl::Type(const Column& column) const {
  switch (column.type) {
    case ColumnType::Key:
      return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    case ColumnType::Text:
    case ColumnType::LongText:
      return u"TEXT COLLATE %1"_s.arg(sqlite::collation);
    case ColumnType::Decimal:
    case ColumnType::Money:
      return u"REAL"_s;
    default:
      return u"INTEGER"_s;
  }
}

QString SqliteDdl::TableOptions() const {
  return u" STRICT"_s;
}

QString SqliteDdl::Covered(const Table& /*table*/, const Index& index) const {
  QStringList names;
  for (const QString& column : index.columns) {
    names += QuotedName(column);
  }
  return u'(' + names.join(u", "_s) + u')';
}

}  // namespace database
