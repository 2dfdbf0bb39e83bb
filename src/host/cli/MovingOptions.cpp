#include "host/cli/MovingOptions.h"

#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

void TakePair(const QString& name, const QString& value, QMap<QString, QString>& pairs) {
  const qsizetype equals = value.indexOf(u'=');
  if (equals <= 0 || equals + 1 == value.size()) {
    Refuse(u"«%1» no sirve como valor de «%2»: escriba NOMBRE-DEL-ARCHIVO=NOMBRE-DE-AQUÍ."_s.arg(value, name));
  }
  pairs.insert(value.left(equals), value.mid(equals + 1));
}

// "3" for every sheet, "Socios=3" for one.
void TakeHeadings(const QString& name, const QString& value, moving::Headings& headings) {
  const qsizetype equals = value.lastIndexOf(u'=');
  const int row = value.mid(equals + 1).toInt();
  if (row < 1 || row > moving::mostRowsAbove) {
    Refuse(u"«%1» no sirve como valor de «%2»: escriba FILA u HOJA=FILA, de 1 a %3."_s.arg(
        value, name, QString::number(moving::mostRowsAbove)));
  }
  headings.insert(equals < 0 ? u"*"_s : value.left(equals), row);
}

QString OneOf(const QString& name, const QString& value, const QStringList& words) {
  if (!words.contains(value, Qt::CaseInsensitive)) {
    Refuse(u"«%1» no sirve como valor de «%2»: escriba %3."_s.arg(value, name, words.join(u" o "_s)));
  }
  return value.toLower();
}

}  // namespace

bool TakeMovingFlag(const QString& name, MovingOptions& options) {
  if (name == u"--prueba"_s) {
    options.isTrial = true;
  } else if (name == u"--aunque-falten"_s) {
    options.acceptsLosses = true;
  } else if (name == u"--sin-eliminados"_s) {
    options.skipsDeleted = true;
  } else {
    return false;
  }
  options.given = true;
  return true;
}

bool TakeMovingOption(const QString& name, const std::function<QString()>& value, MovingOptions& options) {
  if (name == u"--tabla"_s) {
    const QString given = value();
    if (given.contains(u'=')) {
      TakePair(name, given, options.names.tables);
    } else {
      options.table = given;
    }
  } else if (name == u"--columna"_s) {
    TakePair(name, value(), options.names.columns);
  } else if (name == u"--informe"_s) {
    options.report = value();
  } else if (name == u"--respuestas"_s) {
    options.answers = value();
  } else if (name == u"--hoja"_s) {
    options.read.sheet = value();
  } else if (name == u"--titulos"_s) {
    TakeHeadings(name, value(), options.read.headings);
  } else if (name == u"--correspondencia"_s) {
    options.memory = value();
  } else if (name == u"--codificacion"_s) {
    options.read.list.encoding = OneOf(name, value(), {u"utf-8"_s, u"utf-16"_s, u"windows-1252"_s});
  } else if (name == u"--separador"_s) {
    const QString given = value();
    options.read.list.separator = given == u"tab" ? u'\t' : OneOf(name, given, {u";"_s, u","_s, u"|"_s}).front();
  } else {
    return false;
  }
  options.given = true;
  return true;
}

void CheckImportOptions(const MovingOptions& options) {
  if (options.file.isEmpty()) {
    Refuse(u"Falta el archivo que se trae: kel-host importar ARCHIVO"_s);
  }
}

void CheckExportOptions(const MovingOptions& options) {
  if (options.file.isEmpty()) {
    Refuse(u"Falta el archivo que se escribe: kel-host exportar ARCHIVO"_s);
  }
  MovingOptions wanted;
  wanted.file = options.file;
  wanted.table = options.table;
  wanted.given = options.given;
  if (options != wanted) {
    Refuse(u"Con la orden «exportar» sólo sirve «--tabla TABLA»."_s);
  }
}

}  // namespace host
