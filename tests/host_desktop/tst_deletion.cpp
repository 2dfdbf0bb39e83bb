#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/ErrorOf.h"
#include "support/TestProgram.h"

#include "host/records/Deletion.h"
#include "host/records/DeletionLog.h"
#include "host/records/RecordReader.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"

#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>
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

int AddBank(const TestDesktop& desktop, const QString& number) {
  desktop.database.Execute(u"INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('{}','Banco',0)", number);
  return desktop.database.Id(u"SELECT MAX(IDBanco) FROM Bancos");
}

void AddBranch(const TestDesktop& desktop, int bank, bool deleted) {
  desktop.database.Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES({},'1','x',{})", bank,
                           deleted);
}

void DeleteBank(adodb::Connection& connection, int id) {
  adodb::Execute(connection, u"UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco={}", id);
  adodb::Execute(connection, u"UPDATE Bancos SET Eliminado=-1 WHERE IDBanco={}", id);
}

void LockElsewhere(const TestDesktop& desktop, const QString& column, int id) {
  desktop.database.Execute(
      u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo) VALUES (7, '{}', {}, 'blas', "
      u"'pc3')",
      column, id);
}

}  // namespace

class tst_deletion : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void NothingHappensWithoutYes();
  void QuestionNamesRecordAndDependents();
  void SeveralRecordsEndInOneSummary();
  void SingleDeletionKeepsThePlace();
  void CancelLeavesTheRest();
  void WhatStaysIsNamedWithItsReason();
  void UsersThatStay();
  void DeletedUnderItsLock();
  void WhatCameMeanwhileStays();
  void ABoxHoldsNobodyUp();
  void UndoBringsBackWhatWentTogether();
  void RefusedRecoveries_data();
  void RefusedRecoveries();
  void DeletedRecordsAreListedAndRecovered();
  void AFailureHalfWayIsUndone();
};

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
  const int bank = AddBank(desktop, u"0001"_s);
  for (const bool deleted : {false, false, true}) {
    AddBranch(desktop, bank, deleted);
  }
  desktop.ChooseNode(cConstNodo().Bancos());
  desktop.List().SelectRecord(bank);
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actDelete").trigger();
  QCOMPARE(desktop.TakeBoxes(),
           (QStringList{u"Kel|pregunta|¿Desea eliminar el banco «0001 Banco»?|Se marcarán también como eliminados: "
                        "2 sucursales."_s,
                        u"Kel|aviso|Registros eliminados: 0. Conservados: 1.|No se han eliminado:\n"
                        "• 0001 Banco: otros registros lo utilizan"_s}));
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

// One question names what goes, what goes along, and what stays and why; the component is asked for the rest only.
void tst_deletion::WhatStaysIsNamedWithItsReason() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Bancos SET Eliminado=-1 WHERE IDBanco={}", id);
  });
  const int free = AddBank(desktop, u"0001"_s);
  const int held = AddBank(desktop, u"0002"_s);
  const int used = AddBank(desktop, u"0003"_s);
  AddBranch(desktop, free, false);
  desktop.database.Execute(u"INSERT INTO Presentadores(Nombre,CodBanco,Eliminado) VALUES('x',{},0)", used);
  LockElsewhere(desktop, u"IDBanco"_s, held);
  desktop.ChooseNode(cConstNodo().Bancos());
  desktop.List().selectAll();
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.Action("actDelete").trigger();
  QCOMPARE(desktop.TakeBoxes(),
           QStringList(u"Kel|pregunta|¿Desea eliminar 1 de los 3 registros seleccionados de «Bancos»?|• 0001 Banco\n\n"
                       "Se marcarán también como eliminados: 1 sucursal.\n\nSe conservan:\n"
                       "• 0002 Banco: lo está modificando «blas» en «pc3»\n"
                       "• 0003 Banco: lo utiliza 1 presentador"_s));
  QCOMPARE(FakeComponent::Requests(),
           QStringList({u"EliminarRegistro nodo=19 accion=3 id=%1 aux=0 Entidades bancarias\\Bancos"_s.arg(free)}));
  QCOMPARE(desktop.Window().statusBar()->currentMessage(), u"Registros eliminados: 1. Conservados: 2."_s);
  desktop.ChooseNode(cConstNodo().Paises());
  QCOMPARE(desktop.Window().statusBar()->currentMessage(), QString());
}

