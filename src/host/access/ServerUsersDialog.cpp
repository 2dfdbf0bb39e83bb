#include "host/access/ServerUsersDialog.h"

#include "host/access/ServerPeople.h"
#include "host/help/HelpDesk.h"
#include "host/records/OpenConnection.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString GroupText(const database::ServerRole& role) {
  return role.isSuperuser ? u"administra el servidor"_s : role.group;
}

QTreeWidget* RoleList(Session& session, QWidget* parent) {
  adodb::Connection& connection = Opened(session.connection);
  const QString own = database::OwnRole(connection).value_or(database::ServerRole()).name;
  auto* list = new QTreeWidget(parent);
  list->setObjectName(u"roleList"_s);
  list->setAccessibleName(u"Usuarios del servidor"_s);
  list->setHeaderLabels({u"Usuario"_s, u"Grupo"_s, u"Derechos"_s});
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAlternatingRowColors(true);
  const QList<database::ServerRole> roles = database::RolesOf(connection);
  for (const database::ServerRole& role : roles) {
    const bool isOwn = role.name == own;
    auto* item = new QTreeWidgetItem(
        list, {isOwn ? u"%1 (usted)"_s.arg(role.name) : role.name, GroupText(role), RightsText(RightsOf(role))});
    if (isOwn) {
      list->setCurrentItem(item);
    }
  }
  constexpr int gap = 3;
  for (int column = 0; column < list->columnCount(); ++column) {
    list->resizeColumnToContents(column);
    list->setColumnWidth(column, list->columnWidth(column) + list->fontMetrics().averageCharWidth() * gap);
  }
  return list;
}

}  // namespace

ServerUsersDialog::ServerUsersDialog(Session& session, QWidget* parent) : QDialog(parent) {
  setObjectName(u"serverUsersDialog"_s);
  setProperty(HelpDesk::topicProperty, u"usuarios#roleList"_s);
  setWindowTitle(u"Usuarios"_s);
  auto* list = RoleList(session, this);
  auto* sentence = new QLabel(
      u"En un servidor cada persona entra con su usuario y su contraseña del servidor, y sus derechos son los de su "
      "grupo. Para cambiarlos, pídaselo a quien administra el servidor."_s,
      this);
  sentence->setObjectName(u"lblSentence"_s);
  sentence->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setText(u"&Cerrar"_s);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list, 1);
  layout->addWidget(sentence);
  layout->addWidget(buttons);
  constexpr int narrowest = 60;
  constexpr int lines = 12;
  setMinimumWidth(fontMetrics().averageCharWidth() * narrowest);
  resize(list->header()->length() + fontMetrics().averageCharWidth() * 10, fontMetrics().height() * 2 * lines);
}

}  // namespace host
