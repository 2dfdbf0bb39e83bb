#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "platform/process/Exposure.h"
#include "platform/process/PrivateFiles.h"
#include "platform/process/UnfinishedFile.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

using process::UnfinishedFile;

namespace {

constexpr uid_t otherUser = 65534;

void Write(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
      file.write(content) != content.size()) {
    qFatal("cannot write a test file");
  }
}

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void SetMode(const QString& path, mode_t mode) {
  if (chmod(QFile::encodeName(path).constData(), mode) != 0) {
    qFatal("cannot change a mode");
  }
}

int ModeOf(const QString& path) {
  struct stat status = {};
  return stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 07777) : -1;
}

QStringList All(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
}

}  // namespace

/// Folders and files that others may change: what decides about code is refused, what is written stays out of reach.
class tst_shared_places : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_folder = std::make_unique<QTemporaryDir>();
    Write(Path(u"dentro/clases.ini"_s), "X.Y=" NOT_A_COMPONENT "\n");
  }
  void cleanup() { qunsetenv("KEL_CLASES"); }

  // Modes of the folder, of one in it and of the file; how the file is named; what is told and how it is mended.
  void WhoMayExchangeAFile_data() {
    QTest::addColumn<QList<int>>("modes");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("mended");
    const QString file = u"dentro/clases.ini"_s;
    QTest::newRow("nobody") << QList{0755, 0755, 0644} << file << QString();
    QTest::newRow("a group") << QList{0775, 0770, 0660} << file << QString();
    QTest::newRow("the folder") << QList{0755, 0777, 0644} << file << u"chmod o-w '%1/dentro'"_s;
    QTest::newRow("the folder itself") << QList{0755, 0777, 0644} << u"dentro"_s << u"chmod o-w '%1/dentro'"_s;
    QTest::newRow("a folder above") << QList{0733, 0755, 0644} << file << u"chmod o-w '%1'"_s;
    QTest::newRow("the file") << QList{0755, 0755, 0666} << file << u"chmod o-w '%1/dentro/clases.ini'"_s;
    QTest::newRow("a sticky folder") << QList{01777, 0755, 0644} << file << QString();
    QTest::newRow("by a link") << QList{0755, 0777, 0644} << u"link/clases.ini"_s << u"chmod o-w '%1/dentro'"_s;
    QTest::newRow("by a link that climbs") << QList{0755, 0777, 0644} << u"climbing"_s << u"chmod o-w '%1/dentro'"_s;
    QTest::newRow("a file that is not there") << QList{0755, 0777, 0644} << u"dentro/x"_s << u"chmod o-w '%1/dentro'"_s;
    QTest::newRow("a link in a circle") << QList{0755, 0755, 0644} << u"circle"_s << QString();
  }

  void WhoMayExchangeAFile() {
    QFETCH(const QList<int>, modes);
    QFETCH(const QString, name);
    QFETCH(QString, mended);
    QVERIFY(QFile::link(u"dentro"_s, Path(u"link"_s)) &&
            QFile::link(u"link/../dentro/./clases.ini"_s, Path(u"climbing"_s)) &&
            QFile::link(u"circle"_s, Path(u"circle"_s)));
    SetMode(Path(u"dentro/clases.ini"_s), mode_t(modes[2]));
    SetMode(Path(u"dentro"_s), mode_t(modes[1]));
    SetMode(m_folder->path(), mode_t(modes[0]));
    const QString told = process::ExposureOf(Path(name));
    mended = mended.isEmpty() ? QString() : mended.arg(m_folder->path());
    QVERIFY2(told.isEmpty() == mended.isEmpty() && told.contains(mended), qPrintable(told));
    if (name == u"dentro/clases.ini") {
      // As the class registry, and as a library that is named to it: refused before it is read or loaded.
      qputenv("KEL_CLASES", Path(name).toUtf8());
      for (const QString& refusal : {RefusalOf([] { automation::CreateObject(u"X.Y"_s); }),
                                     RefusalOf([&] { automation::ComponentLibrary library(Path(name)); })}) {
        QVERIFY2(refusal.startsWith(u"429"_s) && refusal.contains(told), qPrintable(refusal));
        QCOMPARE(refusal.contains(u"biblioteca"_s), told.isEmpty());
      }
      // The command is what mends it.
      QCOMPARE(told.isEmpty() ? 0 : system(qPrintable(told.mid(told.indexOf(u"chmod")))), 0);
      QCOMPARE(process::ExposureOf(Path(name)), QString());
    }
  }

  void AForeignFileInASharedFolder() {
    if (geteuid() != 0) {
      QSKIP("only the superuser can make another user's file");
    }
    SetMode(m_folder->path(), 01777);
    QCOMPARE(chown(qPrintable(Path(u"dentro"_s)), otherUser, otherUser), 0);
    QVERIFY(process::ExposureOf(Path(u"dentro/clases.ini"_s))
                .startsWith(u"«%1» es de otra cuenta"_s.arg(Path(u"dentro"_s))));
    SetMode(m_folder->path(), 0755);
    QCOMPARE(process::ExposureOf(Path(u"dentro/clases.ini"_s)), QString());
  }

  void LinksAreNeverTakenForPrivate() {
    SetMode(Path(u"dentro"_s), 0755);
    QVERIFY(QFile::link(Path(u"dentro"_s), Path(u"cartas"_s)) &&
            QFile::link(Path(u"dentro/clases.ini"_s), Path(u"conf"_s)));
    QVERIFY(!process::TakePrivateFolder(Path(u"cartas"_s)) && !process::IsOwnFolder(Path(u"cartas"_s)));
    SetMode(Path(u"dentro/clases.ini"_s), 0644);
    QVERIFY(!process::TakePrivateFile(Path(u"conf"_s)));
    QVERIFY(ModeOf(Path(u"dentro"_s)) == 0755 && ModeOf(Path(u"dentro/clases.ini"_s)) == 0644);
    QVERIFY(process::TakePrivateFolder(Path(u"dentro"_s)) && process::IsOwnFolder(Path(u"dentro"_s)));
    QVERIFY(process::TakePrivateFile(Path(u"dentro/clases.ini"_s)) && process::TakePrivateFile(Path(u"nueva/conf"_s)));
    QVERIFY(ModeOf(Path(u"dentro"_s)) == 0700 && ModeOf(Path(u"dentro/clases.ini"_s)) == 0600 &&
            ModeOf(Path(u"nueva"_s)) == 0700 && ModeOf(Path(u"nueva/conf"_s)) == 0600);
    QVERIFY(Content(Path(u"dentro/clases.ini"_s)).startsWith("X.Y="));
  }

  void AnUnfinishedFile() {
    const QString target = Path(u"dentro/copia.db"_s);
    const mode_t usual = umask(0777);
    QString path;
    {
      const UnfinishedFile file(target);
      umask(usual);
      path = file.Path();
      QVERIFY(file.IsValid());
      QCOMPARE(ModeOf(path), 0600);
      QCOMPARE(ModeOf(QFileInfo(path).path()), 0700);
      Write(path, "todo");
      Write(path + u"-journal"_s, "x");
      // Another one there takes none of it for abandoned.
      QVERIFY(UnfinishedFile(target).IsValid());
      QVERIFY(file.Place(UnfinishedFile::Existing::Keep));
    }
    QCOMPARE(Content(target), QByteArray("todo"));
    QCOMPARE(All(Path(u"dentro"_s)), QStringList({u"clases.ini"_s, u"copia.db"_s}));
    const UnfinishedFile second(target);
    QVERIFY(!second.Place(UnfinishedFile::Existing::Keep));
    QVERIFY(second.TakeRightsOf(Path(u"dentro/clases.ini"_s)) && second.Place(UnfinishedFile::Existing::Replace));
    QCOMPARE(Content(target), QByteArray());
    QCOMPARE(ModeOf(target), ModeOf(Path(u"dentro/clases.ini"_s)));
    QVERIFY(!UnfinishedFile(Path(u"no/hay/copia.db"_s)).IsValid());
  }

  // A name that was planted as a link leads nowhere, and what another user chose is not taken over.
  void PlantedNames() {
    const QString target = Path(u"copia.db"_s);
    QVERIFY(QFile::link(Path(u"planted"_s), target));
    const UnfinishedFile file(target);
    QVERIFY(!file.Place(UnfinishedFile::Existing::Keep));
    SetMode(Path(u"dentro/clases.ini"_s), 0666);
    QVERIFY(file.TakeRightsOf(Path(u"dentro/clases.ini"_s)) && file.Place(UnfinishedFile::Existing::Replace));
    QVERIFY(!QFile::exists(Path(u"planted"_s)) && !QFileInfo(target).isSymLink());
    QCOMPARE(ModeOf(target), 0600);
  }

  void WhatAKilledProgramLeft() {
    const QString target = Path(u"copia.db"_s);
    const pid_t child = fork();
    if (child == 0) {
      const UnfinishedFile file(target);
      raise(SIGKILL);
    }
    QCOMPARE(waitpid(child, nullptr, 0), child);
    const QString left = All(m_folder->path()).constFirst();
    QVERIFY2(left.startsWith(u".kel-"_s) && All(Path(left)).size() == 1, qPrintable(left));
    // The user's own folder under such a name, which somebody else gave it, keeps what is in it.
    const QString renamed = Path(u".kel-"_s + QString(32, u'0'));
    Write(renamed + u"/foto.png"_s, "x");
    QVERIFY(UnfinishedFile(target).IsValid());
    QCOMPARE(All(m_folder->path()), QStringList({QFileInfo(renamed).fileName(), u"dentro"_s}));
    QCOMPARE(All(renamed), QStringList(u"foto.png"_s));
  }

 private:
  QString Path(const QString& name) const { return m_folder->filePath(name); }

  template <typename Work>
  static QString RefusalOf(Work work) {
    try {
      work();
    } catch (const automation::Error& error) {
      return QString::number(error.Number()) + u' ' + error.Description();
    }
    return {};
  }

  std::unique_ptr<QTemporaryDir> m_folder;
};

KEL_TEST(tst_shared_places);
#include "tst_shared_places.moc"
