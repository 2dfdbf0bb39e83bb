#include "host/desktop/OfficePage.h"

#include "host/access/UserRules.h"
#include "host/look/PlainLabel.h"
#include "platform/automation/Error.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QSpinBox* Number(const QString& name, int least, int most, const QString& suffix, QWidget* parent) {
  auto* box = new QSpinBox(parent);
  box->setObjectName(name);
  box->setRange(least, most);
  box->setSuffix(suffix);
  return box;
}

}  // namespace

OfficePage::OfficePage(ComponentBridge& bridge, bool isFile, QWidget* parent)
    : QWidget(parent),
      m_bridge(bridge),
      m_isFile(isFile),
      m_reason(NamedLabel(u"lblReason"_s, this)),
      m_name(new QLineEdit(this)),
      m_idle(Number(u"spnOfficeIdle"_s, 0, mostIdleMinutes, u" minutos sin uso"_s, this)),
      m_log(Number(u"spnLog"_s, 1, OfficePolicy::mostMonthsOfLog, u" meses"_s, this)),
      m_copies(
          Number(u"spnCopies"_s, OfficePolicy::fewestDaysOfCopies, OfficePolicy::mostDaysOfCopies, u" días"_s, this)) {
  setObjectName(u"officePage"_s);
  Build();
  Read();
}

void OfficePage::Build() {
  constexpr int longestName = 100;
  m_name->setObjectName(u"txtOffice"_s);
  m_name->setMaxLength(longestName);
  constexpr int shownCharacters = 36;
  m_name->setMinimumWidth(fontMetrics().averageCharWidth() * shownCharacters);
  m_idle->setSpecialValueText(u"nunca"_s);
  auto* form = new QFormLayout(this);
  form->addRow(m_reason);
  form->addRow(u"&Nombre de la entidad:"_s, m_name);
  form->addRow(u"&Bloquear el programa tras:"_s, m_idle);
  form->addRow(u"Guardar el &registro de cambios:"_s, m_log);
  form->addRow(u"Guardar las copias &diarias:"_s, m_copies);
}

void OfficePage::Read() {
  bool locks = false;
  QString reason = WhyNot();
  try {
    adodb::Connection& connection = m_bridge.OpenConnection();
    m_stored = ReadOfficePolicy(connection);
    locks = m_isFile && AsksForPasswords(connection);
  } catch (const automation::Error& error) {
    reason = u"No se han podido leer los ajustes. "_s + error.Description();
  }
  m_name->setText(m_stored.name);
  m_idle->setValue(m_stored.idleMinutes);
  m_log->setValue(m_stored.monthsOfLog);
  m_copies->setValue(m_stored.daysOfCopies);
  const bool mayChange = reason.isEmpty();
  for (QWidget* each : {static_cast<QWidget*>(m_name), static_cast<QWidget*>(m_log)}) {
    each->setEnabled(mayChange);
  }
  m_idle->setEnabled(mayChange && locks);
  m_copies->setEnabled(mayChange && m_isFile);
  if (mayChange && !m_isFile) {
    reason = u"Las contraseñas y las copias diarias de esta base de datos son cosa del servidor."_s;
  } else if (mayChange && !locks) {
    reason = u"El programa solo se bloquea si pide usuario y contraseña, lo que se decide en «Usuarios…»."_s;
  }
  m_reason->setText(reason);
  m_reason->setVisible(!reason.isEmpty());
}

QString OfficePage::WhyNot() const {
  const Session& session = m_bridge.Session();
  if (!session.IsAdministrator()) {
    return u"Solo los puede cambiar quien administra los usuarios."_s;
  }
  return session.readOnly ? u"La base de datos está abierta solo para consulta."_s : QString();
}

OfficePolicy OfficePage::Chosen() const {
  return {.name = m_name->text().trimmed(),
          .idleMinutes = m_idle->value(),
          .monthsOfLog = m_log->value(),
          .daysOfCopies = m_copies->value()};
}

// A name that was stored with blanks around it is no change.
void OfficePage::Store() {
  OfficePolicy chosen = Chosen();
  if (chosen.name == m_stored.name.trimmed()) {
    chosen.name = m_stored.name;
  }
  if (m_name->isEnabled() && chosen != m_stored) {
    m_bridge.OpenConnection();
    UserRules(m_bridge.Session()).ChangeForAll(m_stored, chosen);
    m_stored = chosen;
  }
}

}  // namespace host
