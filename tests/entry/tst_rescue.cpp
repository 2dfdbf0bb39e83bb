#include "framework/Termination.h"
#include "host/records/ComponentBridge.h"
#include "host/records/OfficeConnection.h"
#include "host/services/Rescue.h"
#include "platform/process/TerminationSignals.h"
#include "support/ErrorOf.h"
#include "support/Expect.h"

#include <QComboBox>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

using host::ComponentRequest;
using support::action;
using support::DialogUser;
using support::node;

namespace {

struct Office : support::TestHost {
  Office() {
    session.office = static_cast<host::OfficeConnection*>(&Recording().Beneath());
    Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre) VALUES(1,'0001','Uno')");
    Execute(u"INSERT INTO TipoDeducciones(Porcentaje) VALUES(33)");
  }

  int Show(const ComponentRequest& request) {
    return support::ErrorOf([&] { bridge.ShowDialog(request); });
  }

  host::ComponentBridge bridge{services(), session};
  host::Rescue rescue{services(), bridge};
};

void Fill(const DialogUser& dialog, const QByteArray& control, const QString& text) {
  if (dialog.Dialog()->findChild<QComboBox*>(QString::fromLatin1(control)) != nullptr) {
    dialog.Choose(control, text);
  } else {
    dialog.Type(control, text);
  }
}

void Cancel(const DialogUser& dialog) {
  const QList<QPushButton*> buttons = dialog.Dialog()->findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->property("SirveEnConsulta").toBool()) {
      button->click();
      return;
    }
  }
}

}  // namespace

/// What was typed into a dialog that closed without saving it.
class tst_rescue : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryDialog_data();
  void EveryDialog();
  void EveryRefusal_data();
  void EveryRefusal();
  void NestedDialogs();
  void MemoryOfADialogBelow();
  void TheLastTenAreKept();
  void WhatDoesNotFitAnyMore();
  void FieldsOfASheet_data();
  void FieldsOfASheet();
  void ToldToEnd_data();
  void ToldToEnd();
  void FilesThatMakeNoSense_data();
  void FilesThatMakeNoSense();
  void FilesInTheWay();
};

void tst_rescue::EveryDialog_data() {
  QTest::addColumn<int>("number");
  QTest::addColumn<QByteArray>("control");
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("failure");  // The statement that fails; empty where a mandatory field is missing.
  const auto row = [](const char* dialog, const QVariant& number, const char* control, const QString& text,
                      const QString& failure = {}) {
    QTest::newRow(dialog) << number.toInt() << QByteArray(control) << text << failure;
  };
  row("frmBanco", node.Bancos(), "txtBanco_1", u"Banco <b>Nuevo</b>"_s);
  row("frmSucursal", node.Sucursales(), "txtSucursales_1", u"Centro"_s);
  row("frmPresentador", node.Presentadores(), "txtNombre", u"L'Orde"_s);
  row("frmEmisor", node.Emisores(), "txtPoblacion", u"Olot"_s);
  row("frmCobrador", node.Cobradores(), "txtCobrador_0", u"Ana"_s);
  row("frmPais", node.Paises(), "txtPais", u"Utopía"_s, u"INSERT"_s);
  row("frmProvincia", node.Provincias(), "cboPais", u"Francia"_s);
  row("frmDiocesis", node.Diocesis(), "cboProvincia", u"Soria"_s);
  row("frmComunidadAutonoma", node.ComunidadAutonoma(), "txtCodigo", u"99"_s);
  row("frmDeduccionComunidad", node.DeduccionesComunidad(), "cboDeduccion", u"33"_s);
  row("frmTipoDeduccion", node.TipoDeduccion(), "txtDeduccion", u"77"_s, u"INSERT"_s);
  row("frmTipoDonativo", node.TipoDonativos(), "txtTipoDonativo_0", u"Becas"_s);
  row("frmPublicacion", node.Publicaciones(), "txtTextoRecibo", u"Boletín"_s);
  row("frmEtiquetas1", node.Etiquetas(), "txtReferencia", u"Hoja"_s);
  row("frmCabecera", node.Cabeceras(), "txtLinea_0", u"Plaza Mayor, 1"_s);
  row("frmEncabezado", node.Encabezados(), "txtEncabezado", u"Querida amiga"_s, u"UPDATE"_s);
}