void tst_deletion::UsersThatStay() {
  TestDesktop desktop;
  FakeComponent::Register({});
  desktop.database.Execute(u"INSERT INTO Usuarios(IDUsuario,Nombre,Administrador,TipoUsuario) VALUES(8,'berta',0,1)");
  desktop.database.Execute(u"INSERT INTO Usuarios(IDUsuario,Nombre,Administrador,TipoUsuario) VALUES(9,'carlos',-1,1)");
  desktop.Session().userId = 8;
  const auto plan = host::PlanDeletion(desktop.Bridge(), *host::FindNode(cConstNodo().Usuarios()),
                                       {{8, u"berta"_s}, {9, u"carlos"_s}}, [](int) { return true; });
  QVERIFY(plan && plan->going.isEmpty() && plan->staying.size() == 2);
  QCOMPARE(plan->staying[0].reason, u"es el usuario que ha iniciado la sesión"_s);
  QCOMPARE(plan->staying[1].reason, u"es un administrador de la aplicación"_s);
}

// The lock is taken for the deletion itself: who comes between the question and it is not overrun, and nobody comes
// between the look at the lock and the mark.
void tst_deletion::DeletedUnderItsLock() {
  TestDesktop desktop;
  QStringList lockedMeanwhile;
  FakeComponent::Register([&](adodb::Connection& connection, int id) {
    lockedMeanwhile += support::Rows(connection, u"SELECT campoID, ValorID, Usuario FROM BloqueoRegistros"_s);
    DeleteHeading(connection, id);
  });
  AddHeadings(desktop, {u"A"_s, u"B"_s});
  const int first = desktop.database.Id(u"SELECT IDCabecera FROM Cabeceras WHERE Nombre='A'");
  const int second = desktop.database.Id(u"SELECT IDCabecera FROM Cabeceras WHERE Nombre='B'");
  const host::DeletionResult result = host::DeleteRecords(desktop.Bridge(), *host::FindNode(cConstNodo().Cabeceras()),
                                                          {{first, u"A"_s}, {second, u"B"_s}}, [&](int done) {
                                                            if (done == 1) {
                                                              LockElsewhere(desktop, u"IDCabecera"_s, second);
                                                            }
                                                            return true;
                                                          });
  QCOMPARE(result.deleted, QStringList(u"A"_s));
  QCOMPARE(result.kept.size(), 1);
  QCOMPARE(result.kept.constFirst().reason, u"lo está modificando «blas» en «pc3»"_s);
  QCOMPARE(lockedMeanwhile, QStringList(u"IDCabecera|%1|ana"_s.arg(first)));
  QCOMPARE(desktop.database.Query(u"SELECT ValorID FROM BloqueoRegistros"), QStringList(QString::number(second)));
}

// What is used or deleted since the user was asked is left out, without asking the component.
void tst_deletion::WhatCameMeanwhileStays() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteBank);
  const QList<host::DeletionTarget> targets{{AddBank(desktop, u"0001"_s), u"1"_s},
                                            {AddBank(desktop, u"0002"_s), u"2"_s},
                                            {AddBank(desktop, u"0003"_s), u"3"_s}};
  const host::DeletionResult result =
      host::DeleteRecords(desktop.Bridge(), *host::FindNode(cConstNodo().Bancos()), targets, [&](int done) {
        if (done == 1) {
          desktop.database.Execute(u"INSERT INTO Presentadores(Nombre,CodBanco) VALUES('x',{})", targets[1].id);
          desktop.database.Execute(u"UPDATE Bancos SET Eliminado=-1 WHERE IDBanco={}", targets[2].id);
        }
        return true;
      });
  QCOMPARE(result.deleted, QStringList(u"1"_s));
  QCOMPARE(result.kept.size(), 2);
  QCOMPARE(result.kept[0].reason, u"lo utiliza 1 presentador"_s);
  QCOMPARE(result.kept[1].reason, u"ya estaba eliminado"_s);
  QCOMPARE(FakeComponent::Requests().size(), 1);
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM Eliminaciones"), 1);
}

