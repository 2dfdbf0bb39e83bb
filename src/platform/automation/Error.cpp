#include "platform/automation/Error.h"

#include <QCoreApplication>

#include <new>
#include <utility>

using namespace Qt::StringLiterals;

namespace automation {

namespace {

struct NumberedText {
  int number;
  const char* text;
};

const NumberedText texts[] = {
    {5, "Argumento o llamada a procedimiento no válidos"},
    {6, "Desbordamiento"},
    {7, "Memoria insuficiente"},
    {9, "El subíndice está fuera del intervalo"},
    {11, "División por cero"},
    {13, "No coinciden los tipos"},
    {53, "No se encontró el archivo"},
    {91, "Variable de objeto o bloque With no establecido"},
    {94, "Uso no válido de Null"},
    {326, "No se encuentra el recurso con ese identificador"},
    {400, "El formulario ya se muestra; no se puede mostrar modalmente"},
    {424, "Se requiere un objeto"},
    {429, "El componente no puede crear el objeto"},
    {438, "El objeto no admite esta propiedad o método"},
    {440, "Error de Automatización"},
    {449, "Argumento no opcional"},
    {450, "Número de argumentos erróneo o asignación de propiedad no válida"},
    {457, "Esta clave ya está asociada a un elemento de esta colección"},
    {3021,
     "El valor de BOF o EOF es True, o el actual registro se eliminó; la operación solicitada requiere un registro "
     "actual"},
    {3265, "No se encontró el elemento en la colección que corresponde al nombre o el ordinal solicitado"},
    {3704, "La operación no está permitida si el objeto está cerrado"},
    {3705, "La operación no está permitida si el objeto está abierto"},
    {3709,
     "No se puede utilizar la conexión para realizar esta operación. Está cerrada o no es válida en este contexto"},
};

}  // namespace

QString ErrorText(int number) {
  for (const NumberedText& entry : texts) {
    if (entry.number == number) {
      return QString::fromUtf8(entry.text);
    }
  }
  return ErrorText(440);
}

Error::Error(int number) : Error(number, ErrorText(number)) {}

Error::Error(int number, QString description, QString source)
    : m_number(number),
      m_description(std::move(description)),
      m_source(std::move(source)),
      m_what(m_description.toUtf8()) {}

Error::~Error() = default;

void ErrObject::Set(const Error& error) {
  Number = error.Number();
  Description = error.Description();
  Source = error.Source();
}

void ErrObject::Clear() {
  *this = ErrObject();
}

ErrObject& Err() {
  static ErrObject current;
  return current;
}

Error CurrentError() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(7);
  } catch (const std::exception& error) {
    return Error(440, ErrorText(440) + u": "_s + QString::fromUtf8(error.what()));
  } catch (...) {
    return Error(440);
  }
}

}  // namespace automation
