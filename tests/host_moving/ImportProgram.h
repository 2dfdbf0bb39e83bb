#pragma once

#include "support/TestDatabase.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <linux/capability.h>
#include <sys/prctl.h>

/// kel-host on a test's database.

inline void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// A list.
inline QByteArray ManyBanks(int count) {
  QByteArray list = "Numero;Nombre\n";
  for (int i = 1; i <= count; ++i) {
    list += QByteArray::number(i) + ";Banco " + QByteArray::number(i) + '\n';
  }
  return list;
}

struct Ended {
  int code;
  QString said;
};

/// Words of the arguments stand between "|".
inline void Start(QProcess& program, const support::TestDatabase& database, const QString& arguments,
                  const QString& path = QStringLiteral(KEL_HOST)) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("HOME"), database.Path(QStringLiteral(".")));
  environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
  environment.insert(QStringLiteral("XDG_DATA_HOME"), database.Path(QStringLiteral(".")));
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.setWorkingDirectory(database.Path(QStringLiteral(".")));
  // Files are closed to root, too.
  program.setChildProcessModifier([] {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
  });
  program.start(path, arguments.split(u'|') + QStringList{QStringLiteral("--base"), database.ConnectionString()});
}

inline Ended Run(const support::TestDatabase& database, const QString& arguments,
                 const QString& path = QStringLiteral(KEL_HOST)) {
  QProcess program;
  Start(program, database, arguments, path);
  const bool ended = program.waitForFinished(60'000) && program.exitStatus() == QProcess::NormalExit;
  return {ended ? program.exitCode() : -1, QString::fromUtf8(program.readAll())};
}