void tst_rescue::EveryDialog() {
  QFETCH(int, number);
  QFETCH(QByteArray, control);
  QFETCH(QString, text);
  QFETCH(QString, failure);
  const char* name = QTest::currentDataTag();
  const bool isModified = number == node.Encabezados().toInt();
  const ComponentRequest request{.node = number,
                                 .action = isModified ? action.Modificar() : action.Agregar(),
                                 .selectedId = isModified ? 1 : 0,
                                 .aux = 1};
  const bool asks = number != node.Cobradores();
  Office office;
  host::Rescue& rescue = office.rescue;
  const auto typeAndClose = [&](const DialogUser& dialog) {
    Fill(dialog, control, text);
    office.Recording().FailAt(failure);
    dialog.Close();
    office.Recording().FailAt({});
  };

  // A wish is a wish.
  office.driver.On(name, [&](const DialogUser& dialog) {
    Fill(dialog, control, text);
    Cancel(dialog);
  });
  office.Show(request);
  if (asks) {
    office.driver.On(name, typeAndClose);
    office.driver.Answer(QMessageBox::No);
    office.Show(request);
  }
  office.driver.On(name, [](const DialogUser& dialog) { dialog.Close(); });
  office.Show(request);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(rescue.Inputs().size(), 0);

  office.driver.On(name, typeAndClose);
  if (asks) {
    office.driver.Answer(QMessageBox::Yes);
    office.driver.Answer(QMessageBox::Ok);
  }
  office.Show(request);
  office.driver.TakeProblems();
  QCOMPARE(rescue.Inputs().size(), 1);
  QVERIFY2(rescue.Inputs().first().Text().contains(text), qPrintable(rescue.Inputs().first().Text()));

  // Through the file of a next start, and into the dialog.
  const QString file = office.Path(u"a/b.json"_s);
  QVERIFY(host::WriteKeptInputs(file, rescue.Inputs()));
  QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
  const host::KeptInput kept = host::TakeKeptInputs(file).inputs.value(0);
  QVERIFY(!QFile::exists(file) && kept.request);
  QString seen;
  office.driver.On(name, [&](const DialogUser& dialog) {
    QVERIFY(QTest::qWaitFor([&] { return rescue.Inputs().isEmpty(); }));
    seen = dialog.Text(control);
    Cancel(dialog);
  });
  rescue.PutBackInto(kept);
  office.Show(*kept.request);
  QCOMPARE(seen, text);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(rescue.Inputs().size(), 0);
}

