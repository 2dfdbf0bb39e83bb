#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace automation;

namespace {

// "number: text" of the refusal to create an object, empty when it was created.
QString Refusal(const QString& progId) {
  try {
    CreateObject(progId);
  } catch (const Error& error) {
    return u"%1: %2"_s.arg(error.Number()).arg(error.Description());
  }
  return {};
}

}  // namespace

class tst_class_registry : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { qputenv("KEL_CLASES", RegistryPath().toUtf8()); }
  void cleanup() {
    QFile::remove(RegistryPath());
    qunsetenv("KEL_CLASES");
  }

  void ProcessClasses() {
    RegisterClass(u"Prueba.Clase"_s, [] { return std::make_unique<QObject>(); });
    QVERIFY(CreateObject(u"PRUEBA.clase"_s) != nullptr);
    UnregisterClass(u"prueba.clase"_s);
    QVERIFY(Refusal(u"Prueba.Clase"_s).startsWith(u"429: El componente no puede crear el objeto"_s));
  }

  void RegistryFileEntries() {
    QVERIFY(AddToRegistryFile({u"A.Uno"_s, u"A.Dos"_s}, u"/uno.so"_s));
    QVERIFY(AddToRegistryFile({u"a.UNO"_s}, u"/otro.so"_s));
    QCOMPARE(Content(), QByteArray("A.Dos=/uno.so\na.UNO=/otro.so\n"));
    QVERIFY(RemoveFromRegistryFile({u"a.dos"_s}));
    QCOMPARE(Content(), QByteArray("a.UNO=/otro.so\n"));
    qputenv("KEL_CLASES", "/proc/imposible/clases.ini");
    QVERIFY(!AddToRegistryFile({u"A.Uno"_s}, u"/uno.so"_s));
  }

  void RegistryPointingAstray_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("says");
    QTest::newRow("no file") << QByteArray() << "no está registrada";
    QTest::newRow("missing library") << QByteArray("X.Y=/no/hay.so\n") << "no existe la biblioteca «/no/hay.so»";
    QTest::newRow("not a library") << QByteArray("x.y = /etc/passwd\n") << "no se puede cargar";
    QTest::newRow("not a component") << QByteArray("X.Y=" NOT_A_COMPONENT "\n")
                                     << "no es una biblioteca de componentes";
    QTest::newRow("rubbish") << QByteArray("\0\xff=\n===\nX.Y\n", 12) << "no está registrada";
  }
  void RegistryPointingAstray() {
    QFETCH(QByteArray, file);
    QFETCH(QString, says);
    if (!file.isEmpty()) {
      QFile registry(RegistryPath());
      QVERIFY(registry.open(QIODevice::WriteOnly) && registry.write(file) == file.size());
    }
    // Twice: a failed load must leave nothing behind.
    for (int i = 0; i < 2; ++i) {
      const QString refusal = Refusal(u"X.Y"_s);
      QVERIFY2(refusal.startsWith(u"429: "_s) && refusal.contains(says), qPrintable(refusal));
    }
  }

  // The user's file first, then the packages' ones, folder by folder; a path counts from its file.
  void RegistryFilesOfPackages() {
    qunsetenv("KEL_CLASES");
    const QStringList variables{u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_DATA_DIRS"_s};
    const QList<QByteArray> before{qgetenv("XDG_CONFIG_HOME"), qgetenv("XDG_DATA_HOME"), qgetenv("XDG_DATA_DIRS")};
    const auto restore = qScopeGuard([&] {
      for (int i = 0; i < variables.size(); ++i) {
        before[i].isNull() ? qunsetenv(qPrintable(variables[i])) : qputenv(qPrintable(variables[i]), before[i]);
      }
    });
    qputenv("XDG_CONFIG_HOME", m_folder.filePath(u"user"_s).toUtf8());
    qputenv("XDG_DATA_HOME", m_folder.filePath(u"none"_s).toUtf8());
    qputenv("XDG_DATA_DIRS", (m_folder.filePath(u"a"_s) + u':' + m_folder.filePath(u"b"_s)).toUtf8());
    WriteFile(u"user/Kel/clases.ini"_s, "In.User=/user.so\n");
    WriteFile(u"a/kel/clases.d/2.ini"_s, "In.User=/a2.so\nIn.A=/a2.so\n");
    WriteFile(u"a/kel/clases.d/1.ini"_s, "In.A=../../lib/a1.so\n");
    WriteFile(u"a/kel/clases.d/1.txt"_s, "In.Text=/text.so\n");
    WriteFile(u"b/kel/clases.d/0.ini"_s, "in.a=/b.so\nin.b=/b.so\n");
    const auto library = [](const char* progId) {
      return Refusal(QLatin1StringView(progId)).section(u'«', 1, 1).section(u'»', 0, 0);
    };
    QCOMPARE(library("in.user"), u"/user.so"_s);
    QCOMPARE(library("In.A"), m_folder.filePath(u"a/lib/a1.so"_s));
    QCOMPARE(library("In.B"), u"/b.so"_s);
    QVERIFY(Refusal(u"In.Text"_s).contains(u"no está registrada"_s));
    qputenv("KEL_CLASES", RegistryPath().toUtf8());
    QVERIFY(Refusal(u"In.B"_s).contains(u"no está registrada"_s));
  }

  void ContractOfALibrary_data() {
    QTest::addColumn<QString>("library");
    QTest::addColumn<QString>("expected");
    QTest::newRow("says nothing") << u"none"_s << u"1.0"_s;
    QTest::newRow("newer, the same major") << u"1_7"_s << u"1.7"_s;
    QTest::newRow("older major") << u"0_9"_s << u"sigue la versión 0.9 del contrato y este programa, la 1.0"_s;
    QTest::newRow("newer major") << u"2_0"_s << u"sigue la versión 2.0 del contrato y este programa, la 1.0"_s;
  }
  void ContractOfALibrary() {
    QFETCH(QString, library);
    QFETCH(QString, expected);
    const QString path = QStringLiteral(CONTRACT_LIBRARY).arg(library);
    QString said;
    try {
      said = ComponentLibrary(path).Contract().Text();
    } catch (const Error& error) {
      QCOMPARE(error.Number(), 429);
      QVERIFY2(error.Description().contains(path), qPrintable(error.Description()));
      said = error.Description();
    }
    const bool taken = expected.size() == 3;
    QVERIFY2(taken ? said == expected : said.contains(expected), qPrintable(said));
  }

 private:
  void WriteFile(const QString& name, const QByteArray& content) const {
    const QString path = m_folder.filePath(name);
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly)) {
      throw std::runtime_error("cannot write a test's file");
    }
    file.write(content);
  }
  QString RegistryPath() const { return m_folder.filePath(u"clases.ini"_s); }
  QByteArray Content() const {
    QFile file(RegistryPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
  }

  QTemporaryDir m_folder;
};

KEL_TEST(tst_class_registry);
#include "tst_class_registry.moc"
