#include "platform/automation/ClassRegistry.h"
#include "platform/process/PrivateFiles.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

int ModeOf(const QString& path) {
  struct stat status = {};
  return stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 0777) : -1;
}

}  // namespace

/// Modes of what the program makes, under masks that would give too much or too little.
class tst_private_files : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Modes_data() {
    QTest::addColumn<int>("mask");
    QTest::newRow("everything for all") << 0;
    QTest::newRow("usual") << 022;
    QTest::newRow("nothing for anybody") << 0777;
  }

  void Modes() {
    QFETCH(const int, mask);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"a/b/archivo"_s);
    qputenv("KEL_CLASES", folder.filePath(u"c/clases.ini"_s).toUtf8());
    const mode_t usual = umask(static_cast<mode_t>(mask));
    const bool made = process::CreatePrivateFolder(folder.filePath(u"a/b"_s)) && process::CreatePrivateFile(file);
    const bool entered = automation::AddToRegistryFile({u"A.Uno"_s}, u"/uno.so"_s);
    umask(usual);
    QVERIFY(made && entered);
    for (const QString& name : {u"a"_s, u"a/b"_s, u"c"_s}) {
      QCOMPARE(ModeOf(folder.filePath(name)), 0700);
    }
    QCOMPARE(ModeOf(file), 0600);
    QCOMPARE(ModeOf(folder.filePath(u"c/clases.ini"_s)), 0600);
    QVERIFY(!process::IsOpenToOthers(file));
  }

  void WhatExistsStaysAsItIs() {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"archivo"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    QVERIFY(process::CreatePrivateFile(file.fileName()));
    QVERIFY(process::CreatePrivateFolder(folder.path()));
    QVERIFY(process::IsOpenToOthers(file.fileName()));
    QVERIFY(!process::CreatePrivateFolder(file.fileName()));
    QVERIFY(!process::CreatePrivateFolder(file.fileName() + u"/dentro"_s));
    QVERIFY(!process::CreatePrivateFile(folder.path()));
  }
};

KEL_TEST(tst_private_files);
#include "tst_private_files.moc"
