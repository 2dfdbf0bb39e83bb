#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

#include <QStringList>

namespace database {

/// Says which statements follow on a connection, in that order, so that a server gets them together and one round trip
/// answers them. They are executed by Connection::Execute as ever, to the letter as announced, and each has the result
/// or the error that it would have had by itself: one that fails ends the sending ahead. Reading ones may be left out.
///
/// One that writes, and the commit, are certain to be asked for, and stand in a transaction: they may have been made
/// before. On a file, and on a connection that is not of this library, an announcement is nothing.
class KELDATOS_EXPORT Announcement {
 public:
  enum class End {
    Open,
    Commit,  ///< CommitTrans follows the last statement. An error of it is that statement's.
  };

  /// `connection` outlives the object. Takes the place of an earlier announcement.
  Announcement(adodb::Connection& connection, const QStringList& statements, End end = End::Open);
  Announcement(const Announcement&) = delete;
  Announcement& operator=(const Announcement&) = delete;
  /// Forgets what was not asked for.
  ~Announcement();

 private:
  adodb::Connection& m_connection;
};

}  // namespace database
