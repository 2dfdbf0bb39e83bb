#include "Colleague.h"
#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/desktop/Strip.h"
#include "platform/contract/cConstNodo.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// What another program writes is seen within two seconds; a loaded machine gets some more.
constexpr int soon = 5000;

}  // namespace

/// The page that everything begins with.
class tst_start_page : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void FirstSteps();
  void ForgoneSteps();
  void LastWritten();
  void WhatWantsMending();
  void NothingOfANodeStays();
  void SettingsThatCannotBeWrittenAreTold();

 private:
  /// Chooses the page, and gives the lines of one of its sections, a button as "[text]".
  static QStringList Lines(TestDesktop& desktop, const char* section) {
    desktop.Window().ChooseNode(host::homeNode);
    QStringList lines;
    const auto* box = desktop.Window().findChild<QWidget*>(QLatin1StringView(section));
    for (const QObject* row : box->children()) {
      QString line;
      for (const QObject* part : row->children()) {
        if (const auto* label = qobject_cast<const QLabel*>(part)) {
          line += label->text();
        } else if (const auto* button = qobject_cast<const QPushButton*>(part)) {
          line += u" ["_s + button->text() + u']';
        }
      }
      if (!line.isEmpty() && box->isVisible()) {
        lines.append(line);
      }
    }
    return lines;
  }
  static QPushButton* Button(TestDesktop& desktop, const QString& name) {
    for (auto* button : desktop.Window().findChildren<QPushButton*>()) {
      if (button->isVisible() && button->accessibleName().contains(name)) {
        return button;
      }
    }
    return nullptr;
  }
};

void tst_start_page::FirstSteps() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register({});
  QTRY_COMPARE_WITH_TIMEOUT(Lines(desktop, "homeSteps").value(0), u"○ Un banco con sus sucursales [Agregar…]"_s, soon);
  QPushButton* add = Button(desktop, u"Un banco"_s);
  QVERIFY(add != nullptr);
  add->click();
  QCOMPARE(FakeComponent::Requests(),
           QStringList(u"PasarDatos nodo=19 accion=1 id=0 aux=0 Entidades bancarias\\Bancos"_s));
  lorenzo.Execute(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0001','Uno')");
  QTRY_COMPARE_WITH_TIMEOUT(Lines(desktop, "homeSteps").value(0), u"✓ Un banco con sus sucursales"_s, soon);
  lorenzo.Execute(u"INSERT INTO Presentadores(Nombre) VALUES('Uno')");
  lorenzo.Execute(u"INSERT INTO Emisores(Nombre) VALUES('Uno')");
  lorenzo.Execute(u"INSERT INTO TipoDonativos(Nombre) VALUES('Uno')");
  lorenzo.Execute(u"INSERT INTO CartasModelo(Nombre) VALUES('Uno')");
  // A server's copies are another's business.
  if (desktop.database.Server() == nullptr) {
    QTRY_VERIFY_WITH_TIMEOUT(Lines(desktop, "homeSteps").value(4).startsWith(u"✓ Una carta"_s), soon);
    QCOMPARE(Lines(desktop, "homeSteps").value(5), u"○ Una copia de seguridad [Hacer una copia…]"_s);
    desktop.driver.On("copiesDialog", [&desktop](const support::DialogUser& user) {
      desktop.driver.On("dlgCopia", [](const support::DialogUser& chooser) {
        chooser.Dialog()->findChild<QDialogButtonBox*>()->buttons().constFirst()->click();
      });
      user.Press("cmdCopiar");
      QTRY_VERIFY(user.Text("lblEstado").startsWith(u"Copia hecha"_s));
      user.Key(Qt::Key_Escape);
    });
    Button(desktop, u"Una copia"_s)->click();
    QCOMPARE(desktop.TakeBoxes(), QStringList());
  }
  QTRY_COMPARE_WITH_TIMEOUT(Lines(desktop, "homeSteps"), QStringList(), soon);
}

void tst_start_page::ForgoneSteps() {
  TestDesktop desktop;
  QTRY_VERIFY_WITH_TIMEOUT(!Lines(desktop, "homeSteps").isEmpty(), soon);
  Button(desktop, u"No mostrar más"_s)->click();
  QVERIFY(Lines(desktop, "homeSteps").isEmpty());
  desktop.Restart();
  QVERIFY(Lines(desktop, "homeSteps").isEmpty());
  QTRY_VERIFY_WITH_TIMEOUT(desktop.Window().findChild<QLabel*>(u"lblOffice"_s)->text().contains(u"kel.db"_s), soon);
  QTest::qWait(600);
  QVERIFY(Lines(desktop, "homeSteps").isEmpty());
}

