#pragma once

#include "platform/adodb/Connection.h"

#include <QObject>

namespace entry {

/// The component's entry class (ProgID "KelConfiguracion.CPrincipal"). A host creates it by name and calls it late
/// bound. It keeps no state; the services object of the last call stays the component's `objApi`.
class CPrincipal : public QObject {
  Q_OBJECT
  /// The version of the contract that the component keeps to, "1.0". A host may read it before its first request.
  Q_PROPERTY(QString VersionContrato READ VersionContrato CONSTANT)

 public:
  QString VersionContrato() const;

  /// Shows the dialog of the node `obj.IDNodo`, modally, and returns when it has been closed. Opens `obj.congestion`
  /// when it is closed, and closes it at the end, but not after the refusal for want of a printer.
  /// A member that `obj` lacks, a connection that cannot be opened and whatever a dialog lets out leave it as
  /// automation::Error; the connection then stays as it is.
  Q_INVOKABLE void PasarDatos(QObject* obj);

  /// Opens a closed connection with its own stored connection string; leaves an open one as it is.
  Q_INVOKABLE void AbrirConexion(adodb::Connection* Conexion);

  /// Marks the record `obj.IDSeleccionado` of the node `obj.IDNodo` deleted, with its dependent rows, unless live rows
  /// refer to it or it is an administrator: then a message says so and nothing is changed. The connection is opened
  /// when it is closed; it is closed after a deletion and after an unknown node, and left open after both refusals.
  /// Errors of the database leave it as automation::Error.
  Q_INVOKABLE void EliminarRegistro(QObject* obj);
};

}  // namespace entry
