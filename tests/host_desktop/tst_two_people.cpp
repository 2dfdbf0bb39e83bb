#include "Colleague.h"
#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/desktop/Strip.h"
#include "host/records/HeldRecords.h"
#include "host/records/RecordReader.h"
#include "host/services/Rescue.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTime>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// The shown strips, a line each: the text, then what its buttons say.
QStringList Strips(TestDesktop& desktop) {
  QStringList texts;
  for (const host::Strip* strip : desktop.Window().findChildren<host::Strip*>()) {
    if (strip->isHidden()) {
      continue;
    }
    QString text = strip->findChild<QLabel*>()->text();
    for (const QPushButton* button : strip->findChildren<QPushButton*>()) {
      text += u" [%1]"_s.arg(button->text().remove(u'&'));
    }
    texts.append(text);
  }
  return texts;
}

void Press(TestDesktop& desktop, const QString& text) {
  for (QPushButton* button : desktop.Window().findChildren<QPushButton*>()) {
    if (button->isVisible() && button->text().remove(u'&') == text) {
      button->click();
      return;
    }
  }
  QFAIL(qPrintable(u"no button "_s + text));
}

// Marks a record of a table as the component does.
FakeComponent::Behaviour Mark(const char* table, const char* key) {
  return [=](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE {} SET Eliminado=-1 WHERE {}={}", adodb::Verbatim{QString::fromLatin1(table)},
                   adodb::Verbatim{QString::fromLatin1(key)}, id);
  };
}

QString Now() {
  return QTime::currentTime().toString(u"HH:mm"_s);
}

}  // namespace

class tst_two_people : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ADeletedRecordIsNotOpened();
  void NoBranchBelowADeletedBank();
  void TheHostHoldsWhatADialogDoesNot_data();
  void TheHostHoldsWhatADialogDoesNot();
  void AHeldRecordIsLookedAt();
  void SavedBelowADeletedRecord();
  void SavedIntoADeletedRecord();
  void ALockThatSomebodyReleased();
  void ARescuedRecordHasChanged();
};

void tst_two_people::ADeletedRecordIsNotOpened() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register(Mark("Paises", "IDPais"));
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.List().SelectRecord(36);
  QCOMPARE(lorenzo.Delete(cConstNodo().Paises(), 36, u"<b>País"_s), QString());
  FakeComponent::Register({});
  const QString time = Now();
  desktop.Action("actModify").trigger();
  QCOMPARE(FakeComponent::Requests(), QStringList());
  QCOMPARE(Strips(desktop),
           QStringList(u"Lorenzo ha eliminado «<b>País» hoy a las %1. [Recuperarlo] [Entendido]"_s.arg(time)));
  QVERIFY(!desktop.List().SelectRecord(36));
  Press(desktop, u"Recuperarlo"_s);
  QCOMPARE(Strips(desktop), QStringList());
  QCOMPARE(desktop.List().SelectedIds(), QList<int>{36});
  QCOMPARE(desktop.Window().focusWidget(), &desktop.List());
  // Nobody's note tells who.
  desktop.database.Execute(u"UPDATE Paises SET Eliminado=-1 WHERE IDPais=36");
  desktop.Action("actModify").trigger();
  QCOMPARE(Strips(desktop).size(), 1);
  QVERIFY(Strips(desktop).constFirst().endsWith(u"está eliminado. [Entendido]"_s));
  Press(desktop, u"Entendido"_s);
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
}