void tst_start_page::LastWritten() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Paises SET Eliminado=-1 WHERE IDPais={}", id);
  });
  lorenzo.Execute(u"UPDATE Provincias SET Nombre='Aaa' WHERE IDProvincia=2");
  lorenzo.Execute(u"UPDATE Provincias SET Nombre='Bbb' WHERE IDProvincia=2");
  QCOMPARE(lorenzo.Delete(cConstNodo().Paises(), 40, u"Utopía"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(Lines(desktop, "homeWritten").size(), 2, soon);
  const QStringList lines = Lines(desktop, "homeWritten");
  QVERIFY(lines[0].contains(u"(Países): eliminado hoy"_s) && lines[0].endsWith(u"[Recuperar]"_s));
  // A record is named as its last note names it, as it was before.
  QVERIFY(lines[1].startsWith(u"Aaa (Provincias): cambiado hoy"_s) && lines[1].endsWith(u"por Lorenzo [Ver]"_s));
  Button(desktop, u"Aaa"_s)->click();
  desktop.WaitForTheList();
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({2}));
  Lines(desktop, "homeWritten");
  Button(desktop, u"Recuperar"_s)->click();
  desktop.WaitForTheList();
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({40}));
}

void tst_start_page::WhatWantsMending() {
  TestDesktop desktop;
  desktop.database.Execute(u"UPDATE Provincias SET Prefijo=NULL WHERE IDProvincia IN (5,6)");
  desktop.database.Execute(
      u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Desde) VALUES "
      u"(7,'IDPais',1,'2026-01-31T10:00:00Z')");
  QStringList expected{u"2 provincias sin prefijo postal [Ver]"_s, u"1 registro lleva más de un día en uso [Ver]"_s};
  if (desktop.database.Server() == nullptr) {
    const QFileInfo file(desktop.database.Path());
    QVERIFY(file.dir().mkpath(u"copias"_s));
    QFile copy(file.dir().filePath(u"copias/%1-vieja.db"_s.arg(file.completeBaseName())));
    QVERIFY(copy.open(QFile::WriteOnly) &&
            copy.setFileTime(QDateTime::currentDateTime().addDays(-9), QFile::FileModificationTime));
    expected.append(u"La última copia de seguridad tiene 9 días [Hacer una copia…]"_s);
  }
  QTRY_COMPARE_WITH_TIMEOUT(Lines(desktop, "homeConcerns"), expected, soon);
  Button(desktop, u"sin prefijo"_s)->click();
  desktop.WaitForTheList();
  QList<int> selected = desktop.List().SelectedIds();
  std::sort(selected.begin(), selected.end());
  QCOMPARE(selected, QList<int>({5, 6}));
}

void tst_start_page::NothingOfANodeStays() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.Window().ChooseNode(host::homeNode);
  for (const char* name : {"actAdd", "actModify", "actDelete", "actHistory", "actFind"}) {
    QVERIFY2(!desktop.Action(name).isEnabled(), name);
  }
  QVERIFY(desktop.Action("actRefresh").isEnabled());
  // Chosen while its list is being read.
  desktop.Window().ChooseNode(cConstNodo().Provincias());
  desktop.Window().ChooseNode(host::homeNode);
  QTest::qWait(300);
  QCOMPARE(desktop.List().Records().TotalCount(), 0);
  desktop.Refresh();
  desktop.ChooseNode(cConstNodo().Provincias());
  QCOMPARE(desktop.List().Records().TotalCount(), 52);
}

void tst_start_page::SettingsThatCannotBeWrittenAreTold() {
  TestDesktop desktop;
  QVERIFY(desktop.Window().findChild<host::Strip*>(u"stripSettings"_s) == nullptr);
  const QString file = QSettings().fileName();
  QFile::remove(file);
  QVERIFY(QDir().mkpath(file));
  const auto* strip = desktop.Restart().findChild<host::Strip*>(u"stripSettings"_s);
  QVERIFY(strip != nullptr && strip->findChild<QLabel*>()->text().contains(file));
}

KEL_TEST(tst_start_page);
#include "tst_start_page.moc"
