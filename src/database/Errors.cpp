#include "database/Errors.h"

namespace database {

using automation::Error;

namespace {

constexpr qsizetype longestQuotation = 60;

// A part of a statement or a value short enough for a message box, without line breaks.
QString Quotation(QStringView text) {
  QString shown = text.left(longestQuotation).toString().simplified();
  if (text.size() > longestQuotation) {
    shown += QStringLiteral("…");
  }
  return QStringLiteral("«%1»").arg(shown);
}

QString PlatformText(int number) {
  switch (number) {
    case NoCurrentRow:
      return QStringLiteral(
          "El valor de BOF o EOF es True, o el actual registro se eliminó; la operación solicitada requiere un "
          "registro actual.");
    case NoSuchField:
      return QStringLiteral(
          "No se encontró el elemento en la colección que corresponde al nombre o el ordinal solicitado.");
    case ObjectClosed:
      return QStringLiteral("La operación no está permitida si el objeto está cerrado.");
    case ObjectOpen:
      return QStringLiteral("La operación no está permitida si el objeto está abierto.");
    case TransactionActive:
      return QStringLiteral("Ya hay una transacción en curso; termínela antes de empezar otra.");
    case NoTransaction:
      return QStringLiteral("No hay ninguna transacción en curso.");
    case TransactionLost:
      return QStringLiteral(
          "La base de datos deshizo la transacción entera por un error anterior: no se ha guardado ninguno de sus "
          "cambios. Anule la operación y repítala.");
    default:
      return automation::ErrorText(number);
  }
}

QString ForColumn(const QString& column) {
  return column.isEmpty() ? QString() : QStringLiteral(" (columna %1)").arg(column);
}

}  // namespace

Error PlatformError(int number) {
  return Error(number, PlatformText(number));
}

Error SyntaxErrorAt(const QString& problem, QStringView statement, qsizetype position) {
  const QStringView rest = statement.mid(position).trimmed();
  const QString where =
      rest.isEmpty() ? QStringLiteral("al final de la instrucción") : QStringLiteral("en %1").arg(Quotation(rest));
  return Error(SyntaxError, QStringLiteral("Error de sintaxis en la instrucción SQL: %1, %2.").arg(problem, where));
}

Error RefusedStatement(const QString& reason) {
  return Error(StatementRefused, reason);
}

Error MissingTable(QStringView name) {
  return Error(NoSuchTable, QStringLiteral("La base de datos no tiene ninguna tabla que se llame %1. Compruebe el "
                                           "nombre.")
                                .arg(Quotation(name)));
}

Error MissingColumn(QStringView name) {
  return Error(NoSuchColumn, QStringLiteral("Ninguna tabla de la instrucción tiene una columna que se llame %1. "
                                            "Compruebe el nombre.")
                                 .arg(Quotation(name)));
}

Error AmbiguousColumn(QStringView name) {
  return Error(NoSuchColumn, QStringLiteral("La columna %1 está en más de una tabla de la instrucción. Escriba "
                                            "delante el nombre de la tabla.")
                                 .arg(Quotation(name)));
}

Error NotANumber(QStringView text, const QString& column) {
  return Error(automation::TypeMismatch,
               QStringLiteral("No coinciden los tipos: %1 no es un número%2.").arg(Quotation(text), ForColumn(column)));
}

Error NumberTooBig(QStringView text, const QString& column) {
  return Error(automation::Overflow,
               QStringLiteral("Desbordamiento: el número %1 no cabe%2.").arg(Quotation(text), ForColumn(column)));
}

Error BadConnectionString(const QString& problem) {
  return Error(InvalidConnectionString, QStringLiteral("La cadena de conexión no es válida: %1. Ejemplo: "
                                                       "Motor=sqlite;Archivo=\"/home/ana/kel.db\".")
                                            .arg(problem));
}

Error BadSchema(int line, const QString& problem) {
  return Error(InvalidSchema, QStringLiteral("La descripción del esquema está mal en la línea %1: %2. Vuelva a "
                                             "instalar el programa.")
                                  .arg(line)
                                  .arg(problem));
}

}  // namespace database