// Others write while a person reads it, the record is asked for once, and the rest goes all the same.
void tst_deletion::ABoxHoldsNobodyUp() {
  TestDesktop desktop;
  int errorMeanwhile = -1;
  FakeComponent::Register([&](adodb::Connection& connection, int id) {
    const auto name = adodb::Execute(connection, u"SELECT Nombre FROM Cabeceras WHERE IDCabecera={}", id)->Field(0);
    if (name != u"Caja"_s) {
      DeleteHeading(connection, id);
      return;
    }
    QTimer::singleShot(0, [&] {
      const auto other = database::CreateConnection(desktop.database.ConnectionString() + u";Espera=20"_s);
      other->Open();
      errorMeanwhile = support::ErrorOf([&] { other->Execute(u"UPDATE Paises SET Nombre='x' WHERE IDPais=1"_s); });
    });
    QMessageBox box(QMessageBox::Warning, u"Kel"_s, u"no se puede"_s);
    box.setTextFormat(Qt::PlainText);
    box.exec();
  });
  AddHeadings(desktop, {u"A"_s, u"B"_s, u"Caja"_s, u"D"_s});
  desktop.ChooseNode(cConstNodo().Cabeceras());
  desktop.List().selectAll();
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actDelete").trigger();
  const QStringList boxes = desktop.TakeBoxes();
  QCOMPARE(boxes.size(), 3);
  QCOMPARE(boxes[1], u"Kel|aviso|no se puede"_s);
  QVERIFY(boxes[2].startsWith(u"Kel|aviso|Registros eliminados: 3. Conservados: 1."_s));
  QCOMPARE(errorMeanwhile, 0);
  QCOMPARE(desktop.database.Query(u"SELECT Nombre FROM Cabeceras WHERE Eliminado=0"), QStringList(u"Caja"_s));
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM Eliminaciones"), 3);
}

void tst_deletion::UndoBringsBackWhatWentTogether() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteBank);
  const int bank = AddBank(desktop, u"0001"_s);
  AddBranch(desktop, bank, false);
  AddBranch(desktop, bank, true);
  AddBranch(desktop, bank, false);
  // A deleted record with the same number is nobody's rival.
  desktop.database.Execute(u"INSERT INTO Bancos(Numero,Eliminado) VALUES('0001',-1)");
  desktop.ChooseNode(cConstNodo().Bancos());
  QVERIFY(!desktop.Action("actUndoDelete").isEnabled());
  desktop.driver.Answer(QMessageBox::Yes);
  desktop.Action("actDelete").trigger();
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM Sucursales WHERE Eliminado=0"), 0);
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.Window().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&desktop.Window()));
  QTest::keyClick(&desktop.Window(), Qt::Key_Z, Qt::ControlModifier);
  desktop.WaitForTheList();
  QVERIFY(desktop.Window().windowTitle().startsWith(u"Bancos"_s));
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({bank}));
  QCOMPARE(desktop.database.Query(u"SELECT Eliminado FROM Sucursales ORDER BY IDSucursal"),
           (QStringList{u"Falso"_s, u"Verdadero"_s, u"Falso"_s}));
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM Eliminaciones"), 0);
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM EliminacionesRegistros"), 0);
  QVERIFY(!desktop.Action("actUndoDelete").isEnabled());
}

void tst_deletion::RefusedRecoveries_data() {
  QTest::addColumn<int>("node");
  QTest::addColumn<int>("id");
  QTest::addColumn<QString>("meanwhile");
  QTest::addColumn<QString>("reason");
  QTest::newRow("its number was taken") << cConstNodo().Bancos() << 700
                                        << u"INSERT INTO Bancos(Numero,Nombre) VALUES('7000','Otro')"_s
                                        << u"ya hay otro registro con el mismo número: «7000 Otro»"_s;
  QTest::newRow("its percentage was taken")
      << cConstNodo().TipoDeduccion() << 700 << u"INSERT INTO TipoDeducciones(Porcentaje) VALUES(77)"_s
      << u"ya hay otro registro con el mismo porcentaje: «77 %»"_s;
  QTest::newRow("its country was deleted")
      << cConstNodo().Provincias() << 700 << u"UPDATE Paises SET Eliminado=-1 WHERE IDPais=35"_s
      << u"depende de otro registro eliminado: recupere antes el país"_s;
  QTest::newRow("the row is gone") << cConstNodo().Bancos() << 700 << u"DELETE FROM Bancos WHERE IDBanco=700"_s
                                   << u"el registro ya no está en la base de datos"_s;
  QTest::newRow("somebody was faster") << cConstNodo().Bancos() << 700 << u"DELETE FROM Eliminaciones"_s
                                       << u"otro usuario lo ha recuperado ya"_s;
}

