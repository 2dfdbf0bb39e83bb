#pragma once

#include "host/records/Session.h"

#include <QObject>
#include <QObjectList>
#include <QVariant>

namespace host {

/// `KelAPI.cPrincipal`: the services object of the host contract. One object carries a request (node, action, records,
/// path of the node) and is handed to the component; the session is shared by all, so that a fresh object serves as
/// well as the first for everything else.
///
/// Controls are given as the widget or action itself. Every method raises 91 for no object and 13 for an object of a
/// kind that it does not serve, unless it says otherwise. Errors of the database pass through.
class cPrincipal : public QObject {
  Q_OBJECT
  Q_PROPERTY(int IDNodo MEMBER m_idNodo)
  Q_PROPERTY(int Accion MEMBER m_accion)
  Q_PROPERTY(int IDSeleccionado MEMBER m_idSeleccionado)
  Q_PROPERTY(QVariant IDAux MEMBER m_idAux)
  Q_PROPERTY(adodb::Connection* congestion READ Congestion CONSTANT)
  Q_PROPERTY(QString tituloaplicacion READ TituloAplicacion CONSTANT)
  Q_PROPERTY(QString Icono READ Icono CONSTANT)
  Q_PROPERTY(QString strFichAyuda READ FicheroAyuda CONSTANT)
  Q_PROPERTY(QString PathNodo MEMBER m_pathNodo)
  Q_PROPERTY(int IDUsuario READ IdUsuario CONSTANT)
  Q_PROPERTY(int TipoUsuario READ TipoUsuario CONSTANT)
  Q_PROPERTY(QVariant velumar READ Velumar CONSTANT)

 public:
  explicit cPrincipal(Session& session);

  adodb::Connection* Congestion() const { return m_session.connection; }
  QString TituloAplicacion() const { return m_session.title; }
  QString Icono() const { return m_session.icon; }
  QString FicheroAyuda() const { return m_session.helpFile; }
  int IdUsuario() const { return m_session.userId; }
  int TipoUsuario() const { return m_session.userKind; }
  QVariant Velumar() const { return m_session.velumar; }

  /// Locks the record whose key column `campoID` holds `valorID`. `objeto` is a services object whose `congestion` is
  /// used; for nothing, or an object without that member, the session's connection is. `formulario` is the dialog's
  /// name, for the messages of a host; it does not belong to the lock.
  ///
  /// False, with `bloqueado` true: this process and user hold the lock now, for the first time or again.
  /// True, with `bloqueado` false: somebody else holds it. Session::lastRefusal then says who, and the user is told so,
  /// and that the record opens read-only, unless Session::showRefusedLocks is off.
  /// In a session that is read-only nobody holds it, and nobody is told, but the answer is True all the same.
  /// A lock whose process ended on this machine is taken over (see RecordLocks).
  Q_INVOKABLE bool BloqueoRegistro(QObject*& objeto, const QString& formulario, const QString& campoID, int valorID,
                                   bool& bloqueado);
  /// Releases the lock that this process and user hold; nothing happens when they hold none.
  Q_INVOKABLE void DesbloqueoRegistro(QObject*& objeto, const QString& formulario, const QString& campoID, int valorID);

  /// Disables a widget or an action, and makes the dialog that it belongs to one that can only be looked at (see
  /// ReadOnlyDialog.h).
  Q_INVOKABLE void BloquearControles(QObject* control);

  /// Remembers the values of the dialog's controls (see ChangeTracking.h).
  Q_INVOKABLE void establecercontrolcambioformulario(const QObjectList& controles);
  /// True when one of them holds something else now; never for a dialog that can only be looked at.
  Q_INVOKABLE bool controlcambioformulario(const QObjectList& controles);

  /// Selects the whole text of a line edit, text edit, spin box or editable combo. A combo without an edit line is
  /// left alone.
  Q_INVOKABLE void SeleccionarTexto(QObject* control);

  /// Makes a row of an item view current and selects it whole. Rows count from 0; -1 selects nothing. Raises 9 for a
  /// row that the view does not have.
  Q_INVOKABLE void SeleccionarFila(QObject* rejilla, int fila);

  /// Stores and restores the column widths of a table or tree under any key (see ColumnWidths.h).
  Q_INVOKABLE void SalvarAnchos(QObject* rejilla, const QString& clave, const QString& formulario);
  Q_INVOKABLE void CargarAnchos(QObject* rejilla, const QString& clave, const QString& formulario);

  /// Shows automation::Err(): what failed, what to do, and folded number, description and where it happened. The error
  /// stays set.
  Q_INVOKABLE void VerError(const QString& procedimiento, const QString& entidad, const QString& componente);

  /// Checks a Spanish tax identifier (see TaxIdentifier.h): 1 valid, 2 format not recognised, 3 wrong check character,
  /// 4 first letter of a CIF invalid. `tipo` becomes "NIF", "NIE" or "CIF", for 2 what the text most looks like;
  /// `control` the check character that fits, empty for 2 and 4.
  Q_INVOKABLE int CIF_NIF_Valido(const QString& texto, QString& tipo, QString& control);
  /// The same verdict without the rest: 1 is valid. Every kind of identifier is taken, for an entity collects, too.
  Q_INVOKABLE QVariant Validar_NIF(const QString& texto);

  /// An amount as "1.234,50" (see FormatEuros).
  Q_INVOKABLE QString FormatearAEuros(const QVariant& importe);

  /// The key filter of an amount box (see FilterEuroKey). `tecla` is the typed character's code and becomes 0 when it
  /// is refused, with a beep, and the comma's code for a point. `caja` is the line edit, or the text that it holds;
  /// for a line edit its own selection counts. Otherwise `inicio` and `longitud` say, from 0, what is selected.
  Q_INVOKABLE void VerificarEuros(int& tecla, const QVariant& caja, int inicio, int longitud);

  /// Lets a postcode box and a province combo follow each other (see PostcodeCoupling.h): the control that changed,
  /// then the other one, in either order of kinds. Without a connection the session's is used.
  Q_INVOKABLE void SeleccionarCP_Provincia(QObject*& cambiado, QObject*& acoplado, adodb::Connection* conexion);

 private:
  RecordLocks Locks(QObject* services) const;
  void TellOfRefusal() const;

  Session& m_session;
  int m_idNodo = 0;
  int m_accion = 0;
  int m_idSeleccionado = 0;
  QVariant m_idAux = 0;
  QString m_pathNodo;
};

}  // namespace host
