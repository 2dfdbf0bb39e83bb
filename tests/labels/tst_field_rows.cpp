#include "labels/FieldEntries.h"
#include "labels/FieldRows.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using namespace labels;

namespace {

constexpr SheetKind none{};
constexpr SheetKind disk{.disk = true};
constexpr SheetKind postal{.postal = true};
constexpr SheetKind both{.disk = true, .postal = true};

std::shared_ptr<cCampo> Stored(int id, int line, int position, int state = 0) {
  auto field = std::make_shared<cCampo>();
  field->codTabla = 1;
  field->IDElemento = id;
  field->IDCampo = 7;
  field->Campo = u"[COLABORADORES].[CP]"_s;
  field->Linea = quint8(line);
  field->Orden = quint8(position);
  field->UsarCampo = true;
  field->ExisteEnBD = true;
  field->Estado = quint8(state);
  return field;
}

FieldCollection Fields(std::initializer_list<std::shared_ptr<cCampo>> fields) {
  FieldCollection collection;
  for (const std::shared_ptr<cCampo>& field : fields) {
    collection.Add(field, QString::number(field->IDElemento));
  }
  return collection;
}

// The statements in short: how many rows of disks are inserted, what is deleted, whether the fields are written.
QString Short(const QStringList& statements) {
  QStringList parts;
  for (const QString& statement : statements) {
    const QString part = statement.contains(u"DISCO=-1"_s)  ? u"delete disk"_s
                         : statement.contains(u"DISCO=0"_s) ? u"delete postal"_s
                         : statement.contains(u"',-1,"_s)   ? u"insert disk"_s
                                                            : u"field"_s;
    if (!parts.contains(part)) {
      parts.append(part);
    }
  }
  return parts.join(u", "_s);
}

}  // namespace