void tst_two_people::NoBranchBelowADeletedBank() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  lorenzo.Execute(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0001','Banco del Almendro')");
  lorenzo.Execute(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0002','Otro')");
  const int bank = desktop.database.Id(u"SELECT IDBanco FROM Bancos WHERE Numero='0001'");
  desktop.ChooseNode(cConstNodo().Bancos());
  desktop.List().SelectRecord(bank);
  // Two people add branches to one bank: nobody holds it for that.
  QStringList held;
  FakeComponent::Register([&](adodb::Connection& connection, int) {
    held = support::Rows(connection, u"SELECT campoID FROM BloqueoRegistros"_s);
    lorenzo.Execute(u"UPDATE Bancos SET Eliminado=-1 WHERE IDBanco={}", bank);
    adodb::Execute(connection, u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES({},'1','Centro')", bank);
  });
  desktop.Action("actNewBranch").trigger();
  QCOMPARE(held, QStringList());
  QCOMPARE(Strips(desktop),
           QStringList(u"La sucursal «Centro» se ha guardado, pero su banco, «0001 Banco del Almendro», lo acaba de "
                       "eliminar Lorenzo. [Entendido]"_s));
  lorenzo.Execute(u"UPDATE Bancos SET Eliminado=0 WHERE IDBanco={}", bank);
  desktop.Refresh();
  desktop.List().SelectRecord(bank);
  FakeComponent::Register(Mark("Bancos", "IDBanco"));
  QCOMPARE(lorenzo.Delete(cConstNodo().Bancos(), bank, u"0001 Banco del Almendro"_s), QString());
  FakeComponent::Register({});
  desktop.Action("actNewBranch").trigger();
  QCOMPARE(FakeComponent::Requests(), QStringList());
  QVERIFY(Strips(desktop).constLast().startsWith(u"Lorenzo ha eliminado «0001 Banco del Almendro»"_s));
}

void tst_two_people::TheHostHoldsWhatADialogDoesNot_data() {
  QTest::addColumn<int>("node");
  QTest::addColumn<QString>("lock");
  QTest::newRow("Encabezados") << cConstNodo().Encabezados().toInt() << u"IDEncabezado"_s;
  QTest::newRow("Cobradores") << cConstNodo().Cobradores() << u"IDCobrador"_s;
  QTest::newRow("Etiquetas") << cConstNodo().Etiquetas() << u"IDETIQUETA"_s;
}

// A dialog that fails releases nothing itself.
void tst_two_people::TheHostHoldsWhatADialogDoesNot() {
  QFETCH(int, node);
  QFETCH(QString, lock);
  TestDesktop desktop(database::Content::Demonstration);
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(node);
  const int id = desktop.List().Records().IdAt(0);
  desktop.List().SelectRecord(id);
  QStringList held;
  QString refusal;
  FakeComponent::Register([&](adodb::Connection& connection, int) {
    held = support::Rows(connection, u"SELECT campoID, ValorID FROM BloqueoRegistros"_s);
    refusal = lorenzo.Delete(node, id, u"x"_s);
    throw automation::Error(5, u"no"_s);
  });
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actModify").trigger();
  QCOMPARE(held, QStringList(u"%1|%2"_s.arg(lock).arg(id)));
  QVERIFY2(refusal.contains(u"«ana»"_s), qPrintable(refusal));
  QCOMPARE(desktop.TakeBoxes().size(), 1);
  QCOMPARE(desktop.database.Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
}

void tst_two_people::AHeldRecordIsLookedAt() {
  TestDesktop desktop(database::Content::Demonstration);
  Colleague lorenzo(desktop.database);
  FakeComponent::Register({});
  desktop.ChooseNode(cConstNodo().Cobradores());
  const int id = desktop.List().Records().IdAt(0);
  const QString name = desktop.List().Records().NameAt(0, 3);
  desktop.List().SelectRecord(id);
  lorenzo.Session().Locks().Take(u"IDCobrador"_s, id);
  desktop.driver.Answer(QMessageBox::Cancel);
  desktop.Action("actModify").trigger();
  QCOMPARE(FakeComponent::Requests(), QStringList());
  const QString box = desktop.TakeBoxes().join(u'\n');
  QVERIFY2(box.startsWith(u"Kel|informacion|Lorenzo tiene abierta «%1» en "_s.arg(name)), qPrintable(box));
  QVERIFY2(box.contains(u" desde las "_s), qPrintable(box));
  bool viewOnly = false;
  FakeComponent::Register([&](adodb::Connection&, int) { viewOnly = desktop.Bridge().OpenRequest()->viewOnly; });
  desktop.driver.Answer(QMessageBox::Open);
  desktop.Action("actModify").trigger();
  desktop.TakeBoxes();
  QVERIFY(viewOnly);
  // His lock stays his.
  QCOMPARE(desktop.database.Query(u"SELECT Usuario FROM BloqueoRegistros"), QStringList(u"Lorenzo"_s));
}

void tst_two_people::SavedBelowADeletedRecord() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Provincias());
  FakeComponent::Register([&](adodb::Connection& connection, int) {
    adodb::Execute(connection, u"UPDATE Provincias SET CodPais=36 WHERE IDProvincia=1");
    lorenzo.Execute(u"UPDATE Paises SET Eliminado=-1 WHERE IDPais=36");
  });
  desktop.List().SelectRecord(1);
  const QString name = desktop.List().Records().NameAt(desktop.List().SelectedRows().constFirst(), 1);
  desktop.Action("actModify").trigger();
  const QStringList strips = Strips(desktop);
  QCOMPARE(strips.size(), 1);
  QVERIFY2(strips[0].startsWith(u"La provincia «%1» se ha guardado, pero su país, «"_s.arg(name)),
           qPrintable(strips[0]));
  QVERIFY2(strips[0].endsWith(u"», lo acaba de eliminar Lorenzo. [Abrir la provincia] [Entendido]"_s),
           qPrintable(strips[0]));
  FakeComponent::Register({});
  desktop.ChooseNode(cConstNodo().Bancos());
  Press(desktop, u"Abrir la provincia"_s);
  QCOMPARE(FakeComponent::Requests(), QStringList(u"PasarDatos nodo=22 accion=2 id=1 aux=0 Tablas\\Provincias"_s));
}

// Possible where an administrator released the lock, or a foreign tool deletes.
void tst_two_people::SavedIntoADeletedRecord() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.List().SelectRecord(36);
  FakeComponent::Register([&](adodb::Connection& connection, int id) {
    lorenzo.Execute(u"UPDATE Paises SET Eliminado=-1 WHERE IDPais={}", id);
    adodb::Execute(connection, u"UPDATE Paises SET Nombre='Nuevo' WHERE IDPais={}", id);
  });
  desktop.Action("actModify").trigger();
  QCOMPARE(Strips(desktop).size(), 1);
  QVERIFY2(Strips(desktop)[0].contains(u"mientras usted tenía abierto su cuadro: sus cambios no se ven."_s),
           qPrintable(Strips(desktop)[0]));
}

