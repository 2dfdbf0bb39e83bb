#include "database/Errors.h"

using namespace Qt::StringLiterals;

namespace database {

using automation::Error;

namespace {

constexpr qsizetype longestQuotation = 60;

// A part of a statement or a value short enough for a message box, without line breaks.
QString Quotation(QStringView text) {
  QString shown = text.left(longestQuotation).toString().simplified();
  if (text.size() > longestQuotation) {
    shown += u"…"_s;
  }
  return u"«%1»"_s.arg(shown);
}

QString PlatformText(int number) {
  switch (number) {
    case adodb::NoCurrentRow:
      return u"El valor de BOF o EOF es True, o el actual registro se eliminó; la operación solicitada requiere un "
             "registro actual."_s;
    case adodb::NoSuchField:
      return u"No se encontró el elemento en la colección que corresponde al nombre o el ordinal solicitado."_s;
    case adodb::ObjectClosed:
      return u"La operación no está permitida si el objeto está cerrado."_s;
    case adodb::ObjectOpen:
      return u"La operación no está permitida si el objeto está abierto."_s;
    case adodb::TransactionActive:
      return u"Ya hay una transacción en curso; termínela antes de empezar otra."_s;
    case adodb::NoTransaction:
      return u"No hay ninguna transacción en curso."_s;
    case adodb::TransactionLost:
      return u"La base de datos deshizo la transacción entera por un error anterior: no se ha guardado ninguno de sus "
             "cambios. Anule la operación y repítala."_s;
    default:
      return automation::ErrorText(number);
  }
}

QString ForColumn(const QString& column) {
  return column.isEmpty() ? QString() : u" (columna %1)"_s.arg(column);
}

}  // namespace

Error PlatformError(int number) {
  return Error(number, PlatformText(number));
}

Error SyntaxErrorAt(const QString& problem, QStringView statement, qsizetype position) {
  const QStringView rest = statement.mid(position).trimmed();
  const QString where = rest.isEmpty() ? u"al final de la instrucción"_s : u"en %1"_s.arg(Quotation(rest));
  return Error(adodb::SyntaxError, u"Error de sintaxis en la instrucción SQL: %1, %2."_s.arg(problem, where));
}

Error RefusedStatement(const QString& reason) {
  return Error(adodb::StatementRefused, reason);
}

Error MissingTable(QStringView name) {
  return Error(adodb::NoSuchTable,
               u"La base de datos no tiene ninguna tabla que se llame %1. Compruebe el "
               "nombre."_s.arg(Quotation(name)));
}

Error MissingColumn(QStringView name) {
  return Error(adodb::NoSuchColumn,
               u"Ninguna tabla de la instrucción tiene una columna que se llame %1. "
               "Compruebe el nombre."_s.arg(Quotation(name)));
}

Error AmbiguousColumn(QStringView name) {
  return Error(adodb::NoSuchColumn,
               u"La columna %1 está en más de una tabla de la instrucción. Escriba "
               "delante el nombre de la tabla."_s.arg(Quotation(name)));
}

Error NotANumber(QStringView text, const QString& column) {
  return Error(automation::TypeMismatch,
               u"No coinciden los tipos: %1 no es un número%2."_s.arg(Quotation(text), ForColumn(column)));
}

Error NumberTooBig(QStringView text, const QString& column) {
  return Error(automation::Overflow,
               u"Desbordamiento: el número %1 no cabe%2."_s.arg(Quotation(text), ForColumn(column)));
}

Error BadConnectionString(const QString& problem) {
  return Error(adodb::InvalidConnectionString,
               u"La cadena de conexión no es válida: %1. Ejemplo: "
               "Motor=sqlite;Archivo=\"/home/ana/kel.db\"."_s.arg(problem));
}

Error BadSchema(int line, const QString& problem) {
  return Error(adodb::InvalidSchema,
               u"La descripción del esquema está mal en la línea %1: %2. Vuelva a "
               "instalar el programa."_s.arg(line)
                   .arg(problem));
}

}  // namespace database
