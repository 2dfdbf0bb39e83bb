#pragma once

#include <QtGlobal>

/// The actions of a request, by name. The numbers are part of the contract between host and component.
class cConstAccion {
 public:
  constexpr quint8 Agregar() const { return 1; }
  /// Add on behalf of another dialog: the new record's identifier goes back in `IDAux`.
  constexpr quint8 Nuevo() const { return 4; }
  constexpr quint8 Modificar() const { return 2; }
  constexpr quint8 Eliminar() const { return 3; }
  constexpr quint8 Cargar() const { return 5; }
  /// A dialog refused to load, or could not.
  constexpr quint8 Error() const { return 255; }
};
