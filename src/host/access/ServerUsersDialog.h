#pragma once

#include "host/records/Session.h"

#include <QDialog>

namespace host {

/// Who may open a database on a server, by which group and what for: to be looked at, for roles and groups are the
/// server's.
class ServerUsersDialog : public QDialog {
  Q_OBJECT

 public:
  /// Reads once. The errors of the database leave it.
  explicit ServerUsersDialog(Session& session, QWidget* parent = nullptr);
};

}  // namespace host
