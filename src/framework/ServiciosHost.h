#pragma once

#include "platform/adodb/Connection.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

#include <memory>

/// The host's services object (ProgID "KelAPI.cPrincipal") behind typed functions, so that no dialog holds the
/// name of a member as a string. Every function is a late-bound call: it raises 438 when the host's object lacks
/// the member, 91 when there is no object, and whatever the member raises.
class ServiciosHost {
 public:
  ServiciosHost() = default;
  /// A services object that the host owns.
  explicit ServiciosHost(QObject* object) : m_object(object) {}
  /// A fresh, short-lived services object of this process's host, released with the result.
  static ServiciosHost Nuevo();

  QObject* Objeto() const { return m_object; }

  int IDNodo() const;
  int Accion() const;
  void Accion(int accion) const;
  qint32 IDSeleccionado() const;
  void IDSeleccionado(qint32 id) const;
  QVariant IDAux() const;
  /// IDAux as a number; 0 for one that is no number (an object reference, nothing).
  qint32 IDAuxNumero() const;
  void IDAux(const QVariant& value) const;
  /// The shared connection. Raises 91 when the host has none.
  adodb::Connection& congestion() const;
  QString tituloaplicacion() const;
  QString Icono() const;
  QString strFichAyuda() const;
  QString PathNodo() const;
  qint32 IDUsuario() const;
  int TipoUsuario() const;
  bool velumar() const;

  /// True when another user holds the record; `held` becomes true when this caller holds it now.
  bool BloqueoRegistro(const QString& form, const QString& keyColumn, qint32 key, bool& held) const;
  void DesbloqueoRegistro(const QString& form, const QString& keyColumn, qint32 key) const;
  void BloquearControles(QObject* control) const;
  void establecercontrolcambioformulario(const QObjectList& controls) const;
  bool controlcambioformulario(const QObjectList& controls) const;
  void SeleccionarTexto(QObject* control) const;
  void SeleccionarFila(QObject* grid, qint32 row) const;
  void SalvarAnchos(QObject* grid, const QString& key, const QString& form) const;
  void CargarAnchos(QObject* grid, const QString& key, const QString& form) const;
  void VerError(const QString& procedure, const QString& entity, const QString& component) const;
  void SeleccionarCP_Provincia(QObject* changed, QObject* coupled) const;

 private:
  QPointer<QObject> m_object;
  std::shared_ptr<QObject> m_owned;
};

/// The services object of the current request, one for the whole component. It stays set between requests.
ServiciosHost& objApi();

/// The host's list helper (ProgID "KelApi.cListas"), created with this object and kept as long as it.
class Listas {
 public:
  Listas();

  /// Fills `combo` with the live countries; selects `id` unless it is empty.
  void RellenarComboPais(QObject* combo, const QVariant& id = {}) const;
  void RellenarComboProvincias(QObject* combo, qint32 country, const QVariant& id = {}) const;
  void LocalizarElementoLista(QObject* combo, qint32 id) const;

 private:
  std::shared_ptr<QObject> m_object;
};
