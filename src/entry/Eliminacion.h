#pragma once

#include <QtGlobal>

#include <span>

/// Guarded deletion: per node, the record's table and key, the query that finds live rows which still refer to it, and
/// the statement that marks its dependent rows.
namespace Eliminacion {

/// One row of the deletion table. In its statements `{ID}` stands for the record's identifier.
struct Regla {
  qint32 nodo;
  const char* tabla;
  const char* clave;
  const char* consulta = nullptr;  ///< the record is kept when it returns a row; null for no check
  const char* cascada = nullptr;   ///< run before the record is marked; null for none
};

/// The rows in the order in which nodes are compared.
std::span<const Regla> Reglas();

enum class Resultado { Hecha, Rechazada };

/// Deletes the record, or refuses with a message. Nothing is executed for a node without a row. Errors of the
/// database pass through.
Resultado Eliminar(qint32 nodo, qint32 id);

}  // namespace Eliminacion
