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

// A condition on what is gone would choose nobody, or other people than it says.
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

}  // namespace

SavedSelection ReadSelection(adodb::Connection& connection, const QString& name, int userId) {
  const auto rows = adodb::Execute(connection,
                                   u"SELECT IDSeleccion, Nombre, Condiciones FROM Selecciones WHERE Eliminado=0 AND "
                                   u"Nombre='{0}' AND (codUsuario={1} OR Compartida=True) ORDER BY "
                                   u"IIF(codUsuario={1}, 0, 1), IDSeleccion",
                                   name, userId);
  if (rows->AtEnd()) {
    Refuse(u"No hay ninguna selección con el nombre «%1»."_s.arg(name));
  }
  SavedSelection selection{.id = automation::CLng(rows->Field(0)),
                           .name = automation::Text(rows->Field(1)),
                           .conditions = ConditionsIn(automation::Text(rows->Field(2))),
                           .people = {}};
  const auto people = adodb::Execute(
      connection, u"SELECT codColaborador, Incluida FROM SeleccionesPersonas WHERE codSeleccion={}", selection.id);
  for (; !people->AtEnd(); people->MoveNext()) {
    selection.people.insert(automation::CLng(people->Field(0)), automation::CBool(people->Field(1)));
  }
  RequireRecords(connection, selection);
  return selection;
}

}  // namespace host
