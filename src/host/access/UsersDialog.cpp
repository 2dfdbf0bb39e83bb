#include "host/access/UsersDialog.h"

#include "host/access/NewPassword.h"
#include "host/access/UserDialog.h"
#include "host/help/HelpDesk.h"
#include "host/records/Deletion.h"
#include "host/records/MomentText.h"
#include "host/records/NodeCatalog.h"
#include "host/records/OfficeSettings.h"
#include "host/services/ErrorBox.h"
#include "host/services/PlainBox.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString PasswordText(const Account& account) {
  if (account.isOff) {
    return u"desactivado"_s;
  }
  if (account.hash.isEmpty()) {
    return u"no tiene"_s;
  }
  return account.mustChange ? u"por elegir al entrar"_s : u"puesta "_s + DayAndTime(account.passwordSince);
}

QStringList Cells(const Account& account) {
  return {account.name, account.fullName, RightsText(account.rights),
          account.lastEntry.isValid() ? DayAndTime(account.lastEntry) : QString(), PasswordText(account)};
}

}  // namespace

UsersDialog::UsersDialog(ComponentBridge& bridge, QWidget* parent)
    : QDialog(parent),
      m_bridge(bridge),
      m_list(new QTreeWidget(this)),
      m_asks(new QCheckBox(u"&Pedir usuario y contraseña al empezar"_s, this)),
      m_locks(new QCheckBox(u"&Bloquear el programa tras"_s, this)),
      m_minutes(new QSpinBox(this)) {
  setObjectName(u"usersDialog"_s);
  setProperty(HelpDesk::topicProperty, u"usuarios#userList"_s);
  setWindowTitle(u"Usuarios"_s);
  BuildList();
  auto* grid = new QGridLayout(this);
  grid->addWidget(m_list, 0, 0);
  grid->addWidget(BuildButtons(), 0, 1, Qt::AlignTop);
  grid->addWidget(BuildSettings(), 1, 0, 1, 2);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText(u"&Cerrar"_s);
  grid->addWidget(buttons, 2, 0, 1, 2);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  Read();
  constexpr int lines = 14;
  const QMargins margins = grid->contentsMargins();
  constexpr int slack = 10;
  resize(m_list->header()->length() + fontMetrics().averageCharWidth() * slack +
             m_list->verticalScrollBar()->sizeHint().width() + m_password->sizeHint().width() +
             grid->horizontalSpacing() + margins.left() + margins.right() + 2 * m_list->frameWidth(),
         std::max(sizeHint().height(), fontMetrics().height() * 2 * lines));
}

void UsersDialog::BuildList() {
  m_list->setObjectName(u"userList"_s);
  m_list->setAccessibleName(u"Usuarios"_s);
  m_list->setHeaderLabels({u"Usuario"_s, u"Nombre completo"_s, u"Derechos"_s, u"Última entrada"_s, u"Contraseña"_s});
  m_list->setRootIsDecorated(false);
  m_list->setUniformRowHeights(true);
  m_list->setAlternatingRowColors(true);
  connect(m_list, &QTreeWidget::itemSelectionChanged, this, &UsersDialog::ShowChoice);
  connect(m_list, &QTreeWidget::itemActivated, this, &UsersDialog::Modify);
}

QPushButton* UsersDialog::Button(const char* name, const QString& text, void (UsersDialog::*act)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QLatin1StringView(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, act);
  return button;
}

QWidget* UsersDialog::BuildButtons() {
  auto* column = new QWidget(this);
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins({});
  layout->addWidget(Button("addUser", u"&Agregar…"_s, &UsersDialog::Add));
  layout->addWidget(m_modify = Button("modifyUser", u"&Modificar…"_s, &UsersDialog::Modify));
  layout->addWidget(m_password = Button("givePassword", u"&Nueva contraseña…"_s, &UsersDialog::GivePassword));
  layout->addWidget(m_switch = Button("switchUser", u"&Desactivar"_s, &UsersDialog::SwitchOff));
  layout->addWidget(m_delete = Button("deleteUser", u"&Eliminar"_s, &UsersDialog::Delete));
  return column;
}

