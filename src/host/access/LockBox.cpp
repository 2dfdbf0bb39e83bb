#include "host/access/LockBox.h"

#include "host/access/PasswordLine.h"
#include "host/access/SignIn.h"
#include "host/look/PlainLabel.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

LockBox::LockBox(Session& session, Door& door, const Account& account, QString place)
    : m_session(session),
      m_door(door),
      m_account(account),
      m_place(std::move(place)),
      m_entry(session, door, this),
      m_password(new PasswordLine(u"txtPassword"_s, this)),
      m_alert(new AlertLabel(this)),
      m_unlock(new QPushButton(u"&Desbloquear"_s, this)),
      m_text(NamedLabel(u"lblLocked"_s, this)) {
  setObjectName(u"lockBox"_s);
  setWindowTitle(session.title);
  setWindowModality(Qt::ApplicationModal);
  setWindowFlag(Qt::WindowStaysOnTopHint);
  // Its menu would be a window of its own.
  m_password->setContextMenuPolicy(Qt::NoContextMenu);
  ShowWhose();
  Build();
  connect(m_unlock, &QPushButton::clicked, this, &LockBox::Try);
  connect(&m_entry, &Entry::Refused, this, [this](const QString& text) {
    SetBusy(false);
    m_alert->Say(text);
    m_password->setFocus();
    m_password->selectAll();
  });
  connect(&m_entry, &Entry::Entered, this, [this] {
    SetBusy(false);
    Q_EMIT Unlocked();
  });
}

void LockBox::Build() {
  auto* form = new QFormLayout;
  form->addRow(u"&Contraseña:"_s, m_password);
  m_unlock->setObjectName(u"unlock"_s);
  m_unlock->setDefault(true);
  auto* other = new QPushButton(u"Desbloquear para &otra persona…"_s, this);
  other->setObjectName(u"unlockForOther"_s);
  other->setAutoDefault(false);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(other);
  buttons->addStretch(1);
  buttons->addWidget(m_unlock);
  setTabOrder(m_password, other);
  setTabOrder(other, m_unlock);
  setMinimumWidth(fontMetrics().averageCharWidth() * formCharacters);
  auto* all = new QVBoxLayout(this);
  all->addWidget(m_text);
  all->addLayout(form);
  all->addWidget(m_alert);
  all->addLayout(buttons);
  connect(other, &QPushButton::clicked, this, &LockBox::AskForAdministrator);
}

// Who entered may have another name by now.
void LockBox::ShowWhose() {
  if (!m_session.userName.isEmpty()) {
    m_account.name = m_session.userName;
  }
  m_text->setText(
      u"El programa está bloqueado por «%1». Lo que había a medias sigue como estaba."_s.arg(m_account.name));
}

void LockBox::Try() {
  SetBusy(true);
  m_entry.TryAgain(m_account, m_password->text());
}

void LockBox::SetBusy(bool isBusy) {
  m_unlock->setEnabled(!isBusy);
  m_password->setEnabled(!isBusy);
}

void LockBox::AskForAdministrator() {
  m_alert->Say({});
  try {
    SignIn signIn(m_session, m_door, m_place, {}, this);
    signIn.setWindowTitle(u"Administrador"_s);
    if (signIn.exec() != QDialog::Accepted) {
      return;
    }
    if (signIn.Entered().IsAdministrator()) {
      Q_EMIT HandedOver();
      return;
    }
    m_alert->Say(u"Solo un administrador puede desbloquear el programa para otra persona."_s);
  } catch (const automation::Error& error) {
    m_alert->Say(error.Description());
  }
}

void LockBox::reject() {
  Q_EMIT EndAsked();
}

void LockBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) {
    QDialog::keyPressEvent(event);
  }
}

void LockBox::closeEvent(QCloseEvent* event) {
  event->ignore();
}

void LockBox::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  ShowWhose();
  m_password->clear();
  m_password->setEchoMode(QLineEdit::Password);
  m_alert->Say({});
  m_password->setFocus();
  activateWindow();
}

}  // namespace host
