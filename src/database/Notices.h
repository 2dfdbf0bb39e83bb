#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace database {

/// Tells, without being asked, what was written to a database on a server, by this program and by others of its kind;
/// what other tools write is not told. Where the line is cut it looks for the server and has the session connect anew
/// as soon as it answers, so that a program nobody works at keeps what belongs to its presence.
///
/// Belongs to the connection's thread, whose event loop it needs. Database files tell nothing: see ChangeClock.
class KELDATOS_EXPORT Notices {
 public:
  /// These tables (as the schema spells them) were written to; none where it is not known, after a cut.
  using Written = std::function<void(const QStringList& tables)>;

  /// Listens over the connection, which is open and outlives this object.
  Notices(adodb::Connection& connection, Written written);
  Notices(const Notices&) = delete;
  Notices& operator=(const Notices&) = delete;
  ~Notices();

  /// False for a database that tells nothing.
  bool AreTold() const;

 private:
  class Line;

  std::unique_ptr<Line> m_line;
};

}  // namespace database
