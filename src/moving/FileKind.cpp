#include "moving/Source.h"

#include "platform/automation/Error.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

struct Beginning {
  QByteArrayView bytes;
  QStringView what;
};

// What people take for a database or a sheet by its ending.
constexpr Beginning others[] = {
    {"\xD0\xCF\x11\xE0",
     u"una hoja de cálculo antigua o protegida. Ábrala en su programa, quítele la contraseña si la "
     u"tiene y guárdela como .xlsx o .ods"},
    {"%PDF", u"un documento PDF. Pida los datos como hoja de cálculo o como .csv"},
    {"{\\rtf", u"una carta. Las cartas se traen dentro de una base de datos"},
    {"SQLite format 3",
     u"una base de datos de este programa o de otro parecido. Una copia propia se pone en su sitio "
     u"con «kel-host restaurar»"},
    {"\x1F\x8B", u"un archivo comprimido. Descomprímalo primero"},
    {"Rar!", u"un archivo comprimido. Descomprímalo primero"},
    {"7z\xBC\xAF", u"un archivo comprimido. Descomprímalo primero"},
};

bool IsWebPage(const QByteArray& begin) {
  const QByteArray text = begin.trimmed().toLower();
  return text.startsWith("<!doctype") || text.startsWith("<html") || text.startsWith("<?xml");
}

QByteArray BeginningOf(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) {
    Refuse(u"No se encuentra el archivo «%1». Compruebe el nombre y la carpeta."_s.arg(path));
  }
  if (!info.isFile()) {
    Refuse(u"«%1» no es un archivo."_s.arg(path));
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    Refuse(u"No se puede leer el archivo «%1». Compruebe sus permisos."_s.arg(path));
  }
  constexpr qint64 enough = 512;
  const QByteArray begin = file.read(enough);
  if (begin.isEmpty()) {
    Refuse(u"El archivo «%1» está vacío: no hay nada que traer."_s.arg(path));
  }
  return begin;
}

}  // namespace

FileKind KindOfFile(const QString& path) {
  const QByteArray begin = BeginningOf(path);
  if (begin.startsWith(QByteArrayView("\0\1\0\0Standard ", 13))) {
    return FileKind::Desktop;
  }
  if (begin.startsWith("PK\3\4")) {
    return FileKind::Spreadsheet;
  }
  for (const Beginning& other : others) {
    if (begin.startsWith(other.bytes)) {
      Refuse(u"«%1» es %2."_s.arg(path, other.what));
    }
  }
  if (IsWebPage(begin)) {
    Refuse(
        u"«%1» es una página web, aunque se llame de otra manera. Ábrala en la hoja de cálculo y guárdela como "
        "archivo .xlsx o .ods."_s.arg(path));
  }
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == u"csv" || ending == u"tsv" || ending == u"txt") {
    return FileKind::List;
  }
  Refuse(
      u"No se sabe qué es el archivo «%1». Se traen bases de datos .mdb y .accdb, hojas de cálculo .ods y .xlsx, y "
      "listas .csv."_s.arg(path));
}

}  // namespace moving
