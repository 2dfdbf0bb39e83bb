#include "host/access/RightsWatch.h"

#include "host/access/Accounts.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int administratorKind = 1;
constexpr int usualKind = 2;

QString WhatHappened(const std::optional<Account>& now) {
  if (!now) {
    return u"Otra persona ha eliminado su usuario."_s;
  }
  return now->isOff ? u"Otra persona ha desactivado su usuario."_s : u"Otra persona ha cambiado sus derechos."_s;
}

}  // namespace

void UseAccount(Session& session, const Account& account) {
  session.userId = account.id;
  session.userName = account.name;
  session.userKind = account.IsAdministrator() ? administratorKind : usualKind;
  session.mayDelete = account.rights >= Rights::ChangesAndDeletes;
  session.isViewer = account.rights == Rights::Viewer;
  session.readOnly = session.readOnly || session.isViewer;
}

RightsWatch::RightsWatch(Session& session, const Account& account, QObject* parent)
    : QObject(parent), m_session(session), m_rights(account.rights) {
  UseAccount(session, account);
  session.lookAtRights = [this](adodb::Connection& connection) { Look(connection); };
}

RightsWatch::~RightsWatch() {
  m_session.lookAtRights = {};
}

void RightsWatch::Look(adodb::Connection& connection) {
  const std::optional<Account> now = ReadAccount(connection, m_session.userId);
  if (now) {
    m_session.userName = now->name;
  }
  if (m_session.isViewer || (now && !now->isOff && now->rights >= m_rights)) {
    return;
  }
  m_session.userKind = usualKind;
  m_session.mayDelete = false;
  m_session.isViewer = true;
  m_session.readOnly = true;
  Q_EMIT Reduced(WhatHappened(now) +
                 u" Hasta que vuelva a entrar solo puede consultar; pregunte a quien administra los usuarios."_s);
}

}  // namespace host
