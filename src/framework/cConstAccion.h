#pragma once

#include <QtGlobal>

/// The actions of a request, by name. The numbers are part of the contract with the host.
class cConstAccion {
 public:
  quint8 Agregar() const { return 1; }
  /// Add on behalf of another dialog: the new record's identifier goes back in `IDAux`.
  quint8 Nuevo() const { return 4; }
  quint8 Modificar() const { return 2; }
  quint8 Eliminar() const { return 3; }
  quint8 Cargar() const { return 5; }
  /// A dialog refused to load, or could not.
  quint8 Error() const { return 255; }
};
