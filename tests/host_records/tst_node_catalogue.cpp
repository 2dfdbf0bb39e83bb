#include "host/records/Attention.h"
#include "host/records/NodeCatalog.h"
#include "host/records/NodeCounts.h"
#include "host/records/RecordReader.h"
#include "host/records/RecordReferences.h"
#include "host/records/Relations.h"
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
  void WhatBelongsToARecord_data();
  void WhatBelongsToARecord();
  void MuchThatBelongsIsCut();
  void WhatWantsMending_data();
  void WhatWantsMending();
  void ListsAreCounted();
  void WhatIsCountedAgain_data();
  void WhatIsCountedAgain();
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

void tst_node_catalogue::WhatBelongsToARecord_data() {
  QTest::addColumn<int>("node");
  QTest::addColumn<QString>("related");
  const cConstNodo node;
  QTest::newRow("bank") << node.Bancos() << u"Sucursales 1: 0001|Central|||Una provincia"_s;
  QTest::newRow("presenter") << node.Presentadores() << u"Emisores 1: Un emisor|||/Discos 1: 2026-01-31||2|12,50 €"_s;
  QTest::newRow("issuer") << node.Emisores() << u"Cuentas 1: ES01|Ana|Central"_s;
  QTest::newRow("country") << node.Paises() << u"Provincias 1: Una provincia|99"_s;
  QTest::newRow("province")
      << node.Provincias()
      << u"Diócesis 1: Una diócesis/Sucursales 1: Un banco|0001|Central|/Emisores 1: Un emisor||"_s;
  QTest::newRow("community") << node.ComunidadAutonoma() << u"Deducciones 1: 33 %"_s;
  QTest::newRow("deduction type") << node.TipoDeduccion() << u"Tipos de donativo 1: Un donativo|Sí"_s;
  QTest::newRow("donation type") << node.TipoDonativos()
                                 << u"Modelo 182 0: Se declara en el modelo 182|Sí, Tipo A|No, Genera recibo|No, Texto "
                                    "del recibo|Gracias"_s;
  QTest::newRow("publication") << node.Publicaciones()
                               << u"Precios 0: Precio nacional|3,00 €, Precio extranjero|4,00 €, Texto del recibo|"_s;
  QTest::newRow("sheet") << node.Etiquetas() << u"Campos 1: 2|1|Nombre"_s;
  QTest::newRow("deletion") << host::deletedRecordsNode << u"Contenido 2: Bancos|1, Sucursales|2"_s;
  QTest::newRow("collector") << node.Cobradores() << QString();
}

void tst_node_catalogue::WhatBelongsToARecord() {
  QFETCH(int, node);
  static const std::unique_ptr<support::TestDatabase> database = [] {
    auto made = std::make_unique<support::TestDatabase>();
    // One live record of each kind with the key 900, and a deleted one behind it.
    for (const QString& statement :
         {u"Paises(IDPais,Nombre,Eliminado) VALUES(%1,'Un país',%2)"_s,
          u"Provincias(IDProvincia,Nombre,CodPais,Prefijo,Eliminado) VALUES(%1,'Una provincia',900,'99',%2)"_s,
          u"Diocesis(IDDiocesis,Nombre,CodProvincia,Eliminado) VALUES(%1,'Una diócesis',900,%2)"_s,
          u"Bancos(IDBanco,Nombre,Eliminado) VALUES(%1,'Un banco',%2)"_s,
          u"Sucursales(IDSucursal,codBanco,Codigo,Nombre,codProvincia,Eliminado) "
          u"VALUES(%1,900,'0001','Central',900,%2)"_s,
          u"Emisores(IDEmisor,Nombre,CodPresentador,CodProvincia,Eliminado) VALUES(%1,'Un emisor',900,900,%2)"_s,
          u"Discos(IDDisco,CodPresentador,FechaCreacion,Recibos,Importe,Eliminado) "
          "VALUES(%1,900,'2026-01-31',2,12.5,%2)"_s,
          u"Cuentas(IDCuenta,NumeroCuenta,Titular,CodSucursal,Eliminado) VALUES(%1,'ES01','Ana',900,%2)"_s,
          u"Emisores_Cuentas(IDEmisor_Cuenta,CodEmisor,CodCuenta,Eliminado) VALUES(%1,900,900,%2)"_s,
          u"TipoDeducciones(IDTipoDeduccion,Porcentaje,Eliminado) VALUES(%1,33,%2)"_s,
          u"Deduccion_Comunidad(IDDeduccion_Comunidad,CodComunidad,CodDeduccion,Eliminado) VALUES(%1,900,900,%2)"_s,
          u"TipoDonativos(IDTipoDonativo,Nombre,Modelo182,TextoRecibo,CodTipoDeduccionJuridica,Eliminado) "
          "VALUES(%1,'Un donativo',-1,'Gracias',900,%2)"_s,
          u"TipoPublicaciones(IDTipoPublicacion,ImporteNacional,ImporteExtranjero,Eliminado) VALUES(%1,3,4,%2)"_s,
          u"EtiquetasCampos(IDEtiquetaCampo,codEtiqueta,Linea,Orden,NombreCampo,Eliminado) "
          "VALUES(%1,900,2,1,'Nombre',%2)"_s}) {
      for (const auto& [id, deleted] : {std::pair(900, 0), std::pair(901, -1)}) {
        adodb::Execute(made->Connection(), u"INSERT INTO {}", adodb::Verbatim{statement.arg(id).arg(deleted)});
      }
    }
    for (const QString& table : {u"Sucursales"_s, u"Bancos"_s, u"Sucursales"_s}) {
      made->Execute(u"INSERT INTO EliminacionesRegistros(codEliminacion,Tabla,ValorID) VALUES(900,'{}',1)", table);
    }
    return made;
  }();
  QStringList related;
  const host::RecordDetail detail = ReadDetail(database->Connection(), *host::FindNode(node), 900, false);
  for (const host::RelatedRecords& kind : detail.related) {
    QStringList rows;
    for (int row = 0; row < kind.records.Size(); ++row) {
      QStringList cells;
      for (int column = 0; column < kind.records.Columns().size(); ++column) {
        cells.append(kind.records.Display(row, column));
      }
      rows.append(cells.join(u'|'));
    }
    related.append(u"%1 %2: %3"_s.arg(kind.title, QString::number(kind.total), rows.join(u", "_s)));
  }
  QTEST(related.join(u'/'), "related");
}

