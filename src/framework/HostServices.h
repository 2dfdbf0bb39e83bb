#pragma once

#include "platform/adodb/Connection.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

#include <memory>

namespace framework {

/// The host's services object (ProgID "KelAPI.cPrincipal") behind typed functions, so that no dialog holds the
/// name of a member as a string. Every function is a late-bound call: it raises 438 when the host's object lacks
/// the member, 91 when there is no object, and whatever the member raises.
class HostServices {
 public:
  HostServices() = default;
  /// A services object that the host owns.
  explicit HostServices(QObject* object) : m_object(object) {}
  /// A fresh, short-lived services object of this process's host, released with the result.
  static HostServices Fresh();

  QObject* Object() const { return m_object; }

  int IDNodo() const;
  void IDNodo(int node) const;
  int Accion() const;
  void Accion(int action) const;
  qint32 IDSeleccionado() const;
  void IDSeleccionado(qint32 id) const;
  QVariant IDAux() const;
  /// IDAux as a number; 0 for one that is no number (an object reference, nothing).
  qint32 IDAuxNumber() const;
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
  /// 1 valid, 2 format not recognised, 3 wrong check character (`control` is the right one), 4 wrong first letter of a
  /// CIF. `kind` becomes "CIF" or another kind's name.
  int CIF_NIF_Valido(const QString& taxIdentifier, QString& kind, QString& control) const;
  /// 1 for a valid one.
  int Validar_NIF(const QString& taxIdentifier) const;
  QString FormatearAEuros(const QVariant& amount) const;
  /// The key filter of an amount box: `key` is a character code and becomes the one to use, 0 for none.
  void VerificarEuros(int& key, QObject* box, int selectionStart, int selectionLength) const;

 private:
  QPointer<QObject> m_object;
  std::shared_ptr<QObject> m_owned;
};

/// The services object of the current request, one for the whole component. It stays set between requests.
HostServices& objApi();

}  // namespace framework
