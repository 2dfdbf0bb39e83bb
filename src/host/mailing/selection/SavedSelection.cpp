#include "host/mailing/selection/SavedSelection.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

using adodb::Verbatim;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

}  // namespace

void RequireRecords(adodb::Connection& connection, const SavedSelection& selection) {
  for (std::size_t i = 0; i < conditionCount; ++i) {
    const auto condition = Condition(i);
    const ConditionRecords records = RecordsOf(condition);
    const bool marksDeleted = condition != Condition::Heading;
    for (const int key : selection.conditions.Of(condition)) {
      const auto found =
          adodb::Execute(connection, u"SELECT {0} FROM {1} WHERE {0}={2}{3}", Verbatim{records.key},
                         Verbatim{records.table}, key, Verbatim{marksDeleted ? u" AND Eliminado=0"_s : QString()});
      if (found->AtEnd()) {
        Refuse(
            u"La selección «%1» pide un registro que ya no existe: %2 número %3. Recupérelo, o elija otra "
            "selección."_s.arg(selection.name, records.title, QString::number(key)));
      }
    }
  }
}

namespace {

/// The selection in a row of number, name and conditions.
SavedSelection SelectionAt(adodb::Connection& connection, adodb::Recordset& row) {
  SavedSelection selection{.id = automation::CLng(row.Field(0)),
                           .name = automation::Text(row.Field(1)),
                           .conditions = ConditionsIn(automation::Text(row.Field(2))),
                           .people = {},
                           .onlyTaken = false};
  const auto people = adodb::Execute(
      connection, u"SELECT codColaborador, Incluida FROM SeleccionesPersonas WHERE codSeleccion={}", selection.id);
  for (; !people->AtEnd(); people->MoveNext()) {
    const bool taken = automation::CBool(people->Field(1));
    selection.people.insert(automation::CLng(people->Field(0)), taken);
    selection.onlyTaken = selection.onlyTaken || (taken && selection.conditions.AskNothing());
  }
  RequireRecords(connection, selection);
  return selection;
}

}  // namespace

SavedSelection ReadSelection(adodb::Connection& connection, const QString& name, int userId) {
  const auto row = adodb::Execute(connection,
                                  u"SELECT IDSeleccion, Nombre, Condiciones FROM Selecciones WHERE Eliminado=0 AND "
                                  u"Nombre='{0}' AND (codUsuario={1} OR Compartida=True) ORDER BY "
                                  u"IIF(codUsuario={1}, 0, 1), IDSeleccion",
                                  name, userId);
  if (row->AtEnd()) {
    Refuse(u"No hay ninguna selección con el nombre «%1»."_s.arg(name));
  }
  return SelectionAt(connection, *row);
}

SavedSelection ReadSelection(adodb::Connection& connection, int id, int userId) {
  const auto row = adodb::Execute(connection,
                                  u"SELECT IDSeleccion, Nombre, Condiciones FROM Selecciones WHERE Eliminado=0 AND "
                                  u"IDSeleccion={} AND (codUsuario={} OR Compartida=True)",
                                  id, userId);
  if (row->AtEnd()) {
    Refuse(u"Otra persona ha eliminado esta selección, o ya no la comparte. Elija otra."_s);
  }
  return SelectionAt(connection, *row);
}

}  // namespace host
