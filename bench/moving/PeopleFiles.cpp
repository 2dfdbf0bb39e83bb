#include "moving/PeopleFiles.h"

#include "support/DesktopFile.h"

#include <QFile>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const QStringList columns = {u"Nombre"_s,    u"Apellido1"_s, u"Apellido2"_s, u"NIF"_s,
                             u"Direccion"_s, u"Poblacion"_s, u"CP"_s};

QStringList PersonAt(int i) {
  const QString number = QString::number(i);
  return {u"Nombre "_s + number,
          u"Apellido"_s + QString::number(i % 997),
          u"Otro"_s,
          QString(),
          u"Calle Mayor, "_s + number,
          u"Población "_s + QString::number(i % 500),
          QString::number(i % 50'000).rightJustified(5, u'0')};
}

void Write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    std::exit(1);
  }
}

}  // namespace

void WriteDesktopPeople(const QString& path, int people) {
  support::DesktopFile file;
  QList<support::DesktopFile::Column> defined = {{u"IDColaborador"_s, support::DesktopFile::Long}};
  for (const QString& column : columns) {
    defined.append({column, support::DesktopFile::Text});
  }
  file.AddTable(u"Colaboradores"_s, defined);
  for (int i = 1; i <= people; ++i) {
    support::DesktopFile::Row row = {i};
    for (const QString& text : PersonAt(i)) {
      row.append(text);
    }
    file.AddRow(row);
  }
  Write(path, file.Bytes());
}

void WriteListOfPeople(const QString& path, int people) {
  QByteArray list = "IDColaborador;" + columns.join(u';').toUtf8() + '\n';
  for (int i = 1; i <= people; ++i) {
    list += QByteArray::number(i) + ";\"" + PersonAt(i).join(u"\";\""_s).toUtf8() + "\"\n";
  }
  Write(path, list);
}

void WriteWideListOfPeople(const QString& path, int people) {
  QByteArray list =
      "IDColaborador;" + columns.join(u';').toUtf8() +
      ";Tratamiento;CodProvincia;codpais;CodDiocesis;CodCobrador;CodEncabezado;Telefono;Correo;FechaAlta;Eliminado\n";
  for (int i = 1; i <= people; ++i) {
    const QByteArray number = QByteArray::number(i);
    list += number + ";\"" + PersonAt(i).join(u"\";\""_s).toUtf8() + "\";D.ª;0;35;0;0;0;91" + number + ";persona" +
            number + "@ejemplo.org;2020-01-31;0\n";
  }
  Write(path, list);
}

}  // namespace bench
