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

// A dialog with a tax identifier, and how it says that it would store one.
struct Party {
  int node;
  const char* dialog;
  const char* box;
  const char* accept;
  const char* cancel;
};

const Party presenter{support::node.Presentadores(), "frmPresentador", "txtNIF", "cmdAceptar", "cmdCancelar"};
const Party issuer{support::node.Emisores(), "frmEmisor", "txtNIF", "cmdEmisor_0", "cmdEmisor_1"};
const Party collector{support::node.Cobradores(), "frmCobrador", "txtCobrador_3", "cmdCobrador_0", "cmdCobrador_1"};

// The suffix is taken, so that an identifier that passed is followed by the question about it.
void Prepare(const TestHost& host) {
  const Office office(host);
  const int bank = office.Bank(u"0049"_s, u"Banco"_s);
  office.Presenter(u"Uno"_s, u"001"_s, bank, office.Branch(bank, u"0001"_s, u"Centro"_s));
  host.Query(u"INSERT INTO Emisores(Nombre,Sufijo) VALUES('Uno','001')");
}

void FillTheRest(const DialogUser& dialog, const Party& party) {
  if (&party == &collector) {
    dialog.Type("txtCobrador_0", u"Uno"_s);
    return;
  }
  dialog.Type("txtNombre", u"Uno"_s);
  dialog.Type("txtSufijo", u"1"_s);
  if (&party == &presenter) {
    dialog.Type("txtNEntidad", u"49"_s);
    dialog.Type("txtNSucursal", u"1"_s);
  } else {
    dialog.Find<QComboBox>("cboPresentadores")->setCurrentIndex(0);
  }
}

// What a box says of the identifier.
QString Verdict(const QString& box) {
  const std::pair<QString, QString> beginnings[] = {
      {u"pregunta|No se reconoce el formato"_s, u"unknown"_s},
      {u"informacion|La primera letra"_s, u"unknown"_s},
      {u"informacion|El código de control del"_s, u"wrong letter"_s},
      {u"informacion|Ya existe en la base de datos un"_s, u"valid"_s},
      {u"aviso|El NIF introducido es incorrecto"_s, u"refused"_s},
      {u"critico|Error 1: no se escribe"_s, u"valid"_s},
  };
  for (const auto& [beginning, verdict] : beginnings) {
    if (box.startsWith(u"Prueba|"_s + beginning)) {
      return verdict;
    }
  }
  return box;
}

QList<QStringList> PublishedVectors() {
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

class tst_tax_identifier_questions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AskedOrTold_data() {
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
  void AskedOrTold() {
    QFETCH(QString, typed);
    QFETCH(QString, box);
    for (const Party* party : {&presenter, &issuer}) {
      TestHost host;
      Prepare(host);
      const bool question = box.startsWith(u"pregunta"_s);
      host.driver.On(party->dialog, [&](const DialogUser& dialog) {
        FillTheRest(dialog, *party);
        dialog.Type(party->box, typed);
        host.driver.Answer(question ? QMessageBox::No : QMessageBox::Ok);
        dialog.Press(party->accept);
        QCOMPARE(dialog.Focused(), QString::fromLatin1(party->box));
        QCOMPARE(host.driver.TakeBoxes(), QStringList(u"Prueba|"_s + box));
        dialog.Type("txtSufijo", u"2"_s);
        if (question) {
          host.driver.Answer(QMessageBox::Yes);
          dialog.Press(party->accept);
        } else {
          dialog.Press(party->cancel);
        }
      });
      EXPECT_CLEAN(host, host.PasarDatos(party->node, action.Agregar()));
      const QStringList stored = party == &presenter ? host.Query(u"SELECT Nif FROM Presentadores WHERE Sufijo='002'")
                                                     : host.Query(u"SELECT Cif FROM Emisores WHERE Sufijo='002'");
      QCOMPARE(stored, question ? QStringList(typed) : QStringList());
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
    const QList<QStringList> rows = ::PublishedVectors();
    QVERIFY(rows.size() > 100);
    TestHost host;
    Prepare(host);
    host.driver.On(party->dialog, [&](const DialogUser& dialog) {
      const bool collects = party == &collector;
      FillTheRest(dialog, *party);
      host.connection().SetHook([](const QString& text) {
        if (text.startsWith(u"INSERT"_s)) {
          throw automation::Error(1, u"no se escribe"_s);
        }
      });
      for (const QStringList& row : rows) {
        const bool valid = row[5] == u"valid"_s;
        const bool known = row[2] != u"-"_s;
        dialog.Paste(party->box, row[0]);
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
};

KEL_TEST(tst_tax_identifier_questions);
#include "tst_tax_identifier_questions.moc"
