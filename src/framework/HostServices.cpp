#include "framework/HostServices.h"

#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

using automation::Call;
using automation::Get;
using automation::Put;
using namespace Qt::StringLiterals;

namespace framework {

HostServices HostServices::Fresh() {
  HostServices services;
  services.m_owned = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  services.m_object = services.m_owned.get();
  return services;
}

int HostServices::IDNodo() const {
  return automation::CLng(Get(m_object, "IDNodo"));
}

void HostServices::IDNodo(int node) const {
  Put(m_object, "IDNodo", node);
}

int HostServices::Accion() const {
  return automation::CLng(Get(m_object, "Accion"));
}

void HostServices::Accion(int action) const {
  Put(m_object, "Accion", action);
}

qint32 HostServices::IDSeleccionado() const {
  return automation::CLng(Get(m_object, "IDSeleccionado"));
}

void HostServices::IDSeleccionado(qint32 id) const {
  Put(m_object, "IDSeleccionado", id);
}

QVariant HostServices::IDAux() const {
  return Get(m_object, "IDAux");
}

qint32 HostServices::IDAuxNumber() const {
  const QVariant value = IDAux();
  return automation::IsNumeric(value) ? automation::CLng(value) : 0;
}

void HostServices::IDAux(const QVariant& value) const {
  Put(m_object, "IDAux", value);
}

adodb::Connection& HostServices::congestion() const {
  auto* connection = Get(m_object, "congestion").value<adodb::Connection*>();
  if (connection == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  return *connection;
}

QString HostServices::tituloaplicacion() const {
  return automation::Text(Get(m_object, "tituloaplicacion"));
}

QString HostServices::Icono() const {
  return automation::Text(Get(m_object, "Icono"));
}

QString HostServices::strFichAyuda() const {
  return automation::Text(Get(m_object, "strFichAyuda"));
}

QString HostServices::PathNodo() const {
  return automation::Text(Get(m_object, "PathNodo"));
}

qint32 HostServices::IDUsuario() const {
  return automation::CLng(Get(m_object, "IDUsuario"));
}

int HostServices::TipoUsuario() const {
  return automation::CLng(Get(m_object, "TipoUsuario"));
}

bool HostServices::velumar() const {
  return automation::CBool(Get(m_object, "velumar"));
}

bool HostServices::BloqueoRegistro(const QString& form, const QString& keyColumn, qint32 key, bool& held) const {
  QObject* request = objApi().Object();
  return automation::CBool(
      Call(m_object, "BloqueoRegistro", automation::Ref(request), form, keyColumn, key, automation::Ref(held)));
}

void HostServices::DesbloqueoRegistro(const QString& form, const QString& keyColumn, qint32 key) const {
  QObject* request = objApi().Object();
  Call(m_object, "DesbloqueoRegistro", automation::Ref(request), form, keyColumn, key);
}

void HostServices::BloquearControles(QObject* control) const {
  Call(m_object, "BloquearControles", control);
}

void HostServices::establecercontrolcambioformulario(const QObjectList& controls) const {
  Call(m_object, "establecercontrolcambioformulario", controls);
}

bool HostServices::controlcambioformulario(const QObjectList& controls) const {
  return automation::CBool(Call(m_object, "controlcambioformulario", controls));
}

void HostServices::SeleccionarTexto(QObject* control) const {
  Call(m_object, "SeleccionarTexto", control);
}

void HostServices::SeleccionarFila(QObject* grid, qint32 row) const {
  Call(m_object, "SeleccionarFila", grid, row);
}

void HostServices::SalvarAnchos(QObject* grid, const QString& key, const QString& form) const {
  Call(m_object, "SalvarAnchos", grid, key, form);
}

void HostServices::CargarAnchos(QObject* grid, const QString& key, const QString& form) const {
  Call(m_object, "CargarAnchos", grid, key, form);
}

void HostServices::VerError(const QString& procedure, const QString& entity, const QString& component) const {
  Call(m_object, "VerError", procedure, entity, component);
}

void HostServices::SeleccionarCP_Provincia(QObject* changed, QObject* coupled) const {
  Call(m_object, "SeleccionarCP_Provincia", automation::Ref(changed), automation::Ref(coupled), &congestion());
}

int HostServices::CIF_NIF_Valido(const QString& taxIdentifier, QString& kind, QString& control) const {
  return automation::CLng(
      Call(m_object, "CIF_NIF_Valido", taxIdentifier, automation::Ref(kind), automation::Ref(control)));
}

int HostServices::Validar_NIF(const QString& taxIdentifier) const {
  return automation::CLng(Call(m_object, "Validar_NIF", taxIdentifier));
}

QString HostServices::FormatearAEuros(const QVariant& amount) const {
  return automation::Text(Call(m_object, "FormatearAEuros", amount));
}

void HostServices::VerificarEuros(int& key, QObject* box, int selectionStart, int selectionLength) const {
  Call(m_object, "VerificarEuros", automation::Ref(key), QVariant::fromValue(box), selectionStart, selectionLength);
}

HostServices& objApi() {
  static HostServices current;
  return current;
}

}  // namespace framework