void tst_rescue::EveryRefusal_data() {
  QTest::addColumn<QByteArray>("dialog");
  QTest::addColumn<int>("number");
  QTest::addColumn<QStringList>("typed");
  // "box=text" and "list:item", each of which must be there, but for what begins with "+"; "text/other": the other is
  // refused.
  const auto rows = [](const QByteArray& dialog, const QVariant& number, const QStringList& fields) {
    const auto row = [&](const QString& name, const QStringList& typed) {
      QTest::newRow((dialog + ": " + name.toUtf8()).constData()) << dialog << number.toInt() << typed;
    };
    QStringList all;
    for (const QString& field : fields) {
      all.append(field.section(u'/', 0, 0).remove(u'+'));
    }
    for (qsizetype i = 0; i < fields.size(); ++i) {
      QStringList typed = all;
      typed.removeAt(i);
      if (!fields[i].startsWith(u'+')) {
        row(u"without "_s + all[i], typed);
      }
      if (fields[i].contains(u'/')) {
        const QString wrong = all[i].section(u'=', 0, 0) + u'=' + fields[i].section(u'/', 1);
        row(wrong, QStringList{wrong} + typed);
      }
    }
  };
  rows("frmBanco", node.Bancos(), {u"txtBanco_0=0049/0001"_s, u"txtBanco_1=Encinar"_s});
  rows("frmSucursal", node.Sucursales(), {u"txtSucursales_0=0007/0001"_s, u"txtSucursales_1=Centro"_s});
  rows("frmPresentador", node.Presentadores(),
       {u"txtNombre=Gestoría"_s, u"txtNIF=G99000010/G99000011"_s, u"txtSufijo=001"_s, u"cboBancos:Uno"_s,
        u"cboSucursales:Mercado"_s});
  rows("frmEmisor", node.Emisores(),
       {u"txtNombre=Parroquia"_s, u"txtNIF=R9900001J/R9900001A"_s, u"txtSufijo=007"_s, u"cboPresentadores:Orde - Uno"_s,
        u"+cboPaises:Francia"_s});
  rows("frmProvincia", node.Provincias(), {u"cboPais:Francia"_s, u"txtProvincia=Isère"_s});
  rows("frmDiocesis", node.Diocesis(), {u"txtDiocesis=Norte"_s, u"+cboProvincia:Soria"_s});
  rows("frmComunidadAutonoma", node.ComunidadAutonoma(), {u"txtComunidad=Enlloc"_s, u"txtCodigo=99"_s});
  rows("frmDeduccionComunidad", node.DeduccionesComunidad(), {u"cboComunidad:La Rioja"_s, u"cboDeduccion:33"_s});
  rows("frmTipoDeduccion", node.TipoDeduccion(), {u"+txtDeduccion=1/33"_s});
  rows("frmTipoDonativo", node.TipoDonativos(),
       {u"txtTipoDonativo_0=Becas"_s, u"cboTipoDonativo_0:33"_s, u"cboTipoDonativo_1:33"_s});
  rows("frmPublicacion", node.Publicaciones(),
       {u"txtPublicacion=Boletín"_s, u"txtPrecioNac=12,5"_s, u"txtPrecioExt=20"_s});
  rows("frmEtiquetas1", node.Etiquetas(),
       {u"txtReferencia=Hoja"_s, u"+txtEtiquetasTotales=40"_s, u"txtEtiquetasFila=4"_s, u"+txtMedidas_0=7,1"_s});
  rows("frmCabecera", node.Cabeceras(), {u"txtNombre=Carta"_s, u"+txtLinea_0=Plaza Mayor, 1"_s});
}

