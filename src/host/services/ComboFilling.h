#pragma once

#include "platform/adodb/Connection.h"

#include <QString>
#include <QVariant>

class QComboBox;
class QObject;

/// Combos whose items carry the identifier of their record as item data (Qt::UserRole).
namespace host {

/// The object as a combo. Raises 13 for any other object, 91 for none.
QComboBox& ComboFrom(QObject* object);

/// Adds one item per row of the statement: text and identifier from the columns named. `clear` empties the list
/// before. Nothing is selected by the filling itself: a selection stays while its item does, and an emptied list is
/// left without one.
void FillCombo(QComboBox& combo, adodb::Connection& connection, const QString& statement, const QString& textColumn,
               const QString& idColumn, bool clear);

/// Selects the first item whose data equals `id` and says whether there is one. The selection stays as it is when
/// there is none, or when `id` is Empty, Null or no number.
bool SelectById(QComboBox& combo, const QVariant& id);

}  // namespace host
