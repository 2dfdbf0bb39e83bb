#pragma once

#include "host/mailing/selection/SavedSelection.h"

#include <QList>
#include <QString>

namespace host {

/// Who keeps selections.
struct SelectionUser {
  int id = 0;
  bool isAdministrator = false;
};

/// A saved selection as lists name it.
struct StoredSelection {
  int id = 0;
  QString name;
  int owner = 0;
  bool isShared = false;
};

/// Its owner may change a selection, and an administrator a shared one.
bool MayChange(const StoredSelection& selection, const SelectionUser& user);

/// The user's own selections and the shared ones, by their names.
QList<StoredSelection> ListSelections(adodb::Connection& connection, int userId);

// Each of these is one transaction. They raise 5, in words, for a selection that is gone or that the user may not
// change, for a name that is empty, too long or that another selection in sight has, and the errors of the database;
// nothing is changed then.

/// Saves a new selection of the user's own (without a number), or changes the one that was read as `before`, which
/// nobody else may have changed meanwhile. Returns its number. Raises 5 for one that means nobody.
int SaveSelection(adodb::Connection& connection, const SavedSelection& selection, const SavedSelection& before,
                  const SelectionUser& user);
void RenameSelection(adodb::Connection& connection, int id, const QString& name, const SelectionUser& user);
void ShareSelection(adodb::Connection& connection, int id, bool isShared, const SelectionUser& user);
void DeleteSelection(adodb::Connection& connection, int id, const SelectionUser& user);

}  // namespace host
