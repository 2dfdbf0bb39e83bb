#include "host/records/NodeCatalog.h"
#include "host/records/RecordReader.h"
#include "host/records/RecordReferences.h"
#include "platform/contract/cConstNodo.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Every node's list, and what refers to its records, on the database alone.
class tst_node_catalogue : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryListIsRead_data();
  void EveryListIsRead();
  void UsesOfAProvince_data();
  void UsesOfAProvince();
  void CountsAreJoined();
};

void tst_node_catalogue::EveryListIsRead_data() {
  QTest::addColumn<int>("id");
  for (const host::Node& node : host::NodeCatalog()) {
    QTest::newRow(qPrintable(node.title)) << node.id;
  }
}

void tst_node_catalogue::EveryListIsRead() {
  QFETCH(int, id);
  static const support::TestDatabase database(database::Content::Demonstration);
  const host::Node& node = *host::FindNode(id);
  if (id == host::changesNode) {
    database.Execute(
        u"INSERT INTO Cambios (Nombre, Fecha, Clase, Tabla) VALUES ('uno', '2026-01-31T10:00:00Z', 2, 'Paises')");
  }
  const host::RecordData records = host::ReadRecords(database.Connection(), node);
  // What is gone can't be entered again.
  QVERIFY(node.canAdd || !node.canDelete);
  if (node.canRecover) {
    QCOMPARE(records.Size(), 0);
    return;
  }
  QVERIFY(records.Size() > 0);
  QVERIFY(!records.Display(0, 0).isEmpty());
  QVERIFY(host::HighestKey(database.Connection(), node) >= records.Id(0));
  QVERIFY(host::RecordName(database.Connection(), node, records.Id(0)).startsWith(records.Display(0, 0).simplified()));
  // More keys than one statement takes.
  QList<int> ids(500, -1);
  ids.append(records.Id(0));
  QCOMPARE(host::ReadRecords(database.Connection(), node, ids).Size(), 1);
  // Statements of their own, which no other test reaches for every node.
  host::CountDependents(database.Connection(), id, {records.Id(0)});
  host::CountUses(database.Connection(), id, records.Id(0), false);
  host::DeletedParent(database.Connection(), {node.table, node.key, records.Id(0)});
  for (const host::Node& other : host::NodeCatalog()) {
    host::ReferringIds(database.Connection(), node, other.table, records.Id(0));
  }
}

void tst_node_catalogue::UsesOfAProvince_data() {
  QTest::addColumn<bool>("velumar");
  QTest::addColumn<QString>("uses");
  QTest::newRow("dioceses keep it") << false << u"1 sucursal y 1 diócesis"_s;
  QTest::newRow("the other kind of installation") << true << u"1 sucursal"_s;
}

void tst_node_catalogue::UsesOfAProvince() {
  QFETCH(bool, velumar);
  const support::TestDatabase database;
  database.Execute(u"INSERT INTO Provincias(IDProvincia,Nombre,CodPais) VALUES(900,'Nueva',35)");
  database.Execute(u"INSERT INTO Diocesis(Nombre,CodProvincia) VALUES('x',900)");
  database.Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,codProvincia) VALUES(1,'1','x',900)");
  QTEST(host::JoinCounts(host::CountUses(database.Connection(), cConstNodo().Provincias(), 900, velumar)), "uses");
}

void tst_node_catalogue::CountsAreJoined() {
  const host::RowCount one{u"disco"_s, u"discos"_s, 1};
  const host::RowCount two{u"emisor"_s, u"emisores"_s, 2};
  QCOMPARE(host::JoinCounts({}), QString());
  QCOMPARE(host::JoinCounts({one}), u"1 disco"_s);
  QCOMPARE(host::JoinCounts({two, one, two}), u"2 emisores, 1 disco y 2 emisores"_s);
}

KEL_TEST(tst_node_catalogue);
#include "tst_node_catalogue.moc"
