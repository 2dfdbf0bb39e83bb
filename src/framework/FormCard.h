#pragma once

#include "platform/automation/Error.h"

#include <QString>

#include <variant>

namespace framework {

/// How a dialog tells of an error of its load or unload.
struct ErrorBox {
  int stringId;  ///< A message of the dialog's own: this string, the error's number, ": ", its description.
};
struct ErrorReport {  ///< The host's VerError.
  QString procedure = QStringLiteral("Form Load");
  QString entity = {};         ///< The dialog's name where it is empty.
  bool freshServices = false;  ///< Through a services object made for the report, not through the request's.
};
struct ErrorLetOut {};  ///< The error leaves the call that showed the dialog.

/// What Cancel leaves in `IDAux`.
enum class CancelAnswer {
  Zero,            ///< 0 always
  ZeroUnderNuevo,  ///< 0 under the action `Nuevo`
  Nothing,         ///< what was there
};

/// What distinguishes one maintenance dialog from another in their common life.
struct FormCard {
  QString name;       ///< Class name, also the name under which the dialog locks and reports.
  QString lock = {};  ///< Key column of the record lock; empty for a dialog that takes none.
  int prompt = 0;     ///< String number of the close prompt; 0 for a dialog that tracks no changes and never asks.
  std::variant<ErrorReport, ErrorBox, ErrorLetOut> errors = {};
  CancelAnswer cancel = CancelAnswer::Zero;
  /// Procedure under whose name errors of Validate and Write are trapped; empty where they are let out, or trapped by
  /// the dialog itself.
  QString accept = {};
};

/// Tells an error that was trapped in the dialog of that card: by its own box where the card has one, else through the
/// host's VerError under the procedure's name, as reports spell it.
void TellError(const FormCard& card, const automation::Error& error, const QString& procedure);

}  // namespace framework
