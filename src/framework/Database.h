#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/Statement.h"

#include <QVariant>

#include <functional>
#include <memory>
#include <type_traits>

class QComboBox;

/// The database as dialogs use it: statements on the connection of the request under way. Errors pass through.
namespace framework {

adodb::Connection& Connection();

/// Runs the statement; see adodb::Execute.
template <typename... Values>
std::unique_ptr<adodb::Recordset> Execute(std::type_identity_t<adodb::Statement<Values...>> statement,
                                          const Values&... values) {
  return adodb::Execute<Values...>(Connection(), statement, values...);
}

/// The field of the first row that a statement with its values in place finds; Null when there is none.
QVariant FirstField(QStringView field, const QString& statement);
template <typename... Values>
QVariant LookUp(QStringView field, std::type_identity_t<adodb::Statement<Values...>> statement,
                const Values&... values) {
  return FirstField(field, statement.Text(values...));
}

/// What an item shows of a row.
using ItemText = std::function<QString(adodb::Recordset& row)>;
/// The same for a field as it is.
ItemText TextOf(QStringView field);

/// Empties the list and fills it, one item per row of a statement with its values in place, with the row's `idField` as
/// its data; selects the item with the identifier `id`, or none.
void FillComboFrom(QComboBox* combo, const ItemText& text, QStringView idField, qint32 id, const QString& statement);
template <typename... Values>
void FillCombo(QComboBox* combo, QStringView textField, QStringView idField, qint32 id,
               std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) {
  FillComboFrom(combo, TextOf(textField), idField, id, statement.Text(values...));
}
template <typename... Values>
void FillCombo(QComboBox* combo, const ItemText& text, QStringView idField, qint32 id,
               std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) {
  FillComboFrom(combo, text, idField, id, statement.Text(values...));
}

}  // namespace framework