void tst_node_catalogue::MuchThatBelongsIsCut() {
  const support::TestDatabase database;
  database.Execute(u"INSERT INTO Provincias(Nombre,CodPais) SELECT A.Nombre,36 FROM Provincias AS A, Encabezados AS B");
  const host::RecordDetail detail =
      ReadDetail(database.Connection(), *host::FindNode(cConstNodo().Paises()), 36, false);
  QCOMPARE(detail.related[0].records.Size(), 200);
  QVERIFY(detail.related[0].total > 500);
  QCOMPARE(host::JoinCounts(detail.uses), u"%1 provincias"_s.arg(detail.related[0].total));
  QCOMPARE(detail.uses[0].nodeId, cConstNodo().Provincias());
  QVERIFY(!detail.lastChange);
}

void tst_node_catalogue::WhatWantsMending_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("concerns");
  QTest::newRow("nothing") << u"UPDATE Provincias SET Prefijo='28' WHERE IDProvincia=1"_s << QString();
  QTest::newRow("no prefix") << u"UPDATE Provincias SET Prefijo='' WHERE IDProvincia IN (3,4)"_s
                             << u"2 provincias sin prefijo postal 3 4"_s;
  QTest::newRow("no prefix abroad") << u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Ática',36)"_s << QString();
  QTest::newRow("no prefix, deleted") << u"UPDATE Provincias SET Prefijo='', Eliminado=-1 WHERE IDProvincia=3"_s
                                      << u"1 registro que nombra otro ya eliminado («Diócesis») 38"_s;
  QTest::newRow("no account") << u"UPDATE Emisores_Cuentas SET Eliminado=-1 WHERE CodEmisor=2"_s
                              << u"1 emisor sin cuenta 2"_s;
  QTest::newRow("long text") << u"UPDATE Bancos SET Numero='12345' WHERE IDBanco=2"_s
                             << u"1 registro con un texto demasiado largo («Bancos») 2"_s;
}

void tst_node_catalogue::WhatWantsMending() {
  QFETCH(QString, statement);
  const support::TestDatabase database(database::Content::Demonstration);
  adodb::Execute(database.Connection(), u"{}", adodb::Verbatim{statement});
  QStringList concerns;
  for (const host::Concern& concern : host::FindConcerns(database.Connection(), host::NodeCatalog())) {
    QString text = concern.text;
    for (const int id : concern.ids) {
      text += u' ' + QString::number(id);
    }
    concerns.append(text);
  }
  QTEST(concerns.join(u'/'), "concerns");
}

void tst_node_catalogue::ListsAreCounted() {
  const support::TestDatabase database(database::Content::Demonstration);
  database.Execute(u"UPDATE Paises SET Eliminado=-1 WHERE IDPais<4");
  database.Execute(u"INSERT INTO Eliminaciones(Nodo,Nombre) VALUES({},'Uno')", cConstNodo().Paises());
  database.Execute(u"INSERT INTO EliminacionesRegistros(codEliminacion,Tabla,ValorID) VALUES(1,'Paises',1)");
  for (const bool isAdministrator : {false, true}) {
    const std::vector<host::Node> nodes = host::NodesFor(isAdministrator);
    const QHash<int, int> counts = host::CountRecords(database.Connection(), nodes);
    QCOMPARE(counts.size(), static_cast<qsizetype>(nodes.size()));
    for (const host::Node& node : nodes) {
      QCOMPARE(counts.value(node.id, -1), host::ReadRecords(database.Connection(), node).Size());
    }
    QCOMPARE(counts[host::deletedRecordsNode], 1);
  }
}

void tst_node_catalogue::WhatIsCountedAgain_data() {
  QTest::addColumn<host::ChangeKind>("kind");
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("counted");
  QTest::newRow("added") << host::ChangeKind::Added << u"PAISES"_s << u"Países Cambios"_s;
  QTest::newRow("reworded") << host::ChangeKind::Changed << u"Paises"_s << u"Cambios"_s;
  QTest::newRow("deleted") << host::ChangeKind::Deleted << u"Paises"_s << u"Países Cambios Registros eliminados"_s;
  QTest::newRow("recovered") << host::ChangeKind::Recovered << u"Paises"_s << u"Países Cambios Registros eliminados"_s;
  QTest::newRow("several") << host::ChangeKind::Several << u"Paises"_s << u"Países Cambios"_s;
  QTest::newRow("of no list") << host::ChangeKind::Added << u"Cuentas"_s << u"Cambios"_s;
}

void tst_node_catalogue::WhatIsCountedAgain() {
  QFETCH(host::ChangeKind, kind);
  QFETCH(QString, table);
  QStringList titles;
  host::Change change;
  change.table = table;
  change.kind = kind;
  for (const host::Node& node : host::NodesToCount(host::NodeCatalog(), {change})) {
    titles.append(node.title);
  }
  QTEST(titles.join(u' '), "counted");
}

KEL_TEST(tst_node_catalogue);
#include "tst_node_catalogue.moc"
