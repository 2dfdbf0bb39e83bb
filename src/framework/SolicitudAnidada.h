#pragma once

#include <QVariant>

/// A request that a dialog makes of another dialog in the middle of its own: it keeps the host's action, selected
/// record and auxiliary value, sets the action and `IDAux` for the nested dialog, and puts the three back at its end.
class SolicitudAnidada {
 public:
  /// `idAux` is the parent that the new record must belong to, 0 for none; the action is `Nuevo` unless another is
  /// given.
  explicit SolicitudAnidada(const QVariant& idAux = 0);
  SolicitudAnidada(const QVariant& idAux, int action);
  SolicitudAnidada(const SolicitudAnidada&) = delete;
  SolicitudAnidada& operator=(const SolicitudAnidada&) = delete;
  ~SolicitudAnidada();

  /// The identifier of the record that the nested dialog created, 0 when it created none.
  qint32 Creado() const;

 private:
  int m_accion;
  qint32 m_idSeleccionado;
  QVariant m_idAux;
};
