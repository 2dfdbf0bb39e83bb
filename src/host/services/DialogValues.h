#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class QDialog;

namespace host {

/// What a user put into a control of a dialog.
struct ControlValue {
  QString control;  ///< The control's name.
  QString label;    ///< What stands beside it, without marks.
  QVariant value;   ///< Text, number or Boolean; of a list the item's data and text.
  QString shown;    ///< As a person reads it.
};

/// The values of the dialog's named controls that take input, in the order of their creation. Fields that show rich
/// text are none.
QList<ControlValue> ValuesOf(const QDialog& dialog);

/// Puts values into the controls of their names, again until all hold, for one may fill another anew. Returns those
/// that did not: their control is gone, can't be changed, or does not take them any more.
QList<ControlValue> PutBack(QDialog& dialog, const QList<ControlValue>& values);

/// The rows of the dialog's grids and lists, as lines with tabs.
QStringList RowsOf(const QDialog& dialog);

}  // namespace host
