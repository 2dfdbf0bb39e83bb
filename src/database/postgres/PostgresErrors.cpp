#include "database/postgres/PostgresErrors.h"

#include "platform/adodb/ErrorNumbers.h"

#include <libpq-fe.h>

using namespace Qt::StringLiterals;

namespace database {

using automation::Error;

namespace {

// What a number, or with two characters a class of numbers, means here. %1 in a text is the database, %2 what the
// server names: a constraint, a column, a table.
struct Meaning {
  QByteArrayView state;
  int number;
  QStringView text;
};

constexpr Meaning meanings[] = {
    {"23505", adodb::ConstraintViolation,
     u"Ya existe un registro con los mismos valores (%2). Cambie el valor repetido."},
    {"23502", adodb::ConstraintViolation, u"Falta un valor obligatorio (%2). Rellénelo y vuelva a intentarlo."},
    {"23", adodb::ConstraintViolation, u"La base de datos no admite ese valor (%2). Corríjalo y vuelva a intentarlo."},
    {"22003", automation::Overflow, u"Desbordamiento: un número no cabe."},
    {"22", automation::TypeMismatch, u"No coinciden los tipos: un texto no es un número."},
    {"42883", automation::TypeMismatch, u"No coinciden los tipos de la instrucción SQL."},
    {"42804", automation::TypeMismatch, u"No coinciden los tipos de la instrucción SQL."},
    {"42846", automation::TypeMismatch, u"No coinciden los tipos de la instrucción SQL."},
    {"42P01", adodb::NoSuchTable,
     u"A la base de datos «%1» le falta una tabla: otro programa la ha cambiado. Recupere una copia de seguridad."},
    {"42703", adodb::NoSuchColumn,
     u"A la base de datos «%1» le falta una columna: otro programa la ha cambiado. Recupere una copia de seguridad."},
    {"42803", adodb::SyntaxError,
     u"Error de sintaxis en la instrucción SQL: una columna no está en GROUP BY ni dentro de una función."},
    {"42501", adodb::DatabaseReadOnly,
     u"Su usuario no tiene permiso para esa operación en la base de datos «%1» (%2). Pídalo a quien la administra."},
    {"25006", adodb::DatabaseReadOnly,
     u"La base de datos «%1» está abierta solo para leer. Pida permiso de escritura a quien la administra."},
    {"40", adodb::TransactionLost,
     u"Otro usuario estaba cambiando lo mismo: no se ha guardado ninguno de los cambios. Anule la operación y "
     u"repítala."},
    {"25P02", adodb::TransactionLost,
     u"La base de datos deshizo la transacción entera: no se ha guardado ninguno de sus cambios. Anule la operación y "
     "repítala."},
    {"55P03", adodb::DatabaseLocked,
     u"Otro usuario está cambiando los mismos registros de la base de datos «%1» y no ha terminado a tiempo. No se ha "
     "guardado nada. Espere y vuelva a intentarlo."},
    {"53100", adodb::DiskFull,
     u"No queda sitio en el disco del servidor de la base de datos «%1». No se ha guardado el último cambio. Avise a "
     "quien lo administra."},
    {"58030", adodb::DiskFailure,
     u"El disco del servidor de la base de datos «%1» falló. Avise a quien lo administra."},
    {"53300", adodb::CannotOpen,
     u"El servidor de la base de datos «%1» no admite más conexiones. Espere a que otro usuario termine y vuelva a "
     "intentarlo."},
    {"57P03", adodb::CannotOpen,
     u"El servidor de la base de datos «%1» está arrancando o parando. Espere un momento y vuelva a intentarlo."},
    {"54", adodb::StatementTooBig,
     u"La instrucción SQL o uno de sus valores es demasiado grande (%2). Acórtelo y vuelva a intentarlo."},
    {"57014", adodb::Stopped, u"El trabajo se ha interrumpido."},
    {"28", adodb::CannotOpen,
     u"El servidor no reconoce al usuario o su contraseña para la base de datos «%1». Compruebe el usuario y la "
     "contraseña guardada en ~/.pgpass."},
    {"3D000", adodb::CannotOpen, u"En el servidor no existe la base de datos «%1». Compruebe su nombre."},
    {"XX001", adodb::DatabaseDamaged, u"La base de datos «%1» está dañada. Avise a quien la administra."},
    {"XX002", adodb::DatabaseDamaged, u"Un índice de la base de datos «%1» está dañado. Avise a quien la administra."},
    {"08", adodb::CannotOpen, {}},
    {"57P", adodb::CannotOpen, {}},
};

constexpr QStringView noLine =
    u"No hay conexión con el servidor de la base de datos «%1». Compruebe la red y que el servidor está en marcha, y "
    "vuelva a intentarlo.";

const Meaning* MeaningOf(const QByteArray& state) {
  for (const Meaning& meaning : meanings) {
    if (state.startsWith(meaning.state)) {
      return &meaning;
    }
  }
  return nullptr;
}

QString Field(const pg_result* result, int code) {
  return QString::fromUtf8(PQresultErrorField(result, code));
}

const Index* FindIndex(const Table& table, const QString& name) {
  for (const Index& index : table.indexes) {
    if (index.name.compare(name, Qt::CaseInsensitive) == 0) {
      return &index;
    }
  }
  return nullptr;
}

// "Bancos.Numero", as the schema spells it; as the server does where the schema has nothing of the name.
QString Concerned(const pg_result* result) {
  const QString tableName = Field(result, PG_DIAG_TABLE_NAME);
  const QString columnName = Field(result, PG_DIAG_COLUMN_NAME);
  const QString constraint = Field(result, PG_DIAG_CONSTRAINT_NAME);
  const Table* table = Schema::Current().FindTable(tableName);
  if (table == nullptr) {
    return tableName;
  }
  if (const Column* column = table->FindColumn(columnName)) {
    return table->name + u'.' + column->name;
  }
  if (const Index* index = FindIndex(*table, constraint)) {
    return table->name + u'.' + index->columns.join(u", "_s);
  }
  // A constraint without a name of ours is called TABLE_pkey or TABLE_COLUMN_check.
  if (constraint.endsWith(u"_pkey"_s)) {
    return table->name + u'.' + table->columns.front().name;
  }
  QString checked = constraint.mid(tableName.size() + 1);
  checked.chop(QStringView(u"_check").size());
  const Column* column = table->FindColumn(checked);
  return column == nullptr ? table->name : table->name + u'.' + column->name;
}

Error ErrorFor(const QByteArray& state, const QString& concerned, const ConnectionString& target) {
  const Meaning* meaning = MeaningOf(state);
  const QString shown = target.ShownName();
  if (meaning == nullptr && !state.isEmpty()) {
    return Error(adodb::EngineFailure, u"La base de datos «%1» rechazó la operación (PostgreSQL, error %2)."_s.arg(
                                           shown, QString::fromLatin1(state)));
  }
  const bool isCut = meaning == nullptr || meaning->text.isEmpty();
  QString text = (isCut ? noLine : meaning->text).toString();
  text.replace(u" (%2)"_s, concerned.isEmpty() ? QString() : u" ("_s + concerned + u')');
  return Error(isCut ? int(adodb::CannotOpen) : meaning->number, text.replace(u"%1"_s, shown));
}

// The column that the longest text goes into: of one too long for an index the server names nothing.
QString LongestText(const Plan& plan, const ParameterValues& values) {
  constexpr std::size_t longestIndexed = 2000;
  std::size_t longest = longestIndexed;
  QString name;
  for (std::size_t i = 0; i < plan.bindings.size(); ++i) {
    const Column* column = plan.bindings[i].column;
    if (values.Values()[i].size > longest && column != nullptr && plan.effect.writtenTable != nullptr) {
      longest = values.Values()[i].size;
      name = plan.effect.writtenTable->name + u'.' + column->name;
    }
  }
  return name;
}

}  // namespace

QByteArray SqlState(const pg_result* result) {
  return result == nullptr ? QByteArray() : QByteArray(PQresultErrorField(result, PG_DIAG_SQLSTATE));
}

bool UndoesTransaction(const QByteArray& sqlState) {
  return sqlState.isEmpty() || sqlState.startsWith("40") || sqlState == "25P02";
}

Error ServerError(const pg_result* result, const ConnectionString& target, const QString& concerned) {
  const QString named = result == nullptr ? QString() : Concerned(result);
  return ErrorFor(SqlState(result), named.isEmpty() ? concerned : named, target);
}

QString NamesOf(const std::vector<const Table*>& tables) {
  QStringList names;
  for (const Table* table : tables) {
    names += table->name;
  }
  names.removeDuplicates();
  return names.join(u", "_s);
}

Error ConnectingError(const pg_conn* connection, const ConnectionString& target) {
  if (PQconnectionNeedsPassword(connection) != 0) {
    return ErrorFor("28P01", {}, target);
  }
  // "FATAL:  28P01", by the verbosity that was asked for; without a number nobody answered.
  const QByteArray text = QByteArray(PQerrorMessage(connection)).trimmed();
  const QByteArray last = text.mid(text.lastIndexOf(' ') + 1);
  return ErrorFor(MeaningOf(last) != nullptr && last.size() == 5 ? last : QByteArray(), {}, target);
}

Error UnusableServer(const ConnectionString& target, const QString& reason) {
  return Error(adodb::CannotOpen, u"No se puede usar la base de datos «%1»: %2."_s.arg(target.ShownName(), reason));
}

QString ConcernedBy(const Plan& plan, const ParameterValues& values) {
  if (plan.effect.writtenTable != nullptr) {
    const QString text = LongestText(plan, values);
    return text.isEmpty() ? plan.effect.writtenTable->name : text;
  }
  return NamesOf(plan.readTables);
}

automation::Error CutOff(const ConnectionString& target) {
  return automation::Error(
      adodb::TransactionLost,
      u"Se cortó la conexión con la base de datos «%1»: no se ha guardado ninguno de los cambios. Vuelva a "
      "intentarlo."_s.arg(target.ShownName()));
}

automation::Error OutcomeUnknown(const ConnectionString& target) {
  return automation::Error(
      adodb::TransactionLost,
      u"Se cortó la conexión con la base de datos «%1» mientras guardaba: no se sabe si los cambios "
      "se han guardado. Compruébelo antes de repetirlos."_s.arg(target.ShownName()));
}

}  // namespace database
