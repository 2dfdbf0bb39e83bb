#pragma once

#include "host/desktop/RecordList.h"

#include <QString>

/// The shown list on its way out of the window: what is in sight, with its columns and its order.
namespace host {

/// What stands over it.
struct ListHead {
  QString title;   ///< "Bancos"
  QString search;  ///< What was searched; empty for nothing.
  QString origin;  ///< Whose list it is.
  QString user;    ///< Who takes it out.
};

/// Asks how the list is to be exported, and does it. Returns what was done, a sentence; empty where nothing was.
QString ExportShownList(const RecordList& list, const ListHead& head, QWidget* parent);

/// Shows the list as it will be on paper, and prints it. The database keeps the calibration of printers. Returns what
/// was done last.
QString PrintShownList(const RecordList& list, const ListHead& head, const QString& connectionString, QWidget* parent);

}  // namespace host
