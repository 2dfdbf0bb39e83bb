#pragma once

#include "framework/MaintenanceForm.h"

#include <QVariant>

#include <memory>
#include <span>

/// Which dialog belongs to a node of the host, and how it is opened.
namespace entry::dispatch {

enum class Opening {
  Modal,
  /// Loaded behind the hourglass first; shown only when its load completed.
  GuardedLoad,
  /// As Modal, unless no printer is installed.
  WithPrinter,
  /// As GuardedLoad, and only when a record is selected.
  GuardedLoadOfARecord,
};

/// One row of the dispatch table.
struct Entry {
  QVariant node;
  QString dialog;
  Opening opening;
  /// Makes the dialog.
  std::unique_ptr<framework::MaintenanceForm> (*create)();
  /// The dialog whose default instance is released afterwards.
  QString released;
};

/// The table in the order in which nodes are compared: the first row of a node decides.
std::span<const Entry> Table();

enum class Outcome { Done, NoPrinter };

/// Shows the dialog of the node and returns when it has been closed; nothing for a node without a row. Throws what
/// the dialog lets out, and 400 when the node's dialog is open already: it stays as it is.
Outcome ShowDialog(qint32 node);

}  // namespace entry::dispatch
