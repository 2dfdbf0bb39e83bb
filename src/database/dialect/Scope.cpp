#include "database/dialect/Scope.h"

#include "database/Errors.h"

using namespace Qt::StringLiterals;

namespace database {

void Scope::Add(const TableReference& reference) {
  if (reference.left != nullptr) {
    Add(*reference.left);
    Add(*reference.right);
    return;
  }
  const Table& table = RequireTable(m_schema, reference.name);
  AddSource(reference.alias.isEmpty() ? table.name : reference.alias.toString(), table);
}

void Scope::Add(const Table& table) {
  AddSource(table.name, table);
}

void Scope::AddSource(QString name, const Table& table) {
  for (const Source& source : m_sources) {
    if (source.name.compare(name, Qt::CaseInsensitive) == 0) {
      throw automation::Error(adodb::SyntaxError,
                              u"Error de sintaxis en la instrucción SQL: la tabla «%1» está dos veces. "
                              "Póngale otro nombre con AS."_s.arg(name));
    }
  }
  m_sources.push_back({std::move(name), &table});
}

Scope::Found Scope::ResolveHere(QStringView qualifier, QStringView name, bool& sawQualifier) const {
  Found found;
  for (const Source& source : m_sources) {
    if (!qualifier.isEmpty() && qualifier.compare(source.name, Qt::CaseInsensitive) != 0) {
      continue;
    }
    sawQualifier = true;
    const Column* column = source.table->FindColumn(name);
    if (column != nullptr && found.column != nullptr) {
      throw AmbiguousColumn(name);
    }
    if (column != nullptr) {
      found = {&source, column};
    }
  }
  return found;
}

Scope::Found Scope::Resolve(QStringView qualifier, QStringView name) const {
  bool sawQualifier = false;
  for (const Scope* scope = this; scope != nullptr; scope = scope->m_outer) {
    const Found found = scope->ResolveHere(qualifier, name, sawQualifier);
    if (found.column != nullptr) {
      return found;
    }
  }
  if (!qualifier.isEmpty() && !sawQualifier) {
    throw MissingTable(qualifier);
  }
  throw MissingColumn(name);
}

const Scope::Source& Scope::FindSource(QStringView name) const {
  for (const Source& source : m_sources) {
    if (name.compare(source.name, Qt::CaseInsensitive) == 0) {
      return source;
    }
  }
  throw MissingTable(name);
}

const Table& RequireTable(const Schema& schema, QStringView name) {
  const Table* table = schema.FindTable(name);
  if (table == nullptr) {
    throw MissingTable(name);
  }
  return *table;
}

const Column& RequireColumn(const Table& table, QStringView name) {
  const Column* column = table.FindColumn(name);
  if (column == nullptr) {
    throw MissingColumn(name);
  }
  return *column;
}

}  // namespace database
