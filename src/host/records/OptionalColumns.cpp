#include "host/records/OptionalColumns.h"

#include "host/records/ChangeLog.h"
#include "host/records/RecordReferences.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool IsDiocesan(adodb::Connection& connection) {
  const auto rows = adodb::Execute(connection, u"SELECT velumar FROM configuracion");
  return !rows->AtEnd() && automation::CBool(rows->Field(0));
}

}  // namespace

Node WithOptionalColumns(const Node& node, bool readsUses, bool readsLastChange) {
  Node listed = node;
  const bool isOfTheOffice = node.id != changesNode && !node.canRecover;
  if (isOfTheOffice && HasUses(node.id)) {
    listed.columns.append({u"Usos"_s, ColumnKind::Number, ListColumn::Source::Uses});
    listed.readsUses = readsUses;
  }
  if (isOfTheOffice) {
    listed.columns.append({u"Modificado"_s, ColumnKind::Moment, ListColumn::Source::LastChange});
    listed.readsLastChange = readsLastChange;
  }
  return listed;
}

OptionalValues::OptionalValues(adodb::Connection& connection, const Node& node, const QString& condition)
    : m_hasUses(node.readsUses) {
  if (node.readsUses) {
    m_uses = UsesOf(connection, node.id, condition, IsDiocesan(connection));
  }
  if (node.readsLastChange) {
    m_lastChanges = LastChanges(connection, node.table, condition);
  }
}

QVariant OptionalValues::Value(const ListColumn& column, int id) const {
  if (column.source == ListColumn::Source::Uses) {
    return m_hasUses ? QVariant(m_uses.value(id)) : QVariant();
  }
  const auto found = m_lastChanges.constFind(id);
  return found == m_lastChanges.constEnd() ? QVariant() : QVariant(*found);
}

}  // namespace host
