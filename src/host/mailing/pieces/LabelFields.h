#pragma once

#include "documents/labels/LabelText.h"
#include "platform/adodb/Connection.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace host {

/// A place of a sheet: a column's value, or a text.
struct LabelField {
  int line = 1;
  int position = 1;
  QString table;   ///< In capitals, empty for a text.
  QString column;  ///< In capitals.
  QString text;
  bool Is(QStringView ofTable, QStringView ofColumn) const { return table == ofTable && column == ofColumn; }
};

/// What labels are for: a sheet has fields of its own for each.
enum class LabelsFor { People, Disks };

/// The fields of a sheet. What the catalogue or the schema does not have, or what is nobody's, is named in
/// `faults` and is empty on the labels. Of disks only what a sheet for them is made with may be read.
QList<LabelField> ReadLabelFields(adodb::Connection& connection, int sheet, LabelsFor what, QStringList& faults);

/// A stored value of the field's column as labels show it.
QString ShownValue(const LabelField& field, const QVariant& value);

/// The stored values of the fields for every person, by the person's key, in the order of the fields; texts and fields
/// without a value are empty. Of donations, subscriptions and accounts it is the last one's.
QHash<int, QStringList> ReadFieldValues(adodb::Connection& connection, const QList<LabelField>& fields);

}  // namespace host
