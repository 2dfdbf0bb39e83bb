#pragma once

#include <QObject>

#include <memory>
#include <vector>

namespace banking {

/// One bank branch held in memory (ProgID "KelConfiguracion.cSucursal").
class cSucursal : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool ExisteEnBD MEMBER ExisteEnBD)
  Q_PROPERTY(uchar Estado MEMBER Estado)
  Q_PROPERTY(int IDSucursal MEMBER IDSucursal)
  Q_PROPERTY(int IDProvincia MEMBER IDProvincia)
  Q_PROPERTY(int IDPais MEMBER IDPais)
  Q_PROPERTY(QString Nombre MEMBER Nombre)
  Q_PROPERTY(QString Codigo MEMBER Codigo)
  Q_PROPERTY(QString Direccion MEMBER Direccion)
  Q_PROPERTY(QString Poblacion MEMBER Poblacion)
  Q_PROPERTY(QString CodigoPostal MEMBER CodigoPostal)
  Q_PROPERTY(QString Provincia MEMBER Provincia)
  Q_PROPERTY(QString Pais MEMBER Pais)

 public:
  /// Read from the database; false for a branch added in the dialog.
  bool ExisteEnBD = false;
  /// A value of cConstAccion: 1 new or unchanged, 2 edited, 3 marked for deletion.
  quint8 Estado = 0;
  /// Key of the row; a negative number of the dialog's own for a branch that is not in the database yet.
  qint32 IDSucursal = 0;
  qint32 IDProvincia = 0;
  qint32 IDPais = 0;
  QString Nombre;
  QString Codigo;
  QString Direccion;
  QString Poblacion;
  QString CodigoPostal;
  /// Names, for display.
  QString Provincia;
  QString Pais;
};

/// A bank's branches, those marked for deletion included.
using BranchCollection = std::vector<std::shared_ptr<cSucursal>>;

}  // namespace banking
