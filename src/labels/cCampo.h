#pragma once

#include <QObject>

namespace labels {

/// One field or free text placed on a label (ProgID "KelConfiguracion.cCampo").
class cCampo : public QObject {
  Q_OBJECT
  Q_PROPERTY(int codTabla MEMBER codTabla)
  Q_PROPERTY(int IDElemento MEMBER IDElemento)
  Q_PROPERTY(int IDCampo MEMBER IDCampo)
  Q_PROPERTY(QString Campo MEMBER Campo)
  Q_PROPERTY(uchar Linea MEMBER Linea)
  Q_PROPERTY(uchar Orden MEMBER Orden)
  Q_PROPERTY(bool UsarCampo MEMBER UsarCampo)
  Q_PROPERTY(bool ExisteEnBD MEMBER ExisteEnBD)
  Q_PROPERTY(uchar Estado MEMBER Estado)

 public:
  /// Table group of the field; 0 for a free text.
  qint32 codTabla = 0;
  /// Key of the row; a negative number of the dialog's own for one that is not in the database yet.
  qint32 IDElemento = 0;
  /// The field in the catalogue; 0 for a free text.
  qint32 IDCampo = 0;
  /// The field's stored name, or the free text itself.
  QString Campo;
  /// Line of the label and position in the line, both from 1.
  quint8 Linea = 0;
  quint8 Orden = 0;
  /// False for a free text.
  bool UsarCampo = false;
  bool ExisteEnBD = false;
  /// What the writer has to do with a stored row, a value of cConstAccion: 2 update, 3 delete, else nothing.
  quint8 Estado = 0;
};

}  // namespace labels
