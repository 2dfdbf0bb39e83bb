#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "platform/contract/cConstNodo.h"

#include <QLabel>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int soon = 5000;

}  // namespace

/// What other programs write to a file without a note.
class tst_foreign_writes : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ForeignToolsAreNoticed();
  void ALongListOnlySaysSo();
};

void tst_foreign_writes::ForeignToolsAreNoticed() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Paises());
  QTest::qWait(2000);  // The first look finds nothing: what it finds later is new.
  desktop.database.Execute(u"UPDATE Paises SET Nombre='Zzz' WHERE IDPais=35");
  const host::RecordModel& records = desktop.List().Records();
  QTRY_COMPARE_WITH_TIMEOUT(records.LineAt(records.rowCount() - 1, {0}), u"Zzz"_s, soon);
}

void tst_foreign_writes::ALongListOnlySaysSo() {
  TestDesktop desktop;
  desktop.database.Execute(
      u"INSERT INTO Cabeceras(Nombre) SELECT A.Nombre FROM Provincias AS A, Provincias AS B, Encabezados AS C");
  desktop.ChooseNode(cConstNodo().Cabeceras());
  QVERIFY(desktop.List().Records().TotalCount() > 10'000);
  QTest::qWait(2000);
  desktop.database.Execute(
      u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario) VALUES (7, 'IDPais', 1, 'blas')");
  QTest::qWait(2500);
  const auto* freshness = desktop.Window().findChild<QLabel*>(u"lblFreshness"_s);
  QCOMPARE(freshness->text(), u"● Al día"_s);
  desktop.database.Execute(u"UPDATE Cabeceras SET Nombre='Zzz' WHERE IDCabecera=1");
  QTRY_COMPARE_WITH_TIMEOUT(freshness->text(), u"○ Puede haber cambios (F5)"_s, soon);
  desktop.Refresh();
  QCOMPARE(freshness->text(), u"● Al día"_s);
}

KEL_TEST(tst_foreign_writes);
#include "tst_foreign_writes.moc"
