#pragma once

#include <QString>

class QWidget;

namespace host {

/// Opens the help file, in the program's HelpDesk or else with the desktop's program for it; says so where there is
/// none.
void OpenHelp(const QString& title, const QString& file);

/// What the program is, and its version.
void ShowAbout(QWidget* parent, const QString& title);

}  // namespace host
