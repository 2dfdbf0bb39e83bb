#include "framework/ServiciosHost.h"

#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

using automation::Call;
using automation::Get;
using automation::Put;

ServiciosHost ServiciosHost::Nuevo() {
  ServiciosHost services;
  services.m_owned = automation::CreateObject(QStringLiteral("KelAPI.cPrincipal"));
  services.m_object = services.m_owned.get();
  return services;
}

int ServiciosHost::IDNodo() const {
  return automation::CLng(Get(m_object, "IDNodo"));
}

int ServiciosHost::Accion() const {
  return automation::CLng(Get(m_object, "Accion"));
}

void ServiciosHost::Accion(int accion) const {
  Put(m_object, "Accion", accion);
}

qint32 ServiciosHost::IDSeleccionado() const {
  return automation::CLng(Get(m_object, "IDSeleccionado"));
}

void ServiciosHost::IDSeleccionado(qint32 id) const {
  Put(m_object, "IDSeleccionado", id);
}

QVariant ServiciosHost::IDAux() const {
  return Get(m_object, "IDAux");
}

qint32 ServiciosHost::IDAuxNumero() const {
  const QVariant value = IDAux();
  return automation::IsNumeric(value) ? automation::CLng(value) : 0;
}

void ServiciosHost::IDAux(const QVariant& value) const {
  Put(m_object, "IDAux", value);
}

adodb::Connection& ServiciosHost::congestion() const {
  auto* connection = Get(m_object, "congestion").value<adodb::Connection*>();
  if (connection == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  return *connection;
}

QString ServiciosHost::tituloaplicacion() const {
  return automation::Text(Get(m_object, "tituloaplicacion"));
}

QString ServiciosHost::Icono() const {
  return automation::Text(Get(m_object, "Icono"));
}

QString ServiciosHost::strFichAyuda() const {
  return automation::Text(Get(m_object, "strFichAyuda"));
}

QString ServiciosHost::PathNodo() const {
  return automation::Text(Get(m_object, "PathNodo"));
}

qint32 ServiciosHost::IDUsuario() const {
  return automation::CLng(Get(m_object, "IDUsuario"));
}

int ServiciosHost::TipoUsuario() const {
  return automation::CLng(Get(m_object, "TipoUsuario"));
}

bool ServiciosHost::velumar() const {
  return automation::CBool(Get(m_object, "velumar"));
}

bool ServiciosHost::BloqueoRegistro(const QString& form, const QString& keyColumn, qint32 key, bool& held) const {
  QObject* request = objApi().Objeto();
  return automation::CBool(
      Call(m_object, "BloqueoRegistro", automation::Ref(request), form, keyColumn, key, automation::Ref(held)));
}

void ServiciosHost::DesbloqueoRegistro(const QString& form, const QString& keyColumn, qint32 key) const {
  QObject* request = objApi().Objeto();
  Call(m_object, "DesbloqueoRegistro", automation::Ref(request), form, keyColumn, key);
}

void ServiciosHost::BloquearControles(QObject* control) const {
  Call(m_object, "BloquearControles", control);
}

void ServiciosHost::establecercontrolcambioformulario(const QObjectList& controls) const {
  Call(m_object, "establecercontrolcambioformulario", controls);
}

bool ServiciosHost::controlcambioformulario(const QObjectList& controls) const {
  return automation::CBool(Call(m_object, "controlcambioformulario", controls));
}

void ServiciosHost::SeleccionarTexto(QObject* control) const {
  Call(m_object, "SeleccionarTexto", control);
}

void ServiciosHost::SeleccionarFila(QObject* grid, qint32 row) const {
  Call(m_object, "SeleccionarFila", grid, row);
}

void ServiciosHost::SalvarAnchos(QObject* grid, const QString& key, const QString& form) const {
  Call(m_object, "SalvarAnchos", grid, key, form);
}

void ServiciosHost::CargarAnchos(QObject* grid, const QString& key, const QString& form) const {
  Call(m_object, "CargarAnchos", grid, key, form);
}

void ServiciosHost::VerError(const QString& procedure, const QString& entity, const QString& component) const {
  Call(m_object, "VerError", procedure, entity, component);
}

void ServiciosHost::SeleccionarCP_Provincia(QObject* changed, QObject* coupled) const {
  Call(m_object, "SeleccionarCP_Provincia", automation::Ref(changed), automation::Ref(coupled), &congestion());
}

ServiciosHost& objApi() {
  static ServiciosHost current;
  return current;
}

Listas::Listas() : m_object(automation::CreateObject(QStringLiteral("KelApi.cListas"))) {}

void Listas::RellenarComboPais(QObject* combo, const QVariant& id) const {
  Call(m_object.get(), "RellenarComboPais", &objApi().congestion(), combo, id, true);
}

void Listas::RellenarComboProvincias(QObject* combo, qint32 country, const QVariant& id) const {
  Call(m_object.get(), "RellenarComboProvincias", &objApi().congestion(), combo, country, id, true);
}

void Listas::LocalizarElementoLista(QObject* combo, qint32 id) const {
  Call(m_object.get(), "LocalizarElementoLista", combo, id);
}
