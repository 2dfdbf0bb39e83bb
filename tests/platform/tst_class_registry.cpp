#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QFile>
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

 private:
  QString RegistryPath() const { return m_folder.filePath(u"clases.ini"_s); }
  QByteArray Content() const {
    QFile file(RegistryPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
  }

  QTemporaryDir m_folder;
};

KEL_TEST(tst_class_registry);
#include "tst_class_registry.moc"
