#pragma once

#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace host {

/// What is known of a deletion. A program that is none of ours may leave nothing of it.
struct DeletedRecord {
  QString name;      ///< As lists named the record; empty where nobody knows.
  QString user;      ///< Who deleted it; empty where nobody knows.
  QDateTime moment;  ///< UTC; invalid where nobody knows.
  int note = 0;      ///< For DeletionLog::Recover; 0 where it can't be recovered.

  /// "Lorenzo ha eliminado «Banco del Almendro» hoy a las 13:03." `known` is a name in case there is none here; it
  /// may be empty.
  QString Sentence(const QString& known) const;
};

/// Nothing for a record that is live. Errors of the database leave it.
std::optional<DeletedRecord> FindDeleted(adodb::Connection& connection, const Node& node, int id);

}  // namespace host
