#include "host/access/SignIn.h"

#include "host/access/NewPassword.h"
#include "host/access/PasswordLine.h"
#include "host/access/RightsWatch.h"
#include "host/help/HelpDesk.h"
#include "host/look/PlainLabel.h"
#include "host/look/TitleSize.h"
#include "host/records/OfficeSettings.h"
#include "host/records/OpenConnection.h"

#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSysInfo>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype mostNames = 8;
const QString namesSetting = u"Entrada/Nombres"_s;

QStringList NamesHere() {
  return QSettings().value(namesSetting).toStringList().mid(0, mostNames);
}

void RememberName(const QString& name) {
  QStringList names = NamesHere();
  names.removeAll(name);
  names.prepend(name);
  QSettings().setValue(namesSetting, names.mid(0, mostNames));
}

}  // namespace

SignIn::SignIn(Session& session, Door& door, const QString& place, const QString& name, QWidget* parent)
    : QDialog(parent),
      m_session(session),
      m_entry(session, door, this),
      m_name(new QComboBox(this)),
      m_password(new PasswordLine(u"txtPassword"_s, this)),
      m_alert(new AlertLabel(this)),
      m_enter(new QPushButton(u"&Entrar"_s, this)) {
  setObjectName(u"signIn"_s);
  setProperty(HelpDesk::topicProperty, u"usuarios#txtPassword"_s);
  setWindowTitle(u"Entrar"_s);
  m_name->setObjectName(u"cboUser"_s);
  m_name->setEditable(true);
  m_name->setInsertPolicy(QComboBox::NoInsert);
  m_name->addItems(NamesHere());
  if (!name.isEmpty()) {
    m_name->setEditText(name);
  }
  Build(place);
  (m_name->currentText().isEmpty() ? static_cast<QWidget*>(m_name) : m_password)->setFocus();
  connect(m_enter, &QPushButton::clicked, this, &SignIn::TryToEnter);
  connect(&m_entry, &Entry::Refused, this, [this](const QString& text) {
    SetBusy(false);
    m_alert->Say(text);
    m_password->setFocus();
    m_password->selectAll();
  });
  connect(&m_entry, &Entry::Entered, this, [this](const Account& account) {
    m_account = account;
    RememberName(account.name);
    accept();
  });
}

void SignIn::Build(const QString& place) {
  const QString office = OfficeName(Opened(m_session.connection));
  QLabel* heading = PlainLabel(office.isEmpty() ? m_session.title : office, this);
  constexpr double larger = 1.5;
  new TitleSize(*heading, larger);
  auto* form = new QFormLayout;
  form->addRow(u"&Usuario:"_s, m_name);
  form->addRow(u"&Contraseña:"_s, m_password);
  auto* forgotten = new QPushButton(u"He &olvidado la contraseña"_s, this);
  forgotten->setObjectName(u"forgotten"_s);
  forgotten->setAutoDefault(false);
  m_enter->setObjectName(u"enter"_s);
  m_enter->setDefault(true);
  auto* leave = new QPushButton(u"&Salir"_s, this);
  leave->setObjectName(u"leave"_s);
  leave->setAutoDefault(false);
  setTabOrder(m_password, forgotten);
  setTabOrder(forgotten, m_enter);
  setTabOrder(m_enter, leave);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(forgotten);
  buttons->addStretch(1);
  buttons->addWidget(m_enter);
  buttons->addWidget(leave);
  setMinimumWidth(fontMetrics().averageCharWidth() * formCharacters);
  auto* all = new QVBoxLayout(this);
  all->addWidget(heading);
  all->addWidget(PlainLabel(u"%1 · %2"_s.arg(QFileInfo(place).fileName(), QSysInfo::machineHostName()), this));
  all->addSpacing(fontMetrics().height());
  all->addLayout(form);
  all->addWidget(m_alert);
  all->addLayout(buttons);
  connect(leave, &QPushButton::clicked, this, &QDialog::reject);
  connect(forgotten, &QPushButton::clicked, this, [this] {
    m_alert->Say(
        u"Pida otra a un administrador: se la da en el menú Archivo, Usuarios. Si no queda ninguno, el dueño del "
        "archivo de la base de datos da otra con la orden «kel-host usuarios nueva-clave NOMBRE»."_s);
  });
}

void SignIn::TryToEnter() {
  SetBusy(true);
  m_entry.Try(m_name->currentText(), m_password->text());
}

void SignIn::SetBusy(bool isBusy) {
  m_enter->setEnabled(!isBusy);
  m_name->setEnabled(!isBusy);
  m_password->setEnabled(!isBusy);
}

bool AskWhoWorks(Session& session, Door& door, const QString& place, const QString& name, Account& account) {
  SignIn signIn(session, door, place, name);
  if (signIn.exec() != QDialog::Accepted) {
    return false;
  }
  account = signIn.Entered();
  if (!account.mustChange || session.readOnly) {
    return true;
  }
  Session own;
  own.connection = session.connection;
  own.office = session.office;
  own.title = session.title;
  UseAccount(own, account);
  if (!ChooseOwnPassword(own, u"Elija su contraseña; la que tiene la conoce otra persona."_s, nullptr)) {
    return false;
  }
  account = ReadAccount(Opened(session.connection), account.id).value_or(account);
  return true;
}

}  // namespace host
