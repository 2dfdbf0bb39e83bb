#pragma once

#include <QList>
#include <QString>

/// The printers of this machine and of its print server, by the system's own library (CUPS).
namespace host {

struct PrintQueue {
  QString name;
  QString title;    ///< What people call it; its name where they call it nothing.
  QString trouble;  ///< Why nothing can be printed now, a sentence; empty where it can.
  bool isUsual = false;
};

struct PrintTray {
  QString word;   ///< What the printer calls it.
  QString title;  ///< The same for people.
};

/// Nothing where there is no printer or no print server. Asks the server.
QList<PrintQueue> PrintQueues();
/// Raises 5, in words, for a printer that is gone, is stopped or takes nothing.
PrintQueue RequirePrintQueue(const QString& name);
/// The trays that can be chosen; nothing for a printer without a choice, or one that does not answer.
QList<PrintTray> TraysOf(const QString& queue);
/// Raises 5, naming those that there are, for a tray that the printer does not have.
void RequireTray(const QString& queue, const QString& tray);

/// How a file is printed.
struct PrintJob {
  QString queue;
  QString tray;  ///< Empty for the printer's own choice.
  QString title;
  bool bothSides = false;
  int copies = 1;
};

/// Hands a PDF on the usual paper to a printer, which prints it as large as it is, whatever the printer usually does.
/// Returns the job's number. Raises 5, in words, where the printer does not take it; nothing is printed then.
int SendToPrinter(const QString& pdf, const PrintJob& job);

}  // namespace host
