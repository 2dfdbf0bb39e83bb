#include "host/access/NewPassword.h"

#include "host/access/PasswordLine.h"
#include "host/access/Passwords.h"
#include "host/access/UserRules.h"
#include "host/help/HelpDesk.h"
#include "host/records/OfficeSettings.h"
#include "host/records/OpenConnection.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

NewPassword::NewPassword(const Question& question, QWidget* parent)
    : QDialog(parent),
      m_names(question.names),
      m_beside(this),
      m_first(new PasswordLine(u"txtNew"_s, this)),
      m_second(new PasswordLine(u"txtAgain"_s, this)),
      m_alert(new AlertLabel(this)) {
  setObjectName(u"newPassword"_s);
  setProperty(HelpDesk::topicProperty, u"usuarios#txtPassword"_s);
  setWindowTitle(question.title);
  Build(question);
}

void NewPassword::Build(const Question& question) {
  auto* form = new QFormLayout;
  if (question.asksName) {
    constexpr int longestName = 50;
    m_name = new QLineEdit(question.name, this);
    m_name->setObjectName(u"txtName"_s);
    m_name->setMaxLength(longestName);
    form->addRow(u"&Usuario:"_s, m_name);
  }
  if (question.asksCurrent) {
    m_current = new PasswordLine(u"txtCurrent"_s, this);
    form->addRow(u"Contraseña ac&tual:"_s, m_current);
  }
  form->addRow(u"Contraseña &nueva:"_s, m_first);
  form->addRow(u"&Repita la nueva:"_s, m_second);
  auto* text = new QLabel(question.text, this);
  text->setTextFormat(Qt::PlainText);
  text->setWordWrap(true);
  auto* advice = new QLabel(
      u"Al menos %1 caracteres. Varias palabras se recuerdan mejor que signos."_s.arg(shortestPassword), this);
  advice->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  m_accept = buttons->button(QDialogButtonBox::Ok);
  m_accept->setText(u"&Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  QWidget* before = m_name != nullptr ? static_cast<QWidget*>(m_name) : m_current;
  if (before != nullptr) {
    setTabOrder(before, m_first);
    before->setFocus();
  }
  setTabOrder(m_first, m_second);
  setTabOrder(m_second, m_accept);
  setTabOrder(m_accept, buttons->button(QDialogButtonBox::Cancel));
  setMinimumWidth(fontMetrics().averageCharWidth() * formCharacters);
  auto* all = new QVBoxLayout(this);
  all->addWidget(text);
  all->addLayout(form);
  all->addWidget(advice);
  all->addWidget(m_alert);
  all->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &NewPassword::Take);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QString NewPassword::Name() const {
  return m_name != nullptr ? m_name->text().trimmed() : QString();
}

void NewPassword::SetCurrentCheck(Session& session, Door& door, const Account& account) {
  m_account = account;
  m_entry = std::make_unique<Entry>(session, door);
  connect(m_entry.get(), &Entry::Entered, this, [this] { Make(); });
  connect(m_entry.get(), &Entry::Refused, this, [this](const QString& text) { Refuse(text, *m_current); });
}

void NewPassword::Take() {
  if (m_name != nullptr && Name().isEmpty()) {
    Refuse(u"Escriba el nombre de usuario."_s, *m_name);
    return;
  }
  const QString fault = PasswordFault(m_first->text(), m_names + QStringList{Name()});
  if (!fault.isEmpty()) {
    Refuse(fault, *m_first);
    return;
  }
  if (m_first->text() != m_second->text()) {
    Refuse(u"Las dos no son iguales. Vuelva a escribir la segunda."_s, *m_second);
    return;
  }
  SetBusy(true);
  if (m_entry) {
    m_entry->TryAgain(m_account, m_current->text());
  } else {
    Make();
  }
}

void NewPassword::Make() {
  auto hash = std::make_shared<QString>();
  m_beside.Run([hash, password = m_first->text()] { *hash = HashOf(password); },
               [this, hash](const std::optional<automation::Error>& error) {
                 if (error) {
                   Refuse(error->Description(), *m_first);
                   return;
                 }
                 m_hash = *hash;
                 accept();
               });
}

void NewPassword::Refuse(const QString& text, QLineEdit& box) {
  SetBusy(false);
  m_alert->Say(text);
  box.setFocus();
  box.selectAll();
}

void NewPassword::SetBusy(bool isBusy) {
  m_accept->setEnabled(!isBusy);
  const QList<QLineEdit*> boxes = findChildren<QLineEdit*>();
  for (QLineEdit* box : boxes) {
    box->setEnabled(!isBusy);
  }
}

bool ChooseOwnPassword(Session& session, const QString& text, Door* door, QWidget* parent) {
  try {
    adodb::Connection& connection = Opened(session.connection);
    const Account own = ReadAccount(connection, session.userId).value_or(Account());
    NewPassword dialog({.title = u"Cambiar mi contraseña"_s,
                        .text = text,
                        .names = {own.name, own.fullName, OfficeName(connection)},
                        .asksCurrent = door != nullptr},
                       parent);
    if (door != nullptr) {
      dialog.SetCurrentCheck(session, *door, own);
    }
    if (dialog.exec() != QDialog::Accepted) {
      return false;
    }
    UserRules(session).ChangeOwnPassword(dialog.Hash());
    return true;
  } catch (const automation::Error& error) {
    ShowError(parent, session.title, u"La contraseña no se ha cambiado."_s, error);
    return false;
  }
}

}  // namespace host
