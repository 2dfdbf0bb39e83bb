#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/desktop/Deletion.h"
#include "host/desktop/RecordReferences.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"

#include <QMessageBox>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

int LiveHeadings(const TestDesktop& desktop) {
  return desktop.database.Id(u"SELECT COUNT(*) FROM Cabeceras WHERE Eliminado=0");
}

// Marks a heading as the component does, but refuses the one named "En uso", fails at the one named "Falla" and loses
// the row of the one named "Z".
void DeleteHeading(adodb::Connection& connection, int id) {
  const QString name =
      adodb::Execute(connection, u"SELECT Nombre FROM Cabeceras WHERE IDCabecera={}", id)->Field(0).toString();
  if (name == u"Falla"_s) {
    throw automation::Error(-2147217887, u"La base de datos está bloqueada"_s);
  }
  if (name == u"Z"_s) {
    adodb::Execute(connection, u"DELETE FROM Cabeceras WHERE IDCabecera={}", id);
  } else if (name != u"En uso"_s) {
    adodb::Execute(connection, u"UPDATE Cabeceras SET Eliminado=-1 WHERE IDCabecera={}", id);
  }
}

void AddHeadings(TestDesktop& desktop, const QStringList& names) {
  desktop.database.Execute(u"UPDATE Cabeceras SET Eliminado=-1");
  for (const QString& name : names) {
    desktop.database.Execute(u"INSERT INTO Cabeceras(Nombre,Eliminado) VALUES('{}',0)", name);
  }
}

}  // namespace

class tst_deletion : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void NothingHappensWithoutYes();
  void QuestionNamesRecordAndDependents();
  void SeveralRecordsEndInOneSummary();
  void SingleDeletionKeepsThePlace();
  void CancelLeavesTheRest();
  void KeptRecordSaysWhatUsesIt();
  void CountsAreJoined();
};

void tst_deletion::init() {
  // The offscreen screen has its own, which say nothing of the program.
  QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
}

void tst_deletion::NothingHappensWithoutYes() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {u"Una"_s});
  desktop.ChooseNode(cConstNodo().Cabeceras());
  desktop.driver.Answer(QMessageBox::No);
  desktop.Action("actDelete").trigger();
  QCOMPARE(desktop.TakeBoxes(), QStringList(u"Kel|pregunta|¿Desea eliminar la cabecera «Una»?"_s));
  QVERIFY(FakeComponent::Requests().isEmpty());
}

void tst_deletion::QuestionNamesRecordAndDependents() {
  TestDesktop desktop;
  FakeComponent::Register({});
  desktop.database.Execute(u"INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('0001','Banco Uno',0)");
  const int bank = desktop.database.Id(u"SELECT MAX(IDBanco) FROM Bancos");
  for (const bool deleted : {false, false, true}) {
    desktop.database.Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES({},'1','x',{})", bank,
                             deleted);
  }
  desktop.ChooseNode(cConstNodo().Bancos());
  desktop.List().SelectRecord(bank);
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actDelete").trigger();
  QCOMPARE(desktop.TakeBoxes(),
           (QStringList{u"Kel|pregunta|¿Desea eliminar el banco «0001 Banco Uno»?|Se marcarán también como eliminados: "
                        "2 sucursales."_s,
                        u"Kel|aviso|Registros eliminados: 0. Conservados: 1.|No se han eliminado:\n"
                        "• 0001 Banco Uno: otros registros lo utilizan"_s}));
  QCOMPARE(FakeComponent::Requests(),
           QStringList({u"EliminarRegistro nodo=19 accion=3 id=%1 aux=0 Entidades bancarias\\Bancos"_s.arg(bank)}));
}

void tst_deletion::SeveralRecordsEndInOneSummary() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {u"A"_s, u"En uso"_s, u"Falla"_s, u"Z"_s});
  desktop.ChooseNode(cConstNodo().Cabeceras());
  desktop.List().selectAll();
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actDelete").trigger();
  const QStringList boxes = desktop.TakeBoxes();
  QCOMPARE(boxes.size(), 2);
  QCOMPARE(boxes.constLast(),
           u"Kel|aviso|Registros eliminados: 2. Conservados: 2.|No se han eliminado:\n"
           "• En uso: otros registros lo utilizan\n"
           "• Falla: error -2147217887: La base de datos está bloqueada"_s);
  QCOMPARE(desktop.List().Records().TotalCount(), 2);
  QCOMPARE(LiveHeadings(desktop), 2);
}

void tst_deletion::SingleDeletionKeepsThePlace() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {u"A"_s, u"B"_s, u"C"_s});
  desktop.ChooseNode(cConstNodo().Cabeceras());
  const int third = desktop.List().Records().IdAt(2);
  desktop.List().SelectRecord(desktop.List().Records().IdAt(1));
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.Action("actDelete").trigger();
  QCOMPARE(desktop.TakeBoxes().size(), 1);
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({third}));
}

void tst_deletion::CancelLeavesTheRest() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {u"A"_s, u"B"_s, u"C"_s});
  desktop.ChooseNode(cConstNodo().Cabeceras());
  QList<host::DeletionTarget> targets;
  for (int row = 0; row < 3; ++row) {
    targets.append({desktop.List().Records().IdAt(row), desktop.List().Records().NameAt(row, 1)});
  }
  const host::DeletionResult result = host::DeleteRecords(desktop.Bridge(), *host::FindNode(cConstNodo().Cabeceras()),
                                                          targets, [](int done) { return done < 1; });
  QCOMPARE(result.deleted, QStringList({u"A"_s}));
  QCOMPARE(result.untouched, QStringList({u"B"_s, u"C"_s}));
  QCOMPARE(LiveHeadings(desktop), 2);
}

void tst_deletion::KeptRecordSaysWhatUsesIt() {
  TestDesktop desktop;
  FakeComponent::Register({});
  const int provinces = desktop.database.Id(u"SELECT COUNT(*) FROM Provincias WHERE CodPais=35 AND Eliminado=0");
  desktop.database.Execute(u"INSERT INTO Colaboradores(Nombre,codpais,Eliminado) VALUES('x',35,0)");
  const host::DeletionResult result = host::DeleteRecords(desktop.Bridge(), *host::FindNode(cConstNodo().Paises()),
                                                          {{35, u"España"_s}}, [](int) { return true; });
  QCOMPARE(result.kept.size(), 1);
  QCOMPARE(result.kept.constFirst().reason, u"lo utilizan %1 provincias y 1 colaborador"_s.arg(provinces));
}

void tst_deletion::CountsAreJoined() {
  const host::RowCount one{u"disco"_s, u"discos"_s, 1};
  const host::RowCount two{u"emisor"_s, u"emisores"_s, 2};
  QCOMPARE(host::JoinCounts({}), QString());
  QCOMPARE(host::JoinCounts({one}), u"1 disco"_s);
  QCOMPARE(host::JoinCounts({two, one, two}), u"2 emisores, 1 disco y 2 emisores"_s);
}

KEL_TEST(tst_deletion);
#include "tst_deletion.moc"
