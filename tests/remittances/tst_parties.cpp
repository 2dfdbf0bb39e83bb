#include "remittances/Office.h"

#include <QComboBox>
#include <QFile>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// A dialog with a tax identifier.
struct Party {
  int node;
  const char* dialog;
  const char* nif;
  const char* accept;
  const char* cancel;
};

const Party presenter{support::node.Presentadores(), "frmPresentador", "txtNIF", "cmdAceptar", "cmdCancelar"};
const Party issuer{support::node.Emisores(), "frmEmisor", "txtNIF", "cmdEmisor_0", "cmdEmisor_1"};
const Party collector{support::node.Cobradores(), "frmCobrador", "txtCobrador_3", "cmdCobrador_0", "cmdCobrador_1"};

const automation::Error lostConnection(-2147467259, u"sin conexión"_s);

// Two banks; a presenter and an issuer with the suffix 001, another one each with 002.
void Prepare(const TestHost& host) {
  const Office office(host);
  const int north = office.Bank(u"0049"_s, u"Banco del Norte"_s);
  const int branch = office.Branch(north, u"0002"_s, u"Puerto"_s);
  office.Bank(u"0100"_s, u"Banco del Sur"_s);
  for (const QString& suffix : {u"001"_s, u"002"_s}) {
    const int id = office.Presenter(u"Uno"_s, suffix, north, branch);
    host.Query(u"INSERT INTO Emisores(Nombre,Cif,Sufijo,CodPresentador) VALUES('Uno','A11111119','{}',{})", suffix, id);
  }
}

void Fill(const DialogUser& dialog, const Party& party, const QString& suffix) {
  if (&party == &collector) {
    dialog.Type("txtCobrador_0", u"Uno"_s);
    return;
  }
  dialog.Type("txtNombre", u"L'Orde"_s);
  dialog.Type("txtNIF", u"A11111119"_s);
  dialog.Type("txtSufijo", suffix);
  if (&party == &presenter) {
    dialog.Choose("cboBancos", u"Banco del Sur"_s);
    dialog.Type("txtNEntidad", u"49"_s);
    dialog.Type("txtNSucursal", u"2"_s);
  } else {
    dialog.Choose("cboPaises", u"Francia"_s);
    dialog.Choose("cboPaises", u"España"_s);
    dialog.Type("txtCP", u"08001"_s);
    dialog.Find<QComboBox>("cboPresentadores")->setCurrentIndex(0);
  }
}

QStringList Stored(const TestHost& host, const Party& party) {
  return &party == &presenter
             ? host.Query(u"SELECT Nombre,Nif,Sufijo FROM Presentadores WHERE CodBanco=1 ORDER BY IDPresentador")
             : host.Query(u"SELECT Nombre,Cif,Sufijo FROM Emisores WHERE CodPresentador=1 ORDER BY IDEmisor");
}

// What a box says of the identifier; an identifier that passed is followed by the question about the suffix, or by the
// write, which fails.
QString Verdict(const QString& box) {
  const std::pair<QString, QString> beginnings[] = {
      {u"pregunta|No se reconoce el formato"_s, u"unknown"_s},
      {u"informacion|La primera letra"_s, u"unknown"_s},
      {u"informacion|El código de control del"_s, u"wrong letter"_s},
      {u"informacion|Ya existe en la base de datos un"_s, u"valid"_s},
      {u"aviso|El NIF introducido es incorrecto"_s, u"refused"_s},
      {u"critico|No se ha podido terminar lo que había pedido.|sin conexión"_s, u"valid"_s},
  };
  for (const auto& [beginning, verdict] : beginnings) {
    if (box.startsWith(u"Prueba|"_s + beginning)) {
      return verdict;
    }
  }
  return box;
}

QList<QStringList> ReadVectors() {
  QFile file(qEnvironmentVariable("KEL_DATOS") + u"/nif_vectors.tsv"_s);
  QList<QStringList> rows;
  if (file.open(QIODevice::ReadOnly)) {
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines.sliced(1)) {
      rows.append(line.split(u'\t'));
    }
  }
  return rows;
}

}  // namespace