QWidget* UsersDialog::BuildSettings() {
  auto* settings = new QWidget(this);
  m_asks->setObjectName(u"chkAsk"_s);
  m_locks->setObjectName(u"chkLock"_s);
  m_minutes->setObjectName(u"spnIdle"_s);
  m_minutes->setAccessibleName(u"Minutos sin uso"_s);
  m_minutes->setRange(1, mostIdleMinutes);
  m_minutes->setSuffix(u" minutos sin uso"_s);
  auto* lock = new QHBoxLayout;
  lock->addWidget(m_locks);
  lock->addWidget(m_minutes);
  lock->addStretch(1);
  auto* sentence = new QLabel(
      u"Quien puede abrir el archivo de la base de datos puede leerlo con otros programas: la contraseña ordena el "
      "trabajo en la oficina, no cifra los datos."_s,
      this);
  sentence->setObjectName(u"lblSentence"_s);
  sentence->setWordWrap(true);
  auto* layout = new QVBoxLayout(settings);
  layout->setContentsMargins({});
  layout->addWidget(m_asks);
  layout->addLayout(lock);
  layout->addWidget(sentence);
  // Not by a click: who hears the screen may toggle them otherwise.
  connect(m_asks, &QCheckBox::toggled, this, &UsersDialog::AskAtStart);
  connect(m_locks, &QCheckBox::toggled, this, &UsersDialog::SetIdle);
  connect(m_minutes, &QSpinBox::editingFinished, this, &UsersDialog::SetIdle);
  return settings;
}

bool UsersDialog::Try(const QString& what, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const automation::Error& error) {
    ShowError(this, m_bridge.Session().title, what, error);
    return false;
  }
}

void UsersDialog::Read() {
  const Account* chosen = Chosen();
  const int id = chosen != nullptr ? chosen->id : m_bridge.Session().userId;
  Try(u"No se han podido leer los usuarios."_s, [&] {
    adodb::Connection& connection = m_bridge.OpenConnection();
    const bool asks = AsksForPasswords(connection);
    const int minutes = IdleMinutes(connection);
    m_accounts = ReadAccounts(connection);
    const QSignalBlocker quiet(m_list);
    const QSignalBlocker quietAsks(m_asks);
    const QSignalBlocker quietLocks(m_locks);
    m_list->clear();
    for (const Account& account : std::as_const(m_accounts)) {
      new QTreeWidgetItem(m_list, Cells(account));
    }
    m_asks->setChecked(asks);
    m_locks->setEnabled(asks);
    m_locks->setChecked(minutes > 0);
    m_minutes->setEnabled(asks && minutes > 0);
    m_minutes->setValue(minutes > 0 ? minutes : usualIdleMinutes);
  });
  for (int column = 0; column < m_list->columnCount(); ++column) {
    m_list->resizeColumnToContents(column);
    m_list->setColumnWidth(column, m_list->columnWidth(column) + fontMetrics().averageCharWidth() * 2);
  }
  Choose(id);
}

const Account* UsersDialog::Chosen() const {
  const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
  return row >= 0 && row < m_accounts.size() ? &m_accounts[row] : nullptr;
}

void UsersDialog::Choose(int id) {
  for (int row = 0; row < m_accounts.size(); ++row) {
    if (m_accounts[row].id == id) {
      m_list->setCurrentItem(m_list->topLevelItem(row));
    }
  }
  ShowChoice();
}

void UsersDialog::ShowChoice() {
  const Account* account = Chosen();
  for (QPushButton* button : {m_modify, m_password, m_switch, m_delete}) {
    button->setEnabled(account != nullptr);
  }
  const bool isOwn = account != nullptr && account->id == m_bridge.Session().userId;
  m_switch->setEnabled(account != nullptr && !isOwn);
  m_delete->setEnabled(account != nullptr && !isOwn);
  m_switch->setText(account != nullptr && account->isOff ? u"Act&ivar"_s : u"&Desactivar"_s);
}

void UsersDialog::Add() {
  UserDialog dialog(m_bridge.Session(), {}, this);
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  Read();
  Choose(dialog.Id());
  if (m_asks->isChecked()) {
    GivePassword();
  }
}

