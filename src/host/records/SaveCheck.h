#pragma once

#include "host/records/DeletedRecord.h"
#include "host/records/WriteWatch.h"

#include <QList>
#include <QString>

namespace host {

/// Something that was saved and that nobody sees, since it, or what it depends on, was deleted meanwhile.
struct LostSave {
  QString text;  ///< A sentence for the user.
  const Node* deletedNode = nullptr;
  int deletedId = 0;
  int note = 0;                     ///< Recovers what is deleted, see DeletionLog; 0 where that can't be.
  const Node* savedNode = nullptr;  ///< Of what was saved, where that is another record and has a dialog.
  int savedId = 0;
};

/// Looks at what was written, as a WriteWatch has it. `node` and `id` are the record whose dialog wrote it, 0 for one
/// that was added. Errors of the database leave it.
QList<LostSave> CheckSaved(adodb::Connection& connection, const Node& node, int id, const QList<WrittenRow>& written);

}  // namespace host
