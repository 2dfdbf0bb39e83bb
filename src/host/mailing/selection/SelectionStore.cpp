#include "host/mailing/selection/SelectionStore.h"

#include "database/WriteHold.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

using adodb::Execute;

namespace host {

namespace {

constexpr qsizetype longestName = 100;

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

StoredSelection StoredAt(adodb::Recordset& row) {
  return {automation::CLng(row.Field(0)), automation::Text(row.Field(1)), automation::CLng(row.Field(2)),
          automation::CBool(row.Field(3))};
}

/// A transaction in which nobody else changes selections.
class Change {
 public:
  explicit Change(adodb::Connection& connection) : m_connection(connection), m_transaction(connection) {
    database::HoldWrites(connection, {u"Selecciones"_s, u"SeleccionesPersonas"_s});
  }

  /// The selection, which the user may change.
  StoredSelection Require(int id, const SelectionUser& user) {
    const auto row = Execute(
        m_connection,
        u"SELECT IDSeleccion, Nombre, codUsuario, Compartida FROM Selecciones WHERE Eliminado=0 AND IDSeleccion={}",
        id);
    if (row->AtEnd()) {
      Refuse(u"Otra persona ha eliminado esta selección. Guárdela con otro nombre si la necesita."_s);
    }
    const StoredSelection stored = StoredAt(*row);
    if (!MayChange(stored, user)) {
      Refuse(
          u"La selección «%1» es de otra persona: solo la cambian ella y un administrador. Guárdela con otro "
          "nombre."_s.arg(stored.name));
    }
    return stored;
  }

  /// The name without blanks around it, which no other selection has that one of its users sees.
  QString RequireName(const QString& typed, int id, int owner, bool isShared) {
    const QString name = typed.trimmed();
    if (name.isEmpty() || name.size() > longestName) {
      Refuse(u"Escriba un nombre de hasta %1 letras."_s.arg(longestName));
    }
    const auto row = Execute(m_connection,
                             u"SELECT IDSeleccion FROM Selecciones WHERE Eliminado=0 AND Nombre='{}' AND "
                             u"IDSeleccion<>{} AND (codUsuario={} OR Compartida=True OR {}=-1)",
                             name, id, owner, isShared);
    if (!row->AtEnd()) {
      Refuse(u"Ya hay una selección con el nombre «%1». Elija otro."_s.arg(name));
    }
    return name;
  }

  void Commit() { m_transaction.Commit(); }

 private:
  adodb::Connection& m_connection;
  adodb::Transaction m_transaction;
};

void WritePeople(adodb::Connection& connection, int id, const SavedSelection& selection) {
  Execute(connection, u"DELETE FROM SeleccionesPersonas WHERE codSeleccion={}", id);
  for (auto person = selection.people.cbegin(); person != selection.people.cend(); ++person) {
    Execute(connection, u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES ({}, {}, {})",
            id, person.key(), person.value());
  }
}

int Insert(adodb::Connection& connection, const QString& name, const QString& conditions, int owner) {
  Execute(connection,
          u"INSERT INTO Selecciones (Nombre, Condiciones, codUsuario, Compartida, Eliminado) VALUES ('{}', '{}', {}, "
          u"False, False)",
          name, conditions, owner);
  const auto row = Execute(connection, u"SELECT MAX(IDSeleccion) AS Maximo FROM Selecciones");
  return automation::CLng(row->Field(0));
}

bool TakesSomebody(const SavedSelection& selection) {
  return !selection.onlyTaken || selection.people.values().contains(true);
}

}  // namespace

bool MayChange(const StoredSelection& selection, const SelectionUser& user) {
  return selection.owner == user.id || (selection.isShared && user.isAdministrator);
}

QList<StoredSelection> ListSelections(adodb::Connection& connection, int userId) {
  const auto rows = Execute(connection,
                            u"SELECT IDSeleccion, Nombre, codUsuario, Compartida FROM Selecciones WHERE Eliminado=0 "
                            u"AND (codUsuario={} OR Compartida=True) ORDER BY Nombre, IDSeleccion",
                            userId);
  QList<StoredSelection> selections;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    selections.append(StoredAt(*rows));
  }
  return selections;
}

int SaveSelection(adodb::Connection& connection, const SavedSelection& selection, const SavedSelection& before,
                  const SelectionUser& user) {
  if (!TakesSomebody(selection)) {
    Refuse(u"La selección no tiene a nadie. Marque a quien quiera en la lista."_s);
  }
  Change change(connection);
  int id = selection.id;
  const QString conditions = TextOf(selection.conditions);
  if (id == 0) {
    id = Insert(connection, change.RequireName(selection.name, 0, user.id, false), conditions, user.id);
  } else {
    const StoredSelection stored = change.Require(id, user);
    if (ReadSelection(connection, id, stored.owner) != before) {
      Refuse(
          u"Otra persona ha cambiado la selección «%1» mientras tanto. Guárdela con otro nombre, y no se pierde "
          "nada."_s.arg(stored.name));
    }
    Execute(connection, u"UPDATE Selecciones SET Condiciones='{}' WHERE IDSeleccion={}", conditions, id);
  }
  WritePeople(connection, id, selection);
  change.Commit();
  return id;
}

void RenameSelection(adodb::Connection& connection, int id, const QString& name, const SelectionUser& user) {
  Change change(connection);
  const StoredSelection stored = change.Require(id, user);
  Execute(connection, u"UPDATE Selecciones SET Nombre='{}' WHERE IDSeleccion={}",
          change.RequireName(name, id, stored.owner, stored.isShared), id);
  change.Commit();
}

void ShareSelection(adodb::Connection& connection, int id, bool isShared, const SelectionUser& user) {
  Change change(connection);
  const StoredSelection stored = change.Require(id, user);
  change.RequireName(stored.name, id, stored.owner, isShared);
  Execute(connection, u"UPDATE Selecciones SET Compartida={} WHERE IDSeleccion={}", isShared, id);
  change.Commit();
}

void DeleteSelection(adodb::Connection& connection, int id, const SelectionUser& user) {
  Change change(connection);
  change.Require(id, user);
  Execute(connection, u"UPDATE Selecciones SET Eliminado=True WHERE IDSeleccion={}", id);
  change.Commit();
}

}  // namespace host
