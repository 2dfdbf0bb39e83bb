#include "host/cli/DatabaseCommands.h"

#include "host/cli/Startup.h"
#include "platform/text/Counted.h"

#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QLocale Spanish() {
  return QLocale(QLocale::Spanish, QLocale::Spain);
}

QString Section(const QString& title, const QStringList& findings, const QString& one = u"problema"_s) {
  if (findings.isEmpty()) {
    return u"%1: bien\n"_s.arg(title);
  }
  QString text = u"%1: %2\n"_s.arg(title, texts::Counted(findings.size(), one, one + u's'));
  for (const QString& finding : findings) {
    text += u"  - %1\n"_s.arg(finding);
  }
  return text;
}

}  // namespace

QString CopyCommand(const CommandLine& line) {
  const Target target = TargetOf(line);
  const database::CopySize size = database::CopyDatabase(target.connectionString, line.copy);
  return u"Copia hecha y comprobada: «%1», %2, %3 tablas, %4 registros."_s.arg(
      QFileInfo(line.copy).absoluteFilePath(), Spanish().formattedDataSize(size.bytes, 1, QLocale::DataSizeSIFormat),
      QString::number(size.tables), Spanish().toString(size.rows));
}

QString RestoreCommand(const CommandLine& line) {
  const Target target = TargetOf(line);
  RequireWanted(target, line);
  const QString kept = database::RestoreDatabase(line.copy, target.connectionString);
  const QString done = u"Copia comprobada y restaurada en «%1»."_s.arg(target.place.shown);
  if (kept.isEmpty()) {
    return done;
  }
  return done + (target.place.IsFile() ? u" La base de datos que había se conserva en «%1»."_s
                                       : u" Las tablas que había se conservan en el esquema «%1» del servidor."_s)
                    .arg(kept);
}

QString SetUpCommand(const CommandLine& line) {
  const Target target = TargetOf(line);
  const database::ServerSetUp done = database::SetUpServer(
      target.connectionString, line.demonstration ? database::Content::Demonstration : database::Content::Reference);
  const QString indexes = done.rebuiltIndexes
                              ? u"Los índices de textos se han rehecho con las reglas de orden del servidor.\n"_s
                              : QString();
  return u"Base de datos preparada: %1\n%2\nDé a cada persona un usuario de PostgreSQL y uno de estos grupos "
         "(GRANT grupo TO usuario):\n"
         "  %3  hacen, actualizan y restauran la base de datos\n"
         "  %4  trabajan y cambian los usuarios\n"
         "  %5  trabajan\n"
         "  %6  solo miran"_s.arg(target.place.shown, indexes, done.groups[0], done.groups[1], done.groups[2],
                                  done.groups[3]);
}

CheckOutcome CheckCommand(const CommandLine& line) {
  const Target target = TargetOf(line);
  const database::Findings findings = database::CheckDatabase(target.connectionString);
  const QString verdict =
      findings.IsSound()
          ? u"La base de datos está bien."_s
          : u"La base de datos tiene problemas. Los de integridad y de índices se arreglan restaurando una copia "
            "(kel-host restaurar COPIA); los demás, corrigiendo los registros en sus cuadros."_s;
  const QString pages =
      target.place.IsFile()
          ? QString()
          : u"\nLas páginas del disco del servidor las comprueba quien lo administra (pg_amcheck, data_checksums)."_s;
  const QString report = u"Base de datos: %1\n\n"_s.arg(target.place.shown) +
                         Section(u"Integridad"_s, findings.integrity) + Section(u"Índices"_s, findings.indexes) +
                         Section(u"Referencias"_s, findings.references) +
                         Section(u"Longitudes"_s, findings.lengths, u"aviso"_s) + u'\n' + verdict + pages;
  return {report, findings.IsSound()};
}

}  // namespace host
