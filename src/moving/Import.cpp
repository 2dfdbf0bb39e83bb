#include "moving/Import.h"

#include "database/WriteHold.h"
#include "moving/DeletedRows.h"
#include "moving/RowWriter.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <optional>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

void CheckStop(const database::Stop& stop) {
  if (stop && stop()) {
    throw automation::Error(adodb::Stopped, u"Se ha cancelado. No se ha traído nada."_s);
  }
}

QString DigestOf(const QString& path, const database::Stop& stop) {
  constexpr qint64 atOnce = 1 << 20;
  QFile file(path);
  QCryptographicHash hash(QCryptographicHash::Sha256);
  bool isReadable = file.open(QIODevice::ReadOnly);
  while (isReadable && !file.atEnd()) {
    CheckStop(stop);
    const QByteArray bytes = file.read(atOnce);
    isReadable = !bytes.isEmpty();
    hash.addData(bytes);
  }
  if (!isReadable) {
    Refuse(u"No se puede leer el archivo «%1». Compruebe sus permisos."_s.arg(path));
  }
  return QString::fromLatin1(hash.result().toHex());
}

// A program that has such a file open keeps another one of these beside it.
QStringList WarningsOf(const QString& path) {
  const QFileInfo file(path);
  for (const QString& ending : {u".ldb"_s, u".laccdb"_s, u".LDB"_s}) {
    if (KindOfFile(path) == FileKind::Desktop && QFile::exists(file.path() + u'/' + file.completeBaseName() + ending)) {
      return {u"Otro programa tiene abierto el archivo: ciérrelo allí antes de traerlo, o faltará lo último."_s};
    }
  }
  return {};
}

qint64 CountRows(adodb::Connection& connection, const QString& table) {
  return adodb::Execute(connection, u"SELECT COUNT(*) FROM [{}]", Verbatim{table})->Field(0).toLongLong();
}

// Whatever else was wrong on the way, what came in is what the report says.
void CompareCounts(adodb::Connection& connection, const Survey& survey, const QMap<QString, qint64>& before) {
  for (const SurveyedTable& table : survey.tables) {
    const QString& name = table.report.here;
    if (!name.isEmpty() && CountRows(connection, name) != before.value(name) + table.report.created) {
      Refuse(u"En la tabla %1 no han entrado los registros previstos. No se ha traído nada."_s.arg(name));
    }
  }
}

ImportReport ReportOf(const Survey& survey, const QString& path, const QString& digest) {
  ImportReport report;
  report.file = path;
  report.digest = digest;
  report.elsewhere = survey.elsewhere;
  report.unreadable = survey.unreadable;
  report.warnings = WarningsOf(path);
  for (const SurveyedTable& table : survey.tables) {
    report.tables.append(table.report);
  }
  return report;
}

QStringList MatchedTables(const Survey& survey) {
  QStringList names;
  for (const TableRule& rule : TableRules()) {
    for (const SurveyedTable& table : survey.tables) {
      if (table.match && table.match->rule == &rule) {
        names.append(rule.table->name);
      }
    }
  }
  return names;
}

}  // namespace

ImportReport Import(const QString& path, adodb::Connection& connection, const ImportWishes& wishes) {
  const QString digest = DigestOf(path, wishes.stop);
  Survey survey(wishes);
  ReadFile(path, wishes.read, survey, wishes.stop);
  const QStringList tables = MatchedTables(survey);
  if (tables.isEmpty()) {
    Refuse(u"Ninguna tabla del archivo es de este programa. No se ha traído nada.\n"_s +
           ReportOf(survey, path, digest).Text());
  }
  if (wishes.skipsDeleted) {
    SkipDeletedRows(survey);
  }
  std::optional<adodb::Transaction> transaction;
  QMap<QString, qint64> before;
  if (!wishes.isTrial) {
    transaction.emplace(connection);
    database::HoldWrites(connection, tables);
    for (const QString& table : tables) {
      before.insert(table, CountRows(connection, table));
    }
  }
  Plan plan(survey, connection, wishes);
  const ImportReport decided = ReportOf(survey, path, digest);
  const bool writes =
      !wishes.isTrial && decided.Sum(&TableReport::read) > 0 && (wishes.acceptsLosses || !decided.HasLosses());
  RowWriter writer(survey, plan, connection, wishes, writes);
  if (writer.NeedsRows()) {
    ReadFile(path, wishes.read, writer, wishes.stop);
    if (DigestOf(path, wishes.stop) != digest) {
      RefuseChangedFile();
    }
  }
  ImportReport report = ReportOf(survey, path, digest);
  // The same fates of other values are another import.
  report.seal = digest + u'-' + writer.Seal();
  if (!wishes.seen.isEmpty() && wishes.seen != report.seal) {
    Refuse(u"El archivo o los datos de aquí han cambiado desde que se vio qué entra. Véalo otra vez."_s);
  }
  if (writes) {
    CompareCounts(connection, survey, before);
    CheckStop(wishes.stop);
    transaction->Commit();
    report.isWritten = true;
  }
  return report;
}

}  // namespace moving
