#include "BoxAnswers.h"
#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/desktop/Deletion.h"
#include "host/desktop/RecordReferences.h"
#include "platform/automation/Error.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

const QString countLive = QStringLiteral("SELECT COUNT(*) FROM Cabeceras WHERE Eliminado=0");

// Marks a heading as the component does, but refuses the one named "En uso" and fails at the one named "Falla".
void DeleteHeading(adodb::Connection& connection, int id) {
  const QString name = connection.Execute(QStringLiteral("SELECT Nombre FROM Cabeceras WHERE IDCabecera=%1").arg(id))
                           ->Field(0)
                           .toString();
  if (name == QStringLiteral("Falla")) {
    throw automation::Error(-2147217887, QStringLiteral("La base de datos está bloqueada"));
  }
  if (name != QStringLiteral("En uso")) {
    connection.Execute(QStringLiteral("UPDATE Cabeceras SET Eliminado=-1 WHERE IDCabecera=%1").arg(id));
  }
}

void AddHeadings(TestDesktop& desktop, const QStringList& names) {
  desktop.Execute(QStringLiteral("UPDATE Cabeceras SET Eliminado=-1"));
  for (const QString& name : names) {
    desktop.Execute(QStringLiteral("INSERT INTO Cabeceras(Nombre,Eliminado) VALUES('%1',0)").arg(name));
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
  QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
}

void tst_deletion::NothingHappensWithoutYes() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {QStringLiteral("Una")});
  desktop.Window().ChooseNode(host::NodeCabeceras);
  BoxAnswers boxes({QMessageBox::No});
  desktop.Action("accEliminar").trigger();
  QCOMPARE(boxes.Texts(), QStringList({QStringLiteral("¿Desea eliminar la cabecera «Una»? | ")}));
  QVERIFY(FakeComponent::Requests().isEmpty());
}

void tst_deletion::QuestionNamesRecordAndDependents() {
  TestDesktop desktop;
  FakeComponent::Register({});
  desktop.Execute(QStringLiteral("INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('0001','Banco Uno',0)"));
  const int bank = desktop.Value(QStringLiteral("SELECT MAX(IDBanco) FROM Bancos")).toInt();
  for (const char* deleted : {"0", "0", "-1"}) {
    desktop.Execute(QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES(%1,'1','x',%2)")
                        .arg(bank)
                        .arg(QLatin1StringView(deleted)));
  }
  desktop.Window().ChooseNode(host::NodeBancos);
  desktop.List().SelectRecord(bank);
  BoxAnswers boxes({QMessageBox::Yes});
  desktop.Action("accEliminar").trigger();
  QCOMPARE(boxes.Texts().constFirst(),
           QStringLiteral(
               "¿Desea eliminar el banco «0001 Banco Uno»? | Se marcarán también como eliminados: 2 sucursales."));
  QCOMPARE(
      FakeComponent::Requests(),
      QStringList(
          {QStringLiteral("EliminarRegistro nodo=19 accion=3 id=%1 aux=0 Entidades bancarias\\Bancos").arg(bank)}));
}

void tst_deletion::SeveralRecordsEndInOneSummary() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {QStringLiteral("A"), QStringLiteral("En uso"), QStringLiteral("Falla"), QStringLiteral("Z")});
  desktop.Window().ChooseNode(host::NodeCabeceras);
  desktop.List().selectAll();
  BoxAnswers boxes({QMessageBox::Yes});
  desktop.Action("accEliminar").trigger();
  QCOMPARE(boxes.Texts().size(), 2);
  QCOMPARE(boxes.Texts().constLast(), QStringLiteral("Registros eliminados: 2. Conservados: 2. | No se han eliminado:\n"
                                                     "• En uso: otros registros lo utilizan\n"
                                                     "• Falla: error -2147217887: La base de datos está bloqueada"));
  QCOMPARE(desktop.List().Records().TotalCount(), 2);
  QCOMPARE(desktop.Value(countLive).toInt(), 2);
}

void tst_deletion::SingleDeletionKeepsThePlace() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
  desktop.Window().ChooseNode(host::NodeCabeceras);
  const int third = desktop.List().Records().IdAt(2);
  desktop.List().SelectRecord(desktop.List().Records().IdAt(1));
  BoxAnswers boxes({QMessageBox::Yes});
  desktop.Action("accEliminar").trigger();
  QCOMPARE(boxes.Texts().size(), 1);
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({third}));
}

void tst_deletion::CancelLeavesTheRest() {
  TestDesktop desktop;
  FakeComponent::Register(DeleteHeading);
  AddHeadings(desktop, {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
  desktop.Window().ChooseNode(host::NodeCabeceras);
  QList<host::DeletionTarget> targets;
  for (int row = 0; row < 3; ++row) {
    targets.append({desktop.List().Records().IdAt(row), desktop.List().Records().NameAt(row, 1)});
  }
  const host::DeletionResult result = host::DeleteRecords(desktop.Bridge(), *host::FindNode(host::NodeCabeceras),
                                                          targets, [](int done) { return done < 1; });
  QCOMPARE(result.deleted, QStringList({QStringLiteral("A")}));
  QCOMPARE(result.untouched, QStringList({QStringLiteral("B"), QStringLiteral("C")}));
  QCOMPARE(desktop.Value(countLive).toInt(), 2);
}

void tst_deletion::KeptRecordSaysWhatUsesIt() {
  TestDesktop desktop;
  FakeComponent::Register({});
  const int provinces =
      desktop.Value(QStringLiteral("SELECT COUNT(*) FROM Provincias WHERE CodPais=35 AND Eliminado=0")).toInt();
  desktop.Execute(QStringLiteral("INSERT INTO Colaboradores(Nombre,codpais,Eliminado) VALUES('x',35,0)"));
  const host::DeletionResult result = host::DeleteRecords(desktop.Bridge(), *host::FindNode(host::NodePaises),
                                                          {{35, QStringLiteral("España")}}, [](int) { return true; });
  QCOMPARE(result.kept.size(), 1);
  QCOMPARE(result.kept.constFirst().reason, QStringLiteral("lo utilizan %1 provincias y 1 colaborador").arg(provinces));
}

void tst_deletion::CountsAreJoined() {
  const host::RowCount one{QStringLiteral("disco"), QStringLiteral("discos"), 1};
  const host::RowCount two{QStringLiteral("emisor"), QStringLiteral("emisores"), 2};
  QCOMPARE(host::JoinCounts({}), QString());
  QCOMPARE(host::JoinCounts({one}), QStringLiteral("1 disco"));
  QCOMPARE(host::JoinCounts({two, one, two}), QStringLiteral("2 emisores, 1 disco y 2 emisores"));
}

KEL_TEST(tst_deletion);
#include "tst_deletion.moc"