class tst_parties : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TaxIdentifiersAskedOrTold_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("box");
    QTest::newRow("no NIF") << u"1234"_s
                            << u"pregunta|No se reconoce el formato del NIF. Puede que no sea un NIF español. ¿Desea "
                               "continuar?\n*Formato NIF español: 8 números-dígito control (siempre una letra)"_s;
    QTest::newRow("no CIF") << u"B1234"_s
                            << u"pregunta|No se reconoce el formato del CIF. Puede que no sea un CIF español. ¿Desea "
                               "continuar?\n*Formato CIF español: Letra-8 números-dígito control (puede ser letra o "
                               "número)"_s;
    QTest::newRow("person") << u"54362315Z"_s
                            << u"informacion|El código de control del NIF introducido es incorrecto.\nEl código de "
                               "control correcto sería K"_s;
    QTest::newRow("foreigner") << u"X-1234567-A"_s
                               << u"informacion|El código de control del NIE introducido es incorrecto.\nEl código de "
                                  "control correcto sería L"_s;
    QTest::newRow("organisation") << u" a1111111-0 "_s
                                  << u"informacion|El código de control del CIF introducido es incorrecto.\nEl código "
                                     "de control correcto sería 9"_s;
    QTest::newRow("first letter") << u"I38790911"_s << u"informacion|La primera letra del CIF no es válida"_s;
  }
  void TaxIdentifiersAskedOrTold() {
    QFETCH(QString, typed);
    QFETCH(QString, box);
    const bool question = box.startsWith(u"pregunta"_s);
    for (const Party* party : {&presenter, &issuer}) {
      TestHost host;
      Prepare(host);
      host.driver.On(party->dialog, [&](const DialogUser& dialog) {
        Fill(dialog, *party, u"9"_s);
        dialog.Type(party->nif, typed);
        host.driver.Answer(question ? QMessageBox::No : QMessageBox::Ok);
        dialog.Press(party->accept);
        QCOMPARE(dialog.Focused(), QString::fromLatin1(party->nif));
        QCOMPARE(host.driver.TakeBoxes(), QStringList(u"Prueba|"_s + box));
        if (question) {
          host.driver.Answer(QMessageBox::Yes);
        }
        dialog.Press(question ? party->accept : party->cancel);
      });
      EXPECT_CLEAN(host, host.PasarDatos(party->node, action.Agregar()));
      QCOMPARE(Stored(host, *party).contains(u"L'Orde|%1|009"_s.arg(typed)), question);
    }
  }

  // One open dialog takes every published identifier in turn. Every box is closed, which answers No to a question, and
  // nothing is stored.
  void PublishedVectors_data() {
    QTest::addColumn<const Party*>("party");
    QTest::newRow("presenter") << &presenter;
    QTest::newRow("issuer") << &issuer;
    QTest::newRow("collector") << &collector;
  }
  void PublishedVectors() {
    QFETCH(const Party*, party);
    const QList<QStringList> rows = ReadVectors();
    QVERIFY(rows.size() > 100);
    TestHost host;
    Prepare(host);
    host.driver.On(party->dialog, [&](const DialogUser& dialog) {
      const bool collects = party == &collector;
      Fill(dialog, *party, u"1"_s);
      host.Recording().SetHook([](const QString& text) {
        if (text.startsWith(u"INSERT"_s)) {
          throw lostConnection;
        }
      });
      for (const QStringList& row : rows) {
        const bool valid = row[5] == u"valid"_s;
        const bool known = row[2] != u"-"_s;
        dialog.Paste(party->nif, row[0]);
        host.driver.AnswerByClosing();
        dialog.Press(party->accept);
        const QString box = host.driver.TakeBoxes().join(u';');
        const QString expected = valid      ? u"valid"_s
                                 : collects ? u"refused"_s
                                 : known    ? u"wrong letter"_s
                                            : u"unknown"_s;
        QCOMPARE(row[0] + u": "_s + Verdict(box), row[0] + u": "_s + expected);
        if (known && !valid && !collects) {
          QVERIFY2(row[3].split(u'/').contains(box.last(1)), qPrintable(row[0] + u": "_s + box));
        }
      }
      dialog.Press(party->cancel);
    });
    EXPECT_CLEAN(host, host.PasarDatos(party->node, action.Agregar()));
  }

  void ATakenSuffixIsAWarning_data() {
    QTest::addColumn<const Party*>("party");
    QTest::addColumn<QString>("asked");
    QTest::newRow("presenter") << &presenter << u"un presentador con ese sufijo. ¿Desea introducir el presentador"_s;
    QTest::newRow("issuer") << &issuer << u"un emisor con ese sufijo. ¿Desea introducir el emisor"_s;
  }
  void ATakenSuffixIsAWarning() {
    QFETCH(const Party*, party);
    QFETCH(QString, asked);
    for (const int act : {int(action.Agregar()), int(action.Nuevo()), int(action.Modificar())}) {
      const bool modify = act == action.Modificar();
      TestHost host;
      Prepare(host);
      host.driver.On(party->dialog, [&](const DialogUser& dialog) {
        const QStringList before = Stored(host, *party);
        Fill(dialog, *party, u"2"_s);
        host.driver.Answer(QMessageBox::No);
        dialog.Press(party->accept);
        QCOMPARE(dialog.Focused(), u"txtSufijo"_s);
        QCOMPARE(Stored(host, *party), before);
        host.driver.Answer(QMessageBox::Yes);
        dialog.Press(party->accept);
      });
      EXPECT_CLEAN(host, host.PasarDatos(party->node, act, modify ? 1 : 0));
      QCOMPARE(host.driver.Boxes(),
               QStringList(2, u"Prueba|informacion|Ya existe en la base de datos %1 de todos modos?"_s.arg(asked)));
      QVERIFY(Stored(host, *party).contains(u"L'Orde|A11111119|002"_s));
      QCOMPARE(Requested(host, "IDAux"), act == action.Nuevo() ? 3 : 0);
    }
  }

  // What fails is told under the procedure's name; the dialog stays with what was typed, and the next try works.
  void FailuresLoseNothing_data() {
    QTest::addColumn<const Party*>("party");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("origin");
    const auto row = [](const char* name, const Party& party, const QString& failing, const QString& origin) {
      QTest::newRow(name) << &party << failing << origin;
    };
    row("branches", presenter, u"codBanco="_s, u"frmPresentador / cboBancos_Click"_s);
    row("bank by number", presenter, u"SELECT IDBanco FROM"_s, u"frmPresentador / txtNEntidad_LostFocus"_s);
    row("presenter's suffix", presenter, u"SELECT idpresentador"_s, u"frmPresentador / cmdAceptar_Click"_s);
    row("presenter", presenter, u"INSERT"_s, u"frmPresentador / cmdAceptar_Click"_s);
    row("provinces", issuer, u"AND CodPais="_s, u"Emisores / cboPaises_Click"_s);
    row("postcode", issuer, u"Prefijo"_s, u"Emisores / SeleccionarProvinciaCP"_s);
    row("issuer's suffix", issuer, u"SELECT idemisor"_s, u"Emisores / cmdEmisor_Click"_s);
    row("issuer", issuer, u"INSERT"_s, u"Emisores / cmdEmisor_Click"_s);
  }
  void FailuresLoseNothing() {
    QFETCH(const Party*, party);
    QFETCH(QString, failing);
    QFETCH(QString, origin);
    TestHost host;
    Prepare(host);
    bool failed = false;
    host.Recording().SetHook([&](const QString& text) {
      if (!failed && text.contains(failing)) {
        failed = true;
        throw lostConnection;
      }
    });
    host.driver.On(party->dialog, [&](const DialogUser& dialog) {
      Fill(dialog, *party, u"9"_s);
      if (party == &presenter) {
        dialog.Type("txtNEntidad", u"49"_s);
        dialog.Type("txtNSucursal", u"2"_s);
      }
      dialog.Press(party->accept);
      if (dialog.Dialog()->isVisible()) {
        dialog.Press(party->accept);
      }
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(party->node, action.Agregar()));
    QCOMPARE(host.driver.Boxes(),
             QStringList(u"Prueba|critico|No se ha podido terminar lo que había pedido.|sin conexión|"
                         "Error -2147467259\nOrigen: KelConfiguracion / "_s +
                         origin));
    QCOMPARE(Stored(host, *party).last(), u"L'Orde|A11111119|009"_s);
  }

  // The choice of a list is a change, too; nobody who wrote nothing hands anything back.
  void UnsavedChangesAreAskedAbout() {
    for (const Party* party : {&presenter, &issuer}) {
      TestHost host;
      Prepare(host);
      host.driver.On(party->dialog, [&](const DialogUser& dialog) {
        party == &presenter ? dialog.Choose("cboBancos", u"Banco del Sur"_s)
                            : dialog.Choose("cboProvincias", u"Soria"_s);
        dialog.Close();
      });
      host.driver.Answer(QMessageBox::No);
      EXPECT_CLEAN(host, host.PasarDatos(party->node, action.Nuevo(), 0, 77));
      QCOMPARE(host.driver.Boxes(),
               QStringList(u"Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"_s));
      QCOMPARE(Requested(host, "IDAux"), 0);
    }
  }

  void AnIssuerThatCannotBeLoadedIsNotShown() {
    TestHost host;
    host.Recording().SetHook([](const QString& text) {
      if (text.contains(u"INNER JOIN Bancos"_s)) {
        throw lostConnection;
      }
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Emisores(), action.Agregar()));
    QVERIFY(host.driver.Boxes().value(0).endsWith(u"KelConfiguracion / Emisores / Form Load"_s));
  }
};

KEL_TEST(tst_parties);
#include "tst_parties.moc"