// A Yes that the dialog can't follow: all that was typed comes back, and the focus is where it was.
void tst_rescue::EveryRefusal() {
  QFETCH(QByteArray, dialog);
  QFETCH(int, number);
  QFETCH(QStringList, typed);
  Office office;
  office.Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES(1,'0001','Mercado')");
  office.Execute(
      u"INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES('Orde','A11111119','001',1,1)");
  const ComponentRequest request{.node = number, .action = action.Agregar(), .aux = 1};
  QStringList controls;
  office.driver.On(dialog, [&](const DialogUser& user) {
    for (const QString& field : typed) {
      const qsizetype sign = field.indexOf(QRegularExpression(u"[=:]"_s));
      const QByteArray control = field.left(sign).toUtf8();
      // Of a list that another one fills.
      if (field[sign] == u'=' || user.Items(control).contains(field.mid(sign + 1))) {
        Fill(user, control, field.mid(sign + 1));
        controls.append(field.left(sign));
      }
    }
    user.Close();
  });
  office.driver.Answer(QMessageBox::Yes);
  office.driver.Answer(QMessageBox::Ok);
  QCOMPARE(office.Show(request), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(office.rescue.Inputs().size(), 1);
  const host::KeptInput kept = office.rescue.Inputs().constFirst();
  for (const QString& control : std::as_const(controls)) {
    QVERIFY2(std::ranges::any_of(kept.values, [&](const auto& value) { return value.control == control; }),
             qPrintable(control));
  }
  QVERIFY(office.driver.TakeBoxes().constLast().contains(kept.reason) && !kept.reason.isEmpty());

  QStringList lost;
  connect(&office.rescue, &host::Rescue::NotPutBack, this, [&] { lost.append(u"something"_s); });
  office.driver.On(dialog, [&](const DialogUser& user) {
    QVERIFY(QTest::qWaitFor([&] { return office.rescue.Inputs().isEmpty(); }));
    for (const host::ControlValue& value : kept.values) {
      const QList<host::ControlValue> now = host::ValuesOf(*user.Dialog());
      if (std::ranges::none_of(
              now, [&](const auto& each) { return each.control == value.control && each.shown == value.shown; })) {
        lost.append(value.control);
      }
    }
    QCOMPARE(user.Focused(), kept.focus);
    Cancel(user);
  });
  office.rescue.PutBackInto(kept);
  office.Show(request);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(lost, QStringList());
}

// The inner one's typing is its own; what it writes does not count as the outer one's.
void tst_rescue::NestedDialogs() {
  Office office;
  office.driver.On("frmProvincia", [](const DialogUser& dialog) {
    dialog.Choose("cboPais", u"España"_s);
    dialog.Type("txtProvincia", u"Tierra Media"_s);
    dialog.Press("cmdProvincia_0");
  });
  office.driver.On("frmDiocesis", [&](const DialogUser& dialog) {
    dialog.Press("cmdNProvincia");
    QCOMPARE(office.Query(u"SELECT Nombre FROM Provincias WHERE Nombre='Tierra Media'").size(), 1);
    dialog.Close();
  });
  office.driver.Answer(QMessageBox::Yes);
  office.driver.Answer(QMessageBox::Ok);
  QCOMPARE(office.Show({.node = node.Diocesis(), .action = action.Agregar()}), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(office.rescue.Inputs().size(), 1);
  QVERIFY(office.rescue.Inputs().first().Text().contains(u"Provincia: Tierra Media"_s));
  QCOMPARE(office.rescue.Inputs().first().reason, u"Faltan datos por rellenar"_s);
}

// A branch that a bank's dialog took in is the bank's loss, and can only be shown.
void tst_rescue::MemoryOfADialogBelow() {
  Office office;
  office.driver.On("frmSucursal", [](const DialogUser& dialog) {
    dialog.Type("txtSucursales_0", u"0007"_s);
    dialog.Type("txtSucursales_1", u"Soria Centro"_s);
    dialog.Press("cmdSucursales_0");
  });
  office.driver.On("frmBanco", [&](const DialogUser& dialog) {
    dialog.Press("cmdBanco_0");
    QCOMPARE(office.rescue.Inputs().size(), 0);
    dialog.Close();
  });
  office.driver.Answer(QMessageBox::Yes);
  office.driver.Answer(QMessageBox::Ok);
  QCOMPARE(office.Show({.node = node.Bancos(), .action = action.Agregar()}), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(office.rescue.Inputs().size(), 1);
  QVERIFY(office.rescue.Inputs().first().rows.value(0).startsWith(u"0007\tSoria Centro"_s));
}

// One for a record, the newest first.
void tst_rescue::TheLastTenAreKept() {
  Office office;
  QList<host::KeptInput> inputs(12);
  for (int id = 0; id < inputs.size(); ++id) {
    inputs[id].dialog = u"frmPais"_s;
    inputs[id].request = host::ComponentRequest{.node = node.Paises(), .action = action.Modificar(), .selectedId = id};
  }
  office.rescue.Add(inputs);
  office.rescue.Add({inputs[5]});
  QCOMPARE(office.rescue.Inputs().size(), 10);
  QCOMPARE(office.rescue.Inputs().first().request->selectedId, 5);
  QCOMPARE(office.rescue.Inputs().last().request->selectedId, 9);
}

// A control that is gone, one that can't be changed, a value that the list has no longer: named, and the rest put back.
void tst_rescue::WhatDoesNotFitAnyMore() {
  Office office;
  QStringList named;
  connect(&office.rescue, &host::Rescue::NotPutBack, this, [&](const auto& /*input*/, const auto& values) {
    for (const host::ControlValue& value : values) {
      named.append(value.control);
    }
  });
  host::KeptInput input;
  input.dialog = u"frmEmisor"_s;
  input.focus = u"nada"_s;
  input.values = {{u"txtNombre"_s, u"Nombre"_s, u"Parroquia"_s, u"Parroquia"_s},
                  {u"txtOtro"_s, u"Otro"_s, u"x"_s, u"x"_s},
                  {u"cboPresentadores"_s, u"Presentador"_s, QStringList{u"99"_s, u"Nadie"_s}, u"Nadie"_s},
                  {u"cboPaises"_s, u"País"_s, 7, u"7"_s},
                  {u"txtPoblacion"_s, u"Población"_s, u"Olot"_s, u"Olot"_s}};
  QString seen;
  office.driver.On("frmEmisor", [&](const DialogUser& dialog) {
    QVERIFY(QTest::qWaitFor([&] { return !named.isEmpty(); }));
    seen = dialog.Text("txtNombre") + u'|' + dialog.Text("cboPresentadores") + u'|' + dialog.Text("txtPoblacion");
    Cancel(dialog);
  });
  office.rescue.PutBackInto(input);
  office.Show({.node = node.Emisores(), .action = action.Agregar()});
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(named, QStringList({u"txtOtro"_s, u"cboPresentadores"_s, u"cboPaises"_s}));
  QCOMPARE(seen, u"Parroquia||Olot"_s);
}

void tst_rescue::FieldsOfASheet_data() {
  QTest::addColumn<bool>("taken");
  QTest::newRow("taken in by the sheet") << true;
  QTest::newRow("not yet") << false;
}

// They are the sheet's loss once it took them in, before that their own dialog's; none of them can be put back.
void tst_rescue::FieldsOfASheet() {
  QFETCH(bool, taken);
  Office office;
  office.driver.On("frmEtiquetas2", [&](const DialogUser& dialog) {
    dialog.Press("cmdCampos_2");
    dialog.Press("optCampos_1");
    dialog.Type("txtCampos_2", u"Querida amiga"_s);
    dialog.Type("txtCampos_0", u"2"_s);
    dialog.Type("txtCampos_1", u"3"_s);
    dialog.Press("cmdCampos_5");
    if (taken) {
      dialog.Press("cmdCampos_0");
    } else {
      office.rescue.KeepEverything();
      dialog.Close();
    }
  });
  office.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
    dialog.Type("txtReferencia", u"Hoja"_s);
    dialog.Type("txtEtiquetasTotales", u"40"_s);
    dialog.Type("txtEtiquetasFila", u"4"_s);
    for (const char* measure :
         {"txtMedidas_0", "txtMedidas_1", "txtMedidas_2", "txtMedidas_3", "txtMedidas_4", "txtMedidas_5"}) {
      dialog.Type(measure, u"2"_s);
    }
    dialog.Press("cmdSeleccionar_1");
    dialog.Type("txtReferencia", QString());
    dialog.Close();
  });
  if (!taken) {
    office.driver.Answer(QMessageBox::No);
  }
  office.driver.Answer(QMessageBox::Yes);
  office.driver.Answer(QMessageBox::Ok);
  QCOMPARE(office.Show({.node = node.Etiquetas(), .action = action.Agregar()}), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  const QList<host::KeptInput> kept = office.rescue.Inputs();
  QCOMPARE(kept.size(), taken ? 1 : 2);
  QVERIFY(kept.constFirst().request && kept.constFirst().dialog == u"frmEtiquetas1"_s);
  const host::KeptInput& loss = kept.constLast();
  QCOMPARE(loss.request.has_value(), taken);
  QVERIFY2(loss.rows.join(u'|').contains(u"Querida amiga"_s), qPrintable(loss.Text()));
}

void tst_rescue::ToldToEnd_data() {
  QTest::addColumn<bool>("isSignal");
  QTest::newRow("by a signal") << true;
  QTest::newRow("with the session") << false;
}

// One dialog above another, and something missing in both: each is asked, and what each of them held is kept.
void tst_rescue::ToldToEnd() {
  QFETCH(bool, isSignal);
  process::TerminationSignals program;
  int heard = 0;
  connect(&program, &process::TerminationSignals::Received, this, [&] { ++heard; });
  Office office;
  const auto end = [&](const DialogUser& dialog) {
    QVERIFY(QTest::qWaitFor([&] { return !dialog.Dialog()->isVisible(); }));
  };
  office.driver.On("frmDiocesis", [&](const DialogUser& dialog) {
    dialog.Choose("cboProvincia", u"Soria"_s);
    dialog.Press("cmdNProvincia");
    end(dialog);
  });
  office.driver.On("frmProvincia", [&](const DialogUser& dialog) {
    dialog.Choose("cboPais", u"Francia"_s);
    if (isSignal) {
      raise(SIGTERM);
    } else {
      QVERIFY(!framework::Termination::CloseForms(framework::Form::AppWindows));
    }
    end(dialog);
  });
  for (int dialog = 0; dialog < 2; ++dialog) {
    office.driver.Answer(QMessageBox::Yes);
    office.driver.Answer(QMessageBox::Ok);
  }
  QCOMPARE(office.Show({.node = node.Diocesis(), .action = action.Agregar()}), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(office.rescue.Inputs().size(), 2);
  QVERIFY(office.rescue.Inputs()[0].Text().contains(u"Provincia: Soria"_s));
  QVERIFY(office.rescue.Inputs()[1].Text().contains(u"País: Francia"_s));
  QTRY_COMPARE(heard, isSignal ? 1 : 0);
}

void tst_rescue::FilesThatMakeNoSense_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<qint64>("length");
  QTest::addColumn<int>("understood");
  const auto row = [](const char* name, const QByteArray& content, int understood = 0, qint64 length = 0) {
    QTest::newRow(name) << content << std::max<qint64>(length, content.size()) << understood;
  };
  const QByteArray one = R"({"cuadro":"frmPais","momento":"2026-01-31T10:00:00Z","valores":[7]})";
  row("empty", {});
  row("cut", "{\"version\":1,\"cuadros\":[");
  row("newer", R"({"version":2,"cuadros":[)" + one + "]}");
  row("another's", R"({"version":1,"de":"otro","cuadros":[)" + one + "]}");
  row("entries", R"({"version":1,"cuadros":[1,{},)" + one + "]}", 1);
  row("deep", QByteArray(3'000'000, '['));
  row("huge", R"({"version":1,"cuadros":[)" + one + "]}", 0, 100'000'000);
}

// What is understood is taken, and what is not stays there under another name.
void tst_rescue::FilesThatMakeNoSense() {
  QFETCH(QByteArray, content);
  QFETCH(qint64, length);
  QFETCH(int, understood);
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"x.json"_s);
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.resize(length));
  file.close();
  const host::TakenInputs taken = host::TakeKeptInputs(path);
  QCOMPARE(taken.inputs.size(), understood);
  QVERIFY(!QFile::exists(path));
  QFile aside(taken.unread);
  QVERIFY2(aside.open(QIODevice::ReadOnly), qPrintable(taken.unread));
  QCOMPARE(aside.size(), length);
  QCOMPARE(aside.read(content.size()), content);
  QVERIFY(host::TakeKeptInputs(path).unread.isEmpty());
}

void tst_rescue::FilesInTheWay() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"x.json"_s);
  QFile other(folder.filePath(u"other"_s));
  QVERIFY(other.open(QIODevice::WriteOnly) && other.link(path));
  QCOMPARE(host::TakeKeptInputs(path).unread, path);
  QVERIFY(!host::WriteKeptInputs(path, {host::KeptInput()}) && other.size() == 0);
  QVERIFY(!host::WriteKeptInputs(other.fileName() + u"/b.json"_s, {host::KeptInput()}));
}

KEL_TEST(tst_rescue);
#include "tst_rescue.moc"