class tst_field_rows : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void FixedRowsOfADisk() {
    const QString start =
        u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) VALUES (9"_s;
    QStringList expected;
    for (const char* tail :
         {",'[EMISORES].[CIF]',-1,1,1,0)", ",'[EMISORES].[SUFIJO]',-1,1,2,0)", ",'[EMISORES].[NOMBRE]',-1,1,3,0)",
          ",'[BANCOS].[NUMERO]',-1,2,1,0)", ",'[SUCURSALES].[CODIGO]',-1,2,2,0)",
          ",'[DISCOS].[FECHACREACION]',-1,3,1,0)", ",'[DISCOS].[FECHACARGO]',-1,3,2,0)",
          ",'[DISCOS].[RECIBOS]',-1,4,1,0)", ",'[DISCOS].[IMPORTE]',-1,5,1,0)"}) {
      expected.append(start + QLatin1String(tail));
    }
    QCOMPARE(WritingStatements(9, disk, Fields({Stored(1, 1, 1, 2)})), expected);
  }

  void FieldsOfAPostalSheet() {
    FieldCollection fields = Fields({Stored(31, 1, 2), Stored(32, 2, 1, 2), Stored(33, 3, 1, 3), Stored(34, 3, 2, 1)});
    // Modified before it was ever stored: it is an insert all the same.
    const auto added = AddEntry(fields, {.isField = false, .value = u"N'Ax"_s, .line = 4, .position = 5});
    ModifyEntry(*added, {.isField = false, .value = u"L'Ax"_s, .line = 5, .position = 5});
    QCOMPARE(WritingStatements(9, postal, fields),
             (QStringList{
                 u"UPDATE EtiquetasCampos SET NombreCampo='[COLABORADORES].[CP]',Linea=2,Orden=1,"
                 "codTipoCampoEtiqueta=7 WHERE IDEtiquetaCampo=32"_s,
                 u"DELETE FROM EtiquetasCampos WHERE IDEtiquetaCampo=33"_s,
                 u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, "
                 "codTipoCampoEtiqueta) VALUES (9,'*L''Ax',0,5,5,0)"_s,
             }));
  }

  void Reconciling_data() {
    QTest::addColumn<SheetKind>("loaded");
    QTest::addColumn<SheetKind>("now");
    QTest::addColumn<QString>("done");
    QTest::newRow("disk stays") << disk << disk << u""_s;
    QTest::newRow("postal stays") << postal << postal << u"field"_s;
    QTest::newRow("disk to postal") << disk << postal << u"delete disk, field"_s;
    QTest::newRow("postal to disk") << postal << disk << u"insert disk, delete postal"_s;
    QTest::newRow("none to disk") << none << disk << u"insert disk"_s;
    QTest::newRow("none to postal") << none << postal << u"field"_s;
    QTest::newRow("none stays") << none << none << u""_s;
    QTest::newRow("both to disk") << both << disk << u"delete postal"_s;
    QTest::newRow("both to postal") << both << postal << u"delete disk, field"_s;
  }
  void Reconciling() {
    QFETCH(SheetKind, loaded);
    QFETCH(SheetKind, now);
    QTEST(Short(ReconcilingStatements(9, loaded, now, Fields({Stored(31, 1, 2, 2)}))), "done");
  }

  void DeletionsByKind() {
    QCOMPARE(ReconcilingStatements(9, both, none, {}),
             (QStringList{u"DELETE FROM ETIQUETASCAMPOS WHERE CODETIQUETA=9 AND ETIQUETASCAMPOS.DISCO=-1"_s,
                          u"DELETE FROM ETIQUETASCAMPOS WHERE CODETIQUETA=9 AND ETIQUETASCAMPOS.DISCO=0"_s}));
  }

  void TemporaryIdentifiers() {
    FieldCollection list = Fields({Stored(31, 1, 1), Stored(32, 1, 2)});
    for (const int expected : {-1, -2, -3}) {
      QCOMPARE(AddEntry(list, {.line = 2, .position = 1})->IDElemento, expected);
    }
    DeleteEntry(list, (list.begin() + 3)->field);
    QCOMPARE(NextTemporaryId(list), -4);
    QCOMPARE(NextTemporaryId({}), -1);
    QCOMPARE(NextTemporaryId(Fields({Stored(-5, 1, 1)})), -6);
    QCOMPARE((list.end() - 1)->key, u"-3"_s);
  }

  void EveryPlaceOnce() {
    const FieldCollection list = Fields({Stored(31, 1, 2), Stored(32, 2, 1, 3), Stored(-1, 3, 3, 2)});
    QVERIFY(IsPlaceTaken(list, 1, 2, 0));
    QVERIFY(!IsPlaceTaken(list, 1, 2, 31));
    QVERIFY(!IsPlaceTaken(list, 2, 1, 0));
    QVERIFY(IsPlaceTaken(list, 3, 3, 31));
    QVERIFY(!IsPlaceTaken(list, 3, 2, 0));
  }

  void DeletedEntries() {
    FieldCollection list = Fields({Stored(31, 1, 2)});
    const auto added = AddEntry(list, {.line = 1, .position = 1});
    DeleteEntry(list, added);
    QCOMPARE(list.Count(), std::size_t(1));
    DeleteEntry(list, list.begin()->field);
    QCOMPARE(list.Count(), std::size_t(1));
    QVERIFY(IsDeleted(*list.begin()->field));
  }

  // All nine properties, under the identifier, deleted ones too; the copy is one's own.
  void Copies() {
    FieldCollection from;
    from.Add(Stored(31, 4, 5, 3), u"1"_s);
    FieldCollection to = Fields({Stored(99, 1, 1)});
    CopyFields(from, to);
    QCOMPARE(to.Count(), std::size_t(1));
    QCOMPARE(to.begin()->key, u"31"_s);
    const cCampo& copy = *to.begin()->field;
    const cCampo& original = *from.begin()->field;
    QVERIFY(&copy != &original);
    QCOMPARE(std::tie(copy.codTabla, copy.IDElemento, copy.IDCampo, copy.Campo, copy.Linea, copy.Orden, copy.UsarCampo,
                      copy.ExisteEnBD, copy.Estado),
             std::tie(original.codTabla, original.IDElemento, original.IDCampo, original.Campo, original.Linea,
                      original.Orden, original.UsarCampo, original.ExisteEnBD, original.Estado));
    from.Add(Stored(31, 1, 1), u"2"_s);
    QVERIFY_THROWS_EXCEPTION(automation::Error, CopyFields(from, to));
  }
};

KEL_TEST(tst_field_rows);
#include "tst_field_rows.moc"