void tst_two_people::ALockThatSomebodyReleased() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Paises());
  bool release = true;
  const auto openAndSave = [&](bool save) {
    FakeComponent::Register([&, save](adodb::Connection& connection, int id) {
      if (release) {
        const QList<host::HeldRecord> held = host::HeldRecords(lorenzo.Session());
        QVERIFY(host::TakeLockFrom(lorenzo.Session(), held[0]));
        QVERIFY(!host::TakeLockFrom(lorenzo.Session(), held[0]));
      }
      if (save) {
        adodb::Execute(connection, u"UPDATE Paises SET Nombre='Nuevo' WHERE IDPais={}", id);
      }
    });
    desktop.List().SelectRecord(36);
    desktop.Action("actModify").trigger();
    return Strips(desktop).join(u'\n');
  };
  const QString name = desktop.database.Query(u"SELECT Nombre FROM Paises WHERE IDPais=36").constFirst();
  const QString told = u"Lorenzo soltó su bloqueo de «%1» hoy a las %2; %3 [Abrir el país] [Entendido]"_s;
  QCOMPARE(openAndSave(false), told.arg(name, Now(), u"usted no ha guardado nada."_s));
  QCOMPARE(openAndSave(true), told.arg(name, Now(), u"lo guardado después puede haber pisado lo de otra persona."_s));
  // That was the other time.
  Press(desktop, u"Entendido"_s);
  release = false;
  QCOMPARE(openAndSave(true), QString());
  // Nor does it hide who deleted the record.
  release = true;
  lorenzo.Execute(u"UPDATE Paises SET Eliminado=-1 WHERE IDPais=36");
  lorenzo.Session().Locks().Take(u"IDPais"_s, 36);
  QVERIFY(host::TakeLockFrom(lorenzo.Session(), host::HeldRecords(lorenzo.Session())[0]));
  QVERIFY2(openAndSave(true).startsWith(u"Lorenzo ha eliminado"_s), qPrintable(Strips(desktop).join(u'\n')));
}

// Before what was typed goes over what somebody else has saved since, it is said.
void tst_two_people::ARescuedRecordHasChanged() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register({});
  lorenzo.Execute(u"UPDATE Paises SET Nombre='Ítaca' WHERE IDPais=36");
  QTest::qWait(1100);  // The log knows seconds.
  host::Rescue rescue(desktop.Services(), desktop.Bridge());
  desktop.Window().Offer(rescue);
  host::KeptInput input;
  input.request =
      host::ComponentRequest{.node = cConstNodo().Paises(), .action = cConstAccion().Modificar(), .selectedId = 36};
  input.dialog = u"frmPais"_s;
  input.title = u"Propiedades del país"_s;
  input.moment = QDateTime::currentDateTimeUtc();
  rescue.Add({input});
  QCOMPARE(Strips(desktop).size(), 1);
  QVERIFY(!Strips(desktop)[0].contains(u"Mientras tanto"_s));
  lorenzo.Execute(u"UPDATE Paises SET Nombre='Zzz' WHERE IDPais=35");
  lorenzo.Execute(u"UPDATE Paises SET Nombre='Feacia' WHERE IDPais=36");
  Press(desktop, u"Volver a abrir con ello"_s);
  QCOMPARE(FakeComponent::Requests(), QStringList());
  QCOMPARE(Strips(desktop).size(), 1);
  QVERIFY2(Strips(desktop)[0].contains(u" Mientras tanto Lorenzo ha cambiado ese registro hoy a las "_s),
           qPrintable(Strips(desktop)[0]));
  Press(desktop, u"Volver a abrir con ello"_s);
  QCOMPARE(FakeComponent::Requests().size(), 1);
  QVERIFY(FakeComponent::Requests()[0].contains(u"id=36"_s));
}

KEL_TEST(tst_two_people);
#include "tst_two_people.moc"
