#pragma once

#include <QString>

class QHeaderView;
class QObject;

/// The widths of a grid's columns, kept in a settings file of the user between two openings of a dialog.
namespace host {

/// The header of a table or a tree. Raises 13 for any other object, 91 for none.
QHeaderView& HeaderOf(QObject* grid);

/// Stores the widths, in logical pixels, under the key, the dialog's name and the grid's name, if the user changed them
/// since LoadColumnWidths. A last column that fills its grid has none. The key may hold any character. A settings file
/// that cannot be written costs the widths, and nothing else: a warning goes to the log.
void SaveColumnWidths(const QString& settingsFile, QObject* grid, const QString& key, const QString& dialog);

/// Restores what was stored. Columns that are hidden or for which nothing sensible is stored (no number, under 8 or
/// above 4000 pixels) keep their width.
void LoadColumnWidths(const QString& settingsFile, QObject* grid, const QString& key, const QString& dialog);

}  // namespace host