void UsersDialog::Modify() {
  if (const Account* account = Chosen()) {
    Session& session = m_bridge.Session();
    UserDialog(session, *account, this).exec();
    Read();
    if (account = Chosen(); account != nullptr && account->id == session.userId) {
      session.userName = account->name;
    }
  }
}

void UsersDialog::GivePassword() {
  if (Chosen() == nullptr) {
    return;
  }
  const Account account = *Chosen();
  Try(u"La contraseña no se ha guardado."_s, [&] {
    NewPassword dialog(
        {.title = u"Nueva contraseña"_s,
         .text =
             u"Primera contraseña de «%1». Désela en persona: al entrar tendrá que elegir otra."_s.arg(account.name),
         .names = {account.name, account.fullName, OfficeName(m_bridge.OpenConnection())}},
        this);
    if (dialog.exec() == QDialog::Accepted) {
      UserRules(m_bridge.Session()).SetPassword(account.id, dialog.Hash());
    }
  });
  Read();
}

void UsersDialog::SwitchOff() {
  if (const Account* account = Chosen()) {
    Try(u"El usuario no se ha cambiado."_s,
        [&] { UserRules(m_bridge.Session()).SwitchOff(account->id, !account->isOff); });
    Read();
  }
}

// By the component, which has the last word, as every deletion.
void UsersDialog::Delete() {
  if (Chosen() == nullptr) {
    return;
  }
  const Node& node = *FindNode(cConstNodo().Usuarios());
  const QList<DeletionTarget> targets{{Chosen()->id, Chosen()->name}};
  const auto goOn = [](int) { return true; };
  const auto tellWhy = [&](const KeptRecord& kept) {
    PlainBox(QMessageBox::Warning, m_bridge.Session().title,
             u"«%1» no se ha eliminado: %2."_s.arg(kept.name, kept.reason), QMessageBox::Ok, this)
        .exec();
  };
  Try(u"El usuario no se ha eliminado."_s, [&] {
    const std::optional<DeletionPlan> plan = PlanDeletion(m_bridge, node, targets, goOn);
    if (!plan) {
      return;
    }
    if (!plan->staying.isEmpty()) {
      tellWhy(plan->staying.constFirst());
      return;
    }
    PlainBox question(QMessageBox::Question, m_bridge.Session().title,
                      u"¿Desea eliminar el usuario «%1»?"_s.arg(targets.constFirst().name),
                      QMessageBox::Yes | QMessageBox::No, this);
    question.setDefaultButton(QMessageBox::No);
    if (question.exec() == QMessageBox::Yes) {
      const DeletionResult result = DeleteRecords(m_bridge, node, targets, goOn);
      if (!result.kept.isEmpty()) {
        tellWhy(result.kept.constFirst());
      }
    }
  });
  Read();
}

// The first one is whoever turns it on.
void UsersDialog::AskAtStart(bool wanted) {
  Session& session = m_bridge.Session();
  Try(u"No se ha podido cambiar."_s, [&] {
    UserRules rules(session);
    if (!wanted) {
      rules.TurnOff();
      return;
    }
    adodb::Connection& connection = m_bridge.OpenConnection();
    const Account own = ReadAccount(connection, session.userId).value_or(Account());
    NewPassword dialog({.title = u"Primer administrador"_s,
                        .text = u"Elija con qué nombre y contraseña entra usted. Los demás usuarios necesitan después "
                                "una primera contraseña, que les da con «Nueva contraseña»."_s,
                        .names = {own.fullName, OfficeName(connection)},
                        .asksName = true,
                        .name = own.name},
                       this);
    if (dialog.exec() == QDialog::Accepted) {
      rules.TurnOn(dialog.Name(), dialog.Hash());
      session.userName = dialog.Name();
    }
  });
  Read();
  Q_EMIT SettingsChanged();
}

void UsersDialog::SetIdle() {
  const int minutes = m_locks->isChecked() ? m_minutes->value() : 0;
  Try(u"No se ha podido cambiar."_s, [&] {
    if (IdleMinutes(m_bridge.OpenConnection()) != minutes) {
      UserRules(m_bridge.Session()).LockAfter(minutes);
    }
  });
  m_minutes->setEnabled(m_locks->isChecked());
  Q_EMIT SettingsChanged();
}

}  // namespace host
