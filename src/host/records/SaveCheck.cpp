#include "host/records/SaveCheck.h"

#include "host/records/MomentText.h"
#include "host/records/RecordReader.h"
#include "host/records/RecordReferences.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qint64 longestJustNow = 3600;  // seconds

const QString branches = u"Sucursales"_s;

// Rows of a table that the tree has no node for belong to their record's dialog; branches are added alone, too.
bool IsBranch(const WrittenRow& row) {
  return row.table.compare(branches, Qt::CaseInsensitive) == 0;
}

QString BranchName(adodb::Connection& connection, qint64 id) {
  const auto row = adodb::Execute(connection, u"SELECT Nombre FROM Sucursales WHERE IDSucursal={} AND Eliminado=0", id);
  return row->AtEnd() ? QString() : automation::Text(row->Field(0)).simplified();
}

// "el país": its noun, and whether that is feminine.
QString Noun(const Node& node) {
  return node.record.section(u' ', 1);
}

QString Pronoun(const Node& node) {
  return node.record.startsWith(u"la "_s) ? u"la"_s : u"lo"_s;
}

QString Capitalised(QString text) {
  return text.replace(0, 1, text.at(0).toUpper());
}

QString Fate(const Node& node, const DeletedRecord& deleted) {
  if (deleted.user.isEmpty() || !deleted.moment.isValid()) {
    return u"ya no está"_s;
  }
  const bool justNow = deleted.moment.secsTo(QDateTime::currentDateTimeUtc()) < longestJustNow;
  return justNow ? u"%1 acaba de eliminar %2"_s.arg(Pronoun(node), deleted.user)
                 : u"%1 eliminó %2 %3"_s.arg(Pronoun(node), deleted.user, DayAndTime(deleted.moment));
}

// The record itself: no dialog saves what it knows to be deleted, so it went while the dialog was open.
std::optional<LostSave> CheckItself(adodb::Connection& connection, const Node& node, int id) {
  const std::optional<DeletedRecord> deleted = FindDeleted(connection, node, id);
  if (!deleted) {
    return std::nullopt;
  }
  const QString record = deleted->name.isEmpty() ? node.record : u"%1 «%2»"_s.arg(node.record, deleted->name);
  const QString who = deleted->user.isEmpty() ? u"Alguien"_s : deleted->user;
  return LostSave{
      .text = u"%1 ha eliminado %2 mientras usted tenía abierto su cuadro: sus cambios no se ven."_s.arg(who, record),
      .deletedNode = &node,
      .deletedId = id,
      .note = deleted->note};
}

std::optional<LostSave> CheckParent(adodb::Connection& connection, const WrittenRow& row) {
  const Node* node = FindNodeByTable(row.table);
  const auto id = static_cast<int>(row.key);
  if (node == nullptr && !IsBranch(row)) {
    return std::nullopt;
  }
  const QString name = node != nullptr ? RecordName(connection, *node, id) : BranchName(connection, row.key);
  if (name.isEmpty()) {
    return std::nullopt;
  }
  const std::optional<ParentRecord> parent =
      DeletedParent(connection, {row.table, node != nullptr ? node->key : u"IDSucursal"_s, id});
  const std::optional<DeletedRecord> deleted =
      parent ? FindDeleted(connection, *parent->node, parent->id) : std::nullopt;
  if (!deleted) {
    return std::nullopt;
  }
  const QString parentName = deleted->name.isEmpty() ? QString() : u" «%1»,"_s.arg(deleted->name);
  LostSave lost{.text = u"%1 «%2» se ha guardado, pero su %3,%4 %5."_s.arg(
                    node != nullptr ? Capitalised(node->record) : u"La sucursal"_s, name, Noun(*parent->node),
                    parentName, Fate(*parent->node, *deleted)),
                .deletedNode = parent->node,
                .deletedId = parent->id,
                .note = deleted->note};
  if (node != nullptr && node->hasDialog) {
    lost.savedNode = node;
    lost.savedId = id;
  }
  return lost;
}

}  // namespace

QList<LostSave> CheckSaved(adodb::Connection& connection, const Node& node, int id, const QList<WrittenRow>& written) {
  QList<LostSave> lost;
  for (const WrittenRow& row : written) {
    if (row.key == 0) {
      continue;
    }
    const bool isItself = row.key == id && row.table.compare(node.table, Qt::CaseInsensitive) == 0;
    std::optional<LostSave> found = isItself ? CheckItself(connection, node, id) : std::nullopt;
    if (!found) {
      found = CheckParent(connection, row);
    }
    if (found) {
      lost.append(*found);
    }
  }
  return lost;
}

}  // namespace host
