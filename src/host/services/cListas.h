#pragma once

#include "host/records/Session.h"

#include <QObject>
#include <QVariant>

namespace host {

/// `KelApi.cListas`: fills and searches the combos of the dialogs. Items carry their record's identifier as data
/// (Qt::UserRole), only live records are listed, and lists are sorted by their text in Spanish order.
///
/// `vaciar` true empties the list first; false adds to it. `id` is the record to select after the filling; Empty, Null,
/// or one that is not listed selects nothing (in an emptied list) or leaves the selection. A `conexion` that is not
/// given is the session's; a closed one is opened.
///
/// Errors: 91 for no combo, 13 for another kind of object, and those of the database.
class cListas : public QObject {
  Q_OBJECT

 public:
  explicit cListas(Session& session);

  /// Fills a combo from `origen`: a SELECT, whose order is kept, or a table's name, whose rows come sorted by
  /// `columnaTexto` and include the deleted ones, for not every table has such a mark.
  Q_INVOKABLE void RellenarCombo(QObject* combo, const QString& origen, const QString& columnaTexto,
                                 const QString& columnaId, bool vaciar);
  /// Countries; item data IDPais.
  Q_INVOKABLE void RellenarComboPais(adodb::Connection* conexion, QObject* combo, const QVariant& id, bool vaciar);
  /// Provinces of a country; item data IDProvincia. For a country that is Empty, Null or 0 there are none.
  Q_INVOKABLE void RellenarComboProvincias(adodb::Connection* conexion, QObject* combo, const QVariant& idPais,
                                           const QVariant& id, bool vaciar);
  /// Banks by name; item data IDBanco.
  Q_INVOKABLE void rellenarcombobancos(QObject* combo, adodb::Connection* conexion, const QVariant& id, bool vaciar);
  /// Branches of a bank by name; item data IDSucursal.
  Q_INVOKABLE void rellenarcombosucursales(QObject* combo, const QVariant& idBanco, adodb::Connection* conexion,
                                           const QVariant& id, bool vaciar);

  /// Selects the item whose data equals `id`; the selection stays when there is none.
  Q_INVOKABLE void LocalizarElementoLista(QObject* combo, const QVariant& id);

  /// What belongs into the box beside a list: for `campoID` "IDBanco" the number of the bank `id`, for "IDSucursal" the
  /// code of the branch; empty when there is no such row. Deleted ones are found, for a stored record may still refer
  /// to one. `reservado` is 0. Raises 5 for another `campoID`.
  Q_INVOKABLE QString CargarBancoSucursalCaja(const QVariant& campoID, int reservado, int id);
  /// The reverse: selects in the combo the bank whose number is `texto` (`campoID` "IDBanco"), or the branch, among
  /// those listed, whose code it is ("IDSucursal"). Leading zeros may be left out ("49" finds "0049"). Nothing is
  /// selected afterwards when no listed row has that text. `reservado` is 0. Raises 5 for another `campoID`.
  Q_INVOKABLE void CargarBancoSucursalLista(QObject* combo, const QVariant& campoID, const QVariant& texto,
                                            int reservado);

 private:
  /// Lists the column Nombre of the statement's rows.
  void FillWithNames(adodb::Connection* connection, QObject* combo, const QString& statement, const QString& idColumn,
                     const QVariant& id, bool clear) const;
  adodb::Connection& Connection(adodb::Connection* given) const;

  Session& m_session;
};

}  // namespace host
