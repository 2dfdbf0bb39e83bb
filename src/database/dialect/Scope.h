#pragma once

#include "database/Schema.h"
#include "database/dialect/Ast.h"

#include <vector>

namespace database {

/// The tables that the names of a select can mean, and those of the selects around it.
class Scope {
 public:
  explicit Scope(const Schema& schema, const Scope* outer = nullptr) : m_schema(schema), m_outer(outer) {}

  struct Source {
    QString name;  ///< The alias, or the table's name in the schema.
    const Table* table = nullptr;
  };

  /// Adds a table, or both sides of a join. Raises NoSuchTable; SyntaxError for a name that is there already.
  void Add(const TableReference& reference);
  void Add(const Table& table);

  struct Found {
    const Source* source = nullptr;
    const Column* column = nullptr;
  };

  /// What a name means, `qualifier` perhaps empty. Raises NoSuchTable and NoSuchColumn.
  Found Resolve(QStringView qualifier, QStringView name) const;
  /// The source of that name in this select. Raises NoSuchTable.
  const Source& FindSource(QStringView name) const;
  const std::vector<Source>& Sources() const { return m_sources; }

 private:
  void AddSource(QString name, const Table& table);
  Found ResolveHere(QStringView qualifier, QStringView name, bool& sawQualifier) const;

  const Schema& m_schema;
  const Scope* m_outer;
  std::vector<Source> m_sources;
};

/// The table of the schema with that name. Raises NoSuchTable.
const Table& RequireTable(const Schema& schema, QStringView name);
/// The column of the table with that name. Raises NoSuchColumn.
const Column& RequireColumn(const Table& table, QStringView name);

}  // namespace database
