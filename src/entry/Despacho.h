#pragma once

#include "platform/contract/cConstNodo.h"
#include "framework/Formulario.h"

#include <memory>
#include <span>

/// Which dialog belongs to a node of the host, and how it is opened.
namespace Despacho {

enum class Apertura {
  Modal,
  /// Loaded behind the hourglass first; shown only when its load completed.
  CargaGuardada,
  /// As Modal, unless no printer is installed.
  ConImpresora,
  /// As CargaGuardada, and only when a record is selected.
  CargaGuardadaConRegistro,
};

/// One row of the dispatch table.
struct Entrada {
  QVariant nodo;
  QString dialogo;
  Apertura apertura;
  /// Makes the dialog; null for one that this version does not have.
  std::unique_ptr<Formulario> (*crear)();
  /// The dialog whose default instance is released afterwards.
  QString liberado;
};

/// The table in the order in which nodes are compared: the first row of a node decides.
std::span<const Entrada> Tabla();

enum class Resultado { Hecho, SinImpresora };

/// Shows the dialog of the node and returns when it has been closed; nothing for a node without a row. Throws what
/// the dialog lets out.
Resultado MostrarDialogo(qint32 nodo);

}  // namespace Despacho
