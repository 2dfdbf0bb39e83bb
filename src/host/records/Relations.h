#pragma once

#include "host/records/ChangeLog.h"
#include "host/records/NodeCatalog.h"
#include "host/records/RecordData.h"
#include "host/records/RecordReferences.h"
#include "platform/adodb/Connection.h"

#include <QList>
#include <QString>

#include <optional>

namespace host {

/// Records that belong to another one, or its own values where those are worth a look.
struct RelatedRecords {
  QString title;         ///< "Sucursales"
  int nodeId = 0;        ///< The node where one of them is opened; 0 for none.
  RecordData records{};  ///< In their order, at most mostRelated.
  int total = 0;         ///< How many there are; 0 for own values.
};

constexpr int mostRelated = 200;

/// What there is to say of a record besides its row in the list.
struct RecordDetail {
  QList<RowCount> uses;              ///< See CountUses.
  std::optional<Change> lastChange;  ///< Nothing where the log has none.
  QList<RelatedRecords> related;     ///< Kinds without records are there, too.
};

/// Errors of the connection leave it.
RecordDetail ReadDetail(adodb::Connection& connection, const Node& node, int id, bool velumar);

}  // namespace host