void tst_deletion::RefusedRecoveries() {
  QFETCH(int, node);
  QFETCH(int, id);
  QFETCH(QString, meanwhile);
  QFETCH(QString, reason);
  TestDesktop desktop;
  desktop.database.Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre,Eliminado) VALUES(700,'7000','Siete',0)");
  desktop.database.Execute(u"INSERT INTO TipoDeducciones(IDTipoDeduccion,Porcentaje) VALUES(700,77)");
  desktop.database.Execute(u"INSERT INTO Provincias(IDProvincia,Nombre,CodPais) VALUES(700,'Siete',35)");
  host::DeletionLog log(desktop.Session());
  const host::Node& kind = *host::FindNode(node);
  const int note = log.Note(kind, id, u"Siete"_s);
  desktop.database.Execute(u"UPDATE {} SET Eliminado=-1 WHERE {}={}", adodb::Verbatim{kind.table},
                           adodb::Verbatim{kind.key}, id);
  desktop.database.Connect()->Execute(meanwhile);
  const int notes = desktop.database.Id(u"SELECT COUNT(*) FROM Eliminaciones");
  QCOMPARE(log.Recover(note).refusal, reason);
  QVERIFY(host::IsDeleted(desktop.database.Connection(), kind, id));
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM Eliminaciones"), notes);
}

void tst_deletion::DeletedRecordsAreListedAndRecovered() {
  TestDesktop desktop;
  FakeComponent::Register({});
  const int bank = AddBank(desktop, u"0001"_s);
  const int rival = AddBank(desktop, u"0002"_s);
  host::DeletionLog log(desktop.Session());
  const host::Node& banks = *host::FindNode(cConstNodo().Bancos());
  log.Note(banks, bank, u"0001 Banco"_s);
  log.Note(banks, rival, u"0002 Banco"_s);
  log.Note(*host::FindNode(cConstNodo().Usuarios()), 77, u"zoe"_s);
  desktop.database.Execute(u"INSERT INTO Usuarios(IDUsuario,Nombre,Eliminado) VALUES(77,'zoe',-1)");
  desktop.database.Execute(u"UPDATE Bancos SET Eliminado=-1");
  // A note that was left over when its program died, whose record is live.
  const int stale = log.Note(banks, AddBank(desktop, u"0002"_s), u"0002 Banco"_s);
  QCOMPARE(log.Recover(stale).refusal, u"el registro no está eliminado"_s);
  desktop.ChooseNode(host::deletedRecordsNode);
  QCOMPARE(desktop.List().Records().TotalCount(), 3);
  // Not even the name of a user.
  desktop.Session().userKind = 2;
  desktop.Restart();
  desktop.ChooseNode(host::deletedRecordsNode);
  const host::RecordModel& records = desktop.List().Records();
  QCOMPARE(records.TotalCount(), 2);
  QCOMPARE(records.index(0, 1).data().toString(), u"Bancos"_s);
  QVERIFY(records.index(0, 2).data().toString().startsWith(QDate::currentDate().toString(u"dd/MM/yyyy "_s)));
  QCOMPARE(records.index(0, 3).data().toString(), u"ana"_s);
  desktop.List().selectAll();
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actRecover").trigger();
  QCOMPARE(desktop.TakeBoxes(),
           QStringList(u"Kel|aviso|Registros recuperados: 1. Siguen eliminados: 1.|No se han recuperado:\n"
                       "• 0002 Banco: ya hay otro registro con el mismo número: «0002 Banco»"_s));
  QCOMPARE(records.TotalCount(), 1);
  QVERIFY(!host::IsDeleted(desktop.database.Connection(), banks, bank));
}

// The component marks the branches before the bank.
void tst_deletion::AFailureHalfWayIsUndone() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco={}", id);
    throw automation::Error(-2147217887, u"ocupada"_s);
  });
  const int bank = AddBank(desktop, u"0001"_s);
  AddBranch(desktop, bank, false);
  AddBranch(desktop, bank, true);
  const host::DeletionResult result = host::DeleteRecords(desktop.Bridge(), *host::FindNode(cConstNodo().Bancos()),
                                                          {{bank, u"x"_s}}, [](int) { return true; });
  QCOMPARE(result.kept.size(), 1);
  QCOMPARE(desktop.database.Query(u"SELECT Eliminado FROM Sucursales ORDER BY IDSucursal"),
           (QStringList{u"Falso"_s, u"Verdadero"_s}));
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM Eliminaciones"), 0);
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
}

KEL_TEST(tst_deletion);
#include "tst_deletion.moc"
