#include "Colleague.h"
#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/records/AffectedRecords.h"
#include "platform/contract/cConstNodo.h"

#include <QDialog>
#include <QScrollBar>
#include <QTreeWidget>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// What another program writes is seen within two seconds; a loaded machine gets some more.
constexpr int soon = 5000;

QStringList Names(const host::RecordList& list) {
  QStringList names;
  for (int row = 0; row < list.Records().rowCount(); ++row) {
    names.append(list.Records().LineAt(row));
  }
  return names;
}

}  // namespace

class tst_live_records : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void OthersChangesAppear();
  void TheTreeCounts();
  void PlaceIsKept();
  void NothingMovesBehindADialog();
  void OnlyWhatLooksOtherwiseIsRead_data();
  void OnlyWhatLooksOtherwiseIsRead();
};

void tst_live_records::OthersChangesAppear() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Provincias SET Eliminado=-1 WHERE IDProvincia={}", id);
  });
  desktop.ChooseNode(cConstNodo().Provincias());
  const int total = desktop.List().Records().TotalCount();
  lorenzo.Execute(u"UPDATE Provincias SET Nombre='Zzz' WHERE IDProvincia=1");
  QTRY_VERIFY_WITH_TIMEOUT(Names(desktop.List()).constLast().startsWith(u"Zzz"_s), soon);
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Ítaca',35)");
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Feacia',35)");
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 2, soon);
  const int newest = desktop.database.Id(u"SELECT MAX(IDProvincia) FROM Provincias");
  QCOMPARE(lorenzo.Delete(cConstNodo().Provincias(), newest, u"Feacia"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 1, soon);
  // A record that is shown in the rows of others.
  lorenzo.Execute(u"UPDATE Paises SET Nombre='Hispania' WHERE IDPais=35");
  QTRY_VERIFY_WITH_TIMEOUT(Names(desktop.List()).constLast().contains(u"Hispania"_s), soon);
  // The node of deletions has another table than what is deleted.
  desktop.ChooseNode(host::deletedRecordsNode);
  QCOMPARE(desktop.List().Records().TotalCount(), 1);
  QCOMPARE(lorenzo.Delete(cConstNodo().Provincias(), newest - 1, u"Ítaca"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), 2, soon);
  // The notes themselves.
  desktop.ChooseNode(host::changesNode);
  const int noted = desktop.List().Records().TotalCount();
  lorenzo.Execute(u"UPDATE Provincias SET Nombre='Yyy' WHERE IDProvincia=1");
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), noted + 1, soon);
}

void tst_live_records::TheTreeCounts() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Provincias SET Eliminado=-1 WHERE IDProvincia={}", id);
  });
  auto* tree = desktop.Window().findChild<QTreeWidget*>(u"nodeTree"_s);
  const auto count = [tree](const QString& title) {
    return tree->findItems(title, Qt::MatchExactly | Qt::MatchRecursive).constFirst()->text(1);
  };
  desktop.ChooseNode(cConstNodo().Paises());
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Provincias"_s), u"52"_s, soon);
  QCOMPARE(count(u"Registros eliminados"_s), u"0"_s);
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Ítaca',35)");
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Provincias"_s), u"53"_s, soon);
  const int newest = desktop.database.Id(u"SELECT MAX(IDProvincia) FROM Provincias");
  QCOMPARE(lorenzo.Delete(cConstNodo().Provincias(), newest, u"Ítaca"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Registros eliminados"_s), u"1"_s, soon);
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Provincias"_s), u"52"_s, soon);
}

void tst_live_records::PlaceIsKept() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Provincias());
  host::RecordList& list = desktop.List();
  desktop.Window().resize(600, 400);
  desktop.SearchBox().setText(u"r"_s);
  list.SelectRecords({list.Records().IdAt(1), list.Records().IdAt(2)});
  const QList<int> selected = list.SelectedIds();
  // Scrolled away from what is selected, as a reader does.
  list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
  const int top = list.Records().IdAt(list.verticalScrollBar()->value());
  QVERIFY(list.verticalScrollBar()->value() > 5);
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('A Arr',35)");
  QTRY_COMPARE_WITH_TIMEOUT(list.Records().NameAt(0, 1), u"A Arr"_s, soon);
  QCOMPARE(list.SelectedIds(), selected);
  QCOMPARE(list.Records().IdAt(list.verticalScrollBar()->value()), top);
  QCOMPARE(desktop.SearchBox().text(), u"r"_s);
  QVERIFY(list.Records().rowCount() < list.Records().TotalCount());
}

void tst_live_records::NothingMovesBehindADialog() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Paises());
  const int total = desktop.List().Records().TotalCount();
  FakeComponent::Register([&](adodb::Connection&, int) {
    lorenzo.Execute(u"INSERT INTO Paises(Nombre) VALUES('Ítaca')");
    QTest::qWait(2500);
    QCOMPARE(desktop.List().Records().TotalCount(), total);
  });
  desktop.List().SelectRecord(35);
  desktop.Action("actModify").trigger();
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 1, soon);
}

void tst_live_records::OnlyWhatLooksOtherwiseIsRead_data() {
  QTest::addColumn<int>("node");
  QTest::addColumn<QString>("table");
  QTest::addColumn<int>("key");
  QTest::addColumn<int>("records");  // -1 for the whole list
  QTest::newRow("the record") << cConstNodo().Provincias() << u"Provincias"_s << 7 << 1;
  QTest::newRow("what it shows") << cConstNodo().Provincias() << u"Paises"_s << 35 << 52;
  QTest::newRow("what nobody shows") << cConstNodo().Provincias() << u"Paises"_s << 36 << 0;
  QTest::newRow("another table") << cConstNodo().Provincias() << u"Bancos"_s << 1 << 0;
  QTest::newRow("several rows") << cConstNodo().Provincias() << u"Provincias"_s << 0 << -1;
  QTest::newRow("several rows of what it shows") << cConstNodo().Provincias() << u"Paises"_s << 0 << -1;
  QTest::newRow("several rows of another table") << cConstNodo().Provincias() << u"Bancos"_s << 0 << 0;
}

void tst_live_records::OnlyWhatLooksOtherwiseIsRead() {
  QFETCH(int, node);
  QFETCH(QString, table);
  QFETCH(int, key);
  static const support::TestDatabase database;
  host::Change change;
  change.table = table;
  change.key = key;
  const auto ids = host::AffectedRecords(database.Connection(), *host::FindNode(node), {change});
  QTEST(ids ? static_cast<int>(ids->size()) : -1, "records");
}

KEL_TEST(tst_live_records);
#include "tst_live_records.moc"
