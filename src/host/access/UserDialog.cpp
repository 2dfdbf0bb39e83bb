#include "host/access/UserDialog.h"

#include "host/access/PasswordLine.h"
#include "host/help/HelpDesk.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

UserDialog::UserDialog(Session& session, const Account& account, QWidget* parent)
    : QDialog(parent),
      m_session(session),
      m_id(account.id),
      m_name(new QLineEdit(account.name, this)),
      m_fullName(new QLineEdit(account.fullName, this)),
      m_rights(new QComboBox(this)),
      m_alert(new AlertLabel(this)) {
  setObjectName(u"userDialog"_s);
  setProperty(HelpDesk::topicProperty, u"usuarios#cboRights"_s);
  setWindowTitle(account.id == 0 ? u"Agregar usuario"_s : u"Modificar usuario"_s);
  Build(account);
}

void UserDialog::Build(const Account& account) {
  constexpr int longestName = 50;
  constexpr int longestFullName = 100;
  m_name->setObjectName(u"txtName"_s);
  m_name->setMaxLength(longestName);
  m_fullName->setObjectName(u"txtFullName"_s);
  m_fullName->setMaxLength(longestFullName);
  m_rights->setObjectName(u"cboRights"_s);
  for (const Rights rights : {Rights::Viewer, Rights::Changes, Rights::ChangesAndDeletes, Rights::Administrator}) {
    m_rights->addItem(RightsText(rights), static_cast<int>(rights));
  }
  const Rights shown = account.id == 0 ? Rights::ChangesAndDeletes : account.rights;
  m_rights->setCurrentIndex(m_rights->findData(static_cast<int>(shown)));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(u"&Aceptar"_s);
  buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancelar"_s);
  setMinimumWidth(fontMetrics().averageCharWidth() * formCharacters);
  auto* form = new QFormLayout(this);
  form->addRow(u"&Usuario:"_s, m_name);
  form->addRow(u"&Nombre completo:"_s, m_fullName);
  form->addRow(u"&Derechos:"_s, m_rights);
  form->addRow(m_alert);
  form->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &UserDialog::Save);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void UserDialog::Save() {
  const UserData typed{m_name->text(), m_fullName->text(), static_cast<Rights>(m_rights->currentData().toInt())};
  try {
    UserRules rules(m_session);
    if (m_id == 0) {
      m_id = rules.Add(typed);
    } else {
      rules.Change(m_id, typed);
    }
  } catch (const automation::Error& error) {
    m_alert->Say(error.Description());
    return;
  }
  accept();
}

}  // namespace host
