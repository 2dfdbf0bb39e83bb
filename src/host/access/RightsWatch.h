#pragma once

#include "host/records/Rights.h"
#include "host/records/Session.h"

#include <QObject>

namespace host {

struct Account;

/// Sets what the session may do to what its user may, and looks before each act whether that still holds. A user who
/// was deleted, switched off or has lost a right since can only look until the next sign-in, and is told so once.
/// Another name is taken over.
class RightsWatch : public QObject {
  Q_OBJECT

 public:
  /// Borrows the session, which becomes that of the user.
  RightsWatch(Session& session, const Account& account, QObject* parent = nullptr);
  /// The session's acts are not looked at any more.
  ~RightsWatch() override;

 Q_SIGNALS:
  /// The session has become one for viewing.
  void Reduced(const QString& text);

 private:
  void Look(adodb::Connection& connection);

  Session& m_session;
  Rights m_rights;
};

/// Fills in who works and what the user may.
void UseAccount(Session& session, const Account& account);

}  // namespace host
