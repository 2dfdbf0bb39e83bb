#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/access/AccessDesk.h"
#include "host/access/OfficePolicy.h"
#include "host/look/Colours.h"
#include "host/look/Look.h"
#include "host/records/DailyCopies.h"
#include "host/records/OfficeSettings.h"

#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QStyleOption>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

void AddBank(const TestDesktop& desktop) {
  desktop.database.Execute(u"INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('0001','Banco Uno',0)");
}

}  // namespace

class tst_main_window : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void RequestsOfTheWindow();
  void ModifiedRecordIsShownAnew();
  void AddedRecordIsSelected();
  void TheFirstRecordShowsWhole();
  void CancelledAdditionKeepsTheSelection();
  void OnlyTheChangedRecordIsReadAgain();
  void TheLastChosenListIsShown();
  void AdditionWhileTheListIsRead();
  void SearchCountsHits();
  void FailedDialogLosesNothing();
  void LostDatabaseIsFoundAgain();
  void MissingComponentIsExplained_data();
  void MissingComponentIsExplained();
  void ASelectedIconIsAsClearAsItsText();
  void HistoryOfARecord();
  void DetailOfARecord();
  void Preferences();
  void PreferencesForAll();
  void WhatANodeAllows_data();
  void WhatANodeAllows();
  void KeysOfTheTree();
  void LookIsRemembered();
  void NonsenseInTheSettingsIsPassedOver();
  void NothingBeginsOnceTheProgramEnds();
  void UsersAreForAdministrators();
  void WhoWorksMayChange();
  void LocksAreShownAndReleased();
};

void tst_main_window::RequestsOfTheWindow() {
  TestDesktop desktop;
  AddBank(desktop);
  FakeComponent::Register({});
  desktop.ChooseNode(cConstNodo().Paises());
  QVERIFY(desktop.List().SelectRecord(35));
  QTest::keyClick(&desktop.List(), Qt::Key_Return);
  desktop.Action("actModify").trigger();
  desktop.Action("actAdd").trigger();
  desktop.ChooseNode(cConstNodo().Bancos());
  const int bank = desktop.List().SelectedIds().constFirst();
  desktop.Action("actNewBranch").trigger();
  const QStringList expected = {u"PasarDatos nodo=20 accion=2 id=35 aux=0 Tablas\\Países"_s,
                                u"PasarDatos nodo=20 accion=2 id=35 aux=0 Tablas\\Países"_s,
                                u"PasarDatos nodo=20 accion=1 id=0 aux=0 Tablas\\Países"_s,
                                u"PasarDatos nodo=0 accion=1 id=0 aux=%1 Entidades bancarias\\Bancos"_s.arg(bank)};
  QCOMPARE(FakeComponent::Requests(), expected);
  QCOMPARE(desktop.database.Connection().State(), static_cast<int>(adodb::StateOpen));
}

void tst_main_window::ModifiedRecordIsShownAnew() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Paises SET Nombre='Zzz' WHERE IDPais={}", id);
  });
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.List().SelectRecord(35);
  desktop.Action("actModify").trigger();
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({35}));
  QCOMPARE(desktop.List().Records().IdAt(desktop.List().Records().rowCount() - 1), 35);
}

void tst_main_window::AddedRecordIsSelected() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int) {
    adodb::Execute(connection, u"INSERT INTO Paises(Nombre,Eliminado) VALUES('Ítaca',0)");
  });
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.SearchBox().setFocus();
  desktop.SearchBox().setText(u"espa"_s);
  desktop.Action("actAdd").trigger();
  QCOMPARE(desktop.Window().focusWidget(), &desktop.List());
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({desktop.database.Id(u"SELECT MAX(IDPais) FROM Paises")}));
  QVERIFY(desktop.List().currentIndex().isValid());
  QCOMPARE(desktop.SearchBox().text(), QString());
}

void tst_main_window::TheFirstRecordShowsWhole() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int) {
    adodb::Execute(connection, u"INSERT INTO Presentadores(Nombre) VALUES('Hermandad de la Espiga y del Olivar')");
  });
  desktop.ChooseNode(cConstNodo().Presentadores());
  desktop.Action("actAdd").trigger();
  QCOMPARE(desktop.List().Records().rowCount(), 1);
  QVERIFY(desktop.List().columnWidth(0) >=
          desktop.List().fontMetrics().horizontalAdvance(u"Hermandad de la Espiga y del Olivar"_s));
}

void tst_main_window::CancelledAdditionKeepsTheSelection() {
  TestDesktop desktop;
  FakeComponent::Register({});
  desktop.ChooseNode(cConstNodo().Paises());
  // Added meanwhile by another user: the list does not know it, and it is not the one that was added here.
  desktop.database.Execute(u"INSERT INTO Paises(Nombre,Eliminado) VALUES('Ítaca',0)");
  desktop.List().SelectRecord(35);
  desktop.Action("actAdd").trigger();
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({35}));
}

void tst_main_window::OnlyTheChangedRecordIsReadAgain() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Paises SET Nombre='Zzz {}' WHERE IDPais={}",
                   adodb::Verbatim{QString::number(id)}, id);
    adodb::Execute(connection, u"UPDATE Paises SET Nombre='Zzz de otro' WHERE IDPais=36");
  });
  desktop.ChooseNode(cConstNodo().Paises());
  const auto last = [&desktop](int before) {
    const host::RecordModel& records = desktop.List().Records();
    return records.NameAt(records.rowCount() - 1 - before, 1);
  };
  desktop.List().SelectRecord(35);
  desktop.Action("actModify").trigger();
  desktop.WaitForTheList();
  QCOMPARE(last(0), u"Zzz 35"_s);
  QVERIFY(!last(1).contains(u"otro"_s));
  desktop.Refresh();
  QCOMPARE(last(0), u"Zzz de otro"_s);
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({35}));
}

void tst_main_window::TheLastChosenListIsShown() {
  TestDesktop desktop;
  desktop.Window().ChooseNode(cConstNodo().Paises());
  QCOMPARE(desktop.List().Records().rowCount(), 0);
  QVERIFY(desktop.List().accessibleDescription().contains(u"Leyendo"_s));
  desktop.Window().ChooseNode(cConstNodo().Provincias());
  desktop.WaitForTheList();
  QCOMPARE(desktop.List().Records().TotalCount(), 52);
  QCOMPARE(desktop.List().ShownColumns().size(), 3);
}

void tst_main_window::AdditionWhileTheListIsRead() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int) {
    adodb::Execute(connection, u"INSERT INTO Paises(Nombre,Eliminado) VALUES('Ítaca',0)");
  });
  desktop.Window().ChooseNode(cConstNodo().Paises());
  desktop.Action("actAdd").trigger();
  desktop.WaitForTheList();
  QCOMPARE(desktop.List().SelectedIds(), QList<int>({desktop.database.Id(u"SELECT MAX(IDPais) FROM Paises")}));
}

void tst_main_window::SearchCountsHits() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Provincias());
  const auto* hits = desktop.Window().findChild<QLabel*>(u"lblHits"_s);
  const int total = desktop.List().Records().TotalCount();
  QCOMPARE(hits->text(), u"%1 registros"_s.arg(total));
  QTest::keyClicks(&desktop.SearchBox(), u"avila"_s);
  QCOMPARE(hits->text(), u"1 de %1 registros"_s.arg(total));
  QTest::keyClick(&desktop.SearchBox(), Qt::Key_Escape);
  QCOMPARE(desktop.List().Records().rowCount(), total);
}

void tst_main_window::FailedDialogLosesNothing() {
  TestDesktop desktop;
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    connection.BeginTrans();
    adodb::Execute(connection, u"UPDATE Paises SET Nombre='a medias' WHERE IDPais={}", id);
    throw automation::Error(438, u"No cabe el 100%1 de «%2»"_s, u"frmPais"_s);
  });
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.List().SelectRecord(35);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actModify").trigger();
  QCOMPARE(desktop.TakeBoxes(),
           QStringList(u"Kel|critico|El cuadro de «Países» ha fallado.|Es un fallo del programa. "
                       "Vuelva a intentarlo y, si se repite, copie los detalles y envíelos a quien "
                       "mantiene el programa.|No cabe el 100%1 de «%2»\nError 438\nOrigen: frmPais"_s));
  QCOMPARE(support::Outcome(desktop.database.Connection(), u"SELECT Nombre FROM Paises WHERE IDPais=35"_s),
           u"España"_s);
  FakeComponent::Register({});
  desktop.Action("actModify").trigger();
  QCOMPARE(FakeComponent::Requests().size(), 1);
}

void tst_main_window::LostDatabaseIsFoundAgain() {
  TestDesktop desktop;
  if (desktop.database.Server() != nullptr) {
    QSKIP("a server's database is no file that goes");
  }
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.database.Connection().Close();
  const QString file = desktop.database.Path(u"kel.db"_s);
  QVERIFY(QFile::rename(file, file + u".x"_s));
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Refresh();
  QVERIFY(desktop.List().Records().TotalCount() > 0);
  desktop.ChooseNode(cConstNodo().Provincias());
  QCOMPARE(desktop.TakeBoxes().size(), 2);
  QVERIFY(desktop.List().accessibleDescription().contains(u"No se ha podido"_s));
  QVERIFY(QFile::rename(file + u".x"_s, file));
  desktop.Refresh();
  QCOMPARE(desktop.List().Records().TotalCount(), 52);
  QCOMPARE(desktop.TakeBoxes(), QStringList());
}

void tst_main_window::MissingComponentIsExplained_data() {
  QTest::addColumn<QString>("registry");
  QTest::addColumn<QString>("mentioned");
  QTest::newRow("not registered") << QString() << u"no está registrada"_s;
  QTest::newRow("library gone") << u"KelConfiguracion.CPrincipal=/no/hay/libKel.so"_s << u"/no/hay/libKel.so"_s;
  QTest::newRow("no library") << u"KelConfiguracion.CPrincipal=%1"_s << u"no se puede cargar"_s;
}

void tst_main_window::MissingComponentIsExplained() {
  QFETCH(QString, registry);
  QFETCH(QString, mentioned);
  TestDesktop desktop;
  FakeComponent::Unregister();
  QFile file(desktop.database.Path(u"clases.ini"_s));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write((registry.contains(u'%') ? registry.arg(file.fileName()) : registry).toUtf8());
  file.close();
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.driver.Answer(QMessageBox::Ok);
  desktop.Action("actAdd").trigger();
  const QString text = desktop.TakeBoxes().join(u'\n');
  QVERIFY2(text.contains(mentioned) && text.contains(u"kel-host registrar"_s), qPrintable(text));
  QVERIFY(desktop.List().Records().TotalCount() > 0);
}

void tst_main_window::ASelectedIconIsAsClearAsItsText() {
  host::UseLook({.colours = host::Look::Colours::Light});
  QStyleOptionViewItem item;
  item.rect = QRect(0, 0, 60, 24);
  item.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Selected;
  item.features = QStyleOptionViewItem::HasDecoration;
  item.decorationSize = QSize(16, 16);
  item.palette = QApplication::palette();
  const QColor text = item.palette.color(QPalette::HighlightedText);
  const auto isDrawnInIt = [&](const QIcon& icon) {
    QImage image(item.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    item.icon = icon;
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &item, &painter);
    for (int x = 0; x < image.width(); ++x) {
      for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(x, y) == text) {
          return true;
        }
      }
    }
    return false;
  };
  QPixmap swatch(item.decorationSize);
  swatch.fill(Qt::red);
  const QTemporaryDir folder;
  QVERIFY(QDir(folder.path()).mkpath(u"themed/16"_s) && swatch.save(folder.filePath(u"themed/16/go-home.png"_s)));
  QFile index(folder.filePath(u"themed/index.theme"_s));
  QVERIFY(index.open(QIODevice::WriteOnly));
  index.write("[Icon Theme]\nName=themed\nDirectories=16\n[16]\nSize=16\n");
  index.close();
  const QStringList places = QIcon::themeSearchPaths();
  const QString theme = QIcon::themeName();
  QIcon::setThemeSearchPaths({folder.path()});
  QIcon::setThemeName(u"themed"_s);
  QVERIFY(isDrawnInIt(QIcon::fromTheme(u"go-home"_s)));
  QIcon::setThemeSearchPaths(places);
  QIcon::setThemeName(theme);
  // What is of no theme keeps its colours.
  QVERIFY(!isDrawnInIt(QIcon(swatch)));
}

void tst_main_window::HistoryOfARecord() {
  TestDesktop desktop;
  adodb::Execute(desktop.Office(), u"UPDATE Paises SET Nombre='Hispania' WHERE IDPais=35");
  desktop.ChooseNode(cConstNodo().Paises());
  QStringList told;
  const auto look = [&](const support::DialogUser& dialog) {
    const auto* list = dialog.Dialog()->findChild<QTreeWidget*>();
    const QTreeWidgetItem* item = list != nullptr ? list->topLevelItem(0) : nullptr;
    told.append(item != nullptr ? item->text(1) + u'|' + item->text(2) + u'|' + item->child(0)->text(0) : u"-"_s);
    dialog.Close();
  };
  for (const int id : {35, 1}) {
    desktop.List().SelectRecord(id);
    desktop.driver.On("historyDialog", look);
    desktop.Action("actHistory").trigger();
  }
  QCOMPARE(told, QStringList({u"Cambiado|ana|Nombre: de «España» a «Hispania»"_s, u"-"_s}));
}

void tst_main_window::DetailOfARecord() {
  TestDesktop desktop;
  adodb::Execute(desktop.Office(), u"UPDATE Paises SET Nombre='Hispania' WHERE IDPais=35");
  desktop.Window().resize(1000, 900);
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.List().SelectRecord(35);
  const auto text = [&](const char* name) {
    return desktop.Window().findChild<QLabel*>(QLatin1StringView(name))->text();
  };
  const auto* list = desktop.Window().findChild<host::RecordList*>(u"detailList"_s);
  QTRY_COMPARE(list->Records().TotalCount(), 52);
  QCOMPARE(text("lblDetailTitle"), u"Hispania"_s);
  QVERIFY(text("lblDetailUses").contains(u">52 provincias<"_s));
  QVERIFY(text("lblDetailChange").startsWith(u"Cambiado hoy"_s) && text("lblDetailChange").endsWith(u"por «ana»"_s));
  // What another program writes shows, and the links lead to the records.
  desktop.database.Execute(u"UPDATE Provincias SET Eliminado=-1 WHERE IDProvincia=1");
  adodb::Execute(desktop.Office(), u"UPDATE Provincias SET Nombre='Zzz' WHERE IDProvincia=2");
  QTRY_COMPARE_WITH_TIMEOUT(list->Records().TotalCount(), 51, 5000);
  Q_EMIT desktop.Window()
      .findChild<QLabel*>(u"lblDetailUses"_s)
      ->linkActivated(QString::number(cConstNodo().Provincias()));
  desktop.WaitForTheList();
  QCOMPARE(desktop.List().SelectedCount(), 51);
  QTRY_COMPARE(text("lblDetailChange"), u"51 registros elegidos"_s);
  desktop.Action("actDetail").trigger();
  QVERIFY(!list->isVisible());
  desktop.Restart().resize(1000, 900);
  QVERIFY(!desktop.Action("actDetail").isChecked());
}

void tst_main_window::Preferences() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Bancos());
  const QFont font = QApplication::font();
  const auto choose = [&](int colours, int percent) {
    desktop.driver.On("preferences", [=](const support::DialogUser& dialog) {
      dialog.Find<QComboBox>("cboColours")->setCurrentIndex(colours);
      dialog.Find<QSpinBox>("spnText")->setValue(percent);
      dialog.Dialog()->accept();
    });
    desktop.Action("actPreferences").trigger();
    UseLook(host::StoredLook());
  };
  choose(2, 150);
  QVERIFY(host::IsDark(QApplication::palette()));
  QCOMPARE(QApplication::font().pointSizeF(), font.pointSizeF() * 1.5);
  const auto* title = desktop.Window().findChild<QLabel*>(u"lblDetailTitle"_s);
  QTRY_COMPARE(title->font().pointSizeF(), font.pointSizeF() * 1.5 * 1.2);
  choose(1, 100);
  QVERIFY(!host::IsDark(QApplication::palette()));
  QCOMPARE(QApplication::font().pointSizeF(), font.pointSizeF());
  QVERIFY(host::WantsDailyCopies());
  QSettings().setValue(u"Aspecto/Texto"_s, 4000);
  QSettings().setValue(u"Aspecto/Colores"_s, u"rosas"_s);
  QVERIFY(host::StoredLook() == host::Look());
}

// Settings for all: the second accept finds that somebody else was faster.
void tst_main_window::PreferencesForAll() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Bancos());
  const auto stored = [&] { return host::ReadOfficePolicy(desktop.Office()); };
  const auto type = [](const support::DialogUser& dialog, int months) {
    dialog.Find<QLineEdit>("txtOffice")->setText(u" Fundación d'Or "_s);
    dialog.Find<QSpinBox>("spnLog")->setValue(months);
    dialog.Dialog()->accept();
  };
  desktop.driver.On("preferences", [&](const support::DialogUser& dialog) {
    QVERIFY(dialog.Find<QSpinBox>("spnCopies")->isEnabled());
    QVERIFY(!dialog.Find<QSpinBox>("spnOfficeIdle")->isEnabled());
    type(dialog, 6);
  });
  desktop.Action("actPreferences").trigger();
  const host::OfficePolicy wanted{.name = u"Fundación d'Or"_s, .idleMinutes = 15, .monthsOfLog = 6, .daysOfCopies = 14};
  QVERIFY(stored() == wanted);
  desktop.driver.On("preferences", [&](const support::DialogUser& dialog) {
    host::SetOfficeSetting(desktop.Office(), u"CopiasDias"_s, u"30"_s);
    desktop.driver.Answer(QMessageBox::Ok);
    type(dialog, 7);
    QVERIFY(dialog.Dialog()->isVisible());
    dialog.Dialog()->reject();
  });
  desktop.Action("actPreferences").trigger();
  QCOMPARE(desktop.TakeBoxes().filter(u"Otra persona ha cambiado estos ajustes"_s).size(), 1);
  QCOMPARE(stored().monthsOfLog, 6);
  host::SetOfficeSetting(desktop.Office(), u"CopiasDias"_s, u"-4"_s);
  desktop.Session().userKind = 2;
  desktop.driver.On("preferences", [&](const support::DialogUser& dialog) {
    QVERIFY(!dialog.Find<QLineEdit>("txtOffice")->isEnabled() && !dialog.Find<QSpinBox>("spnLog")->isEnabled());
    QCOMPARE(dialog.Find<QSpinBox>("spnCopies")->value(), 14);
    QVERIFY(dialog.Find<QLabel>("lblReason")->text().contains(u"quien administra"_s));
    dialog.Dialog()->accept();
  });
  desktop.Action("actPreferences").trigger();
  QVERIFY(stored() == wanted);
}

void tst_main_window::WhatANodeAllows_data() {
  QTest::addColumn<int>("node");
  QTest::addColumn<QString>("allowed");
  QTest::newRow("Bancos") << cConstNodo().Bancos() << u"actAdd actModify actDelete actNewBranch"_s;
  QTest::newRow("Paises") << cConstNodo().Paises() << u"actAdd actModify actDelete"_s;
  QTest::newRow("Encabezados") << cConstNodo().Encabezados().toInt() << u"actModify"_s;
  QTest::newRow("Usuarios") << cConstNodo().Usuarios() << QString();
  QTest::newRow("Registros eliminados") << host::deletedRecordsNode << QString();
}

void tst_main_window::WhatANodeAllows() {
  QFETCH(int, node);
  TestDesktop desktop;
  AddBank(desktop);
  desktop.ChooseNode(node);
  QStringList allowed;
  for (const char* name : {"actAdd", "actModify", "actDelete", "actNewBranch"}) {
    if (desktop.Action(name).isEnabled()) {
      allowed.append(QLatin1StringView(name));
    }
  }
  QTEST(allowed.join(u' '), "allowed");
}

void tst_main_window::KeysOfTheTree() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Bancos());
  auto* tree = desktop.Window().findChild<QTreeWidget*>(u"nodeTree"_s);
  const auto press = [tree](Qt::Key key) {
    QTest::keyClick(tree, key);
    return tree->currentItem()->text(0);
  };
  tree->setFocus();
  QCOMPARE(press(Qt::Key_Up), u"Inicio"_s);
  QCOMPARE(press(Qt::Key_Up), u"Inicio"_s);
  QCOMPARE(press(Qt::Key_Down), u"Bancos"_s);
  press(Qt::Key_Down);
  QCOMPARE(press(Qt::Key_Left), u"Presentadores"_s);
  for (int i = 0; i < 2; ++i) {
    press(Qt::Key_Down);
  }
  QCOMPARE(press(Qt::Key_Down), u"Países"_s);
  QCOMPARE(press(Qt::Key_Up), u"Colectoras"_s);
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(tree->topLevelItem(2)).center());
  QCOMPARE(tree->currentItem()->text(0), u"Colectoras"_s);
  QVERIFY(!tree->topLevelItem(2)->isExpanded());
  QVERIFY(press(Qt::Key_Down) != u"Tablas"_s);
  QCOMPARE(press(Qt::Key_Home), u"Inicio"_s);
  press(Qt::Key_Down);
  desktop.WaitForTheList();
  press(Qt::Key_Return);
  QCOMPARE(QApplication::focusWidget(), &desktop.List());
}

void tst_main_window::LookIsRemembered() {
  TestDesktop desktop;
  desktop.ChooseNode(cConstNodo().Provincias());
  desktop.Window().resize(700, 500);
  desktop.List().setColumnWidth(0, 321);
  desktop.List().sortByColumn(1, Qt::DescendingOrder);
  // Another node in between has a look of its own.
  desktop.ChooseNode(cConstNodo().Paises());
  QVERIFY(desktop.List().columnWidth(0) != 321);
  desktop.Restart();
  desktop.ChooseNode(cConstNodo().Provincias());
  QCOMPARE(desktop.Window().size(), QSize(700, 500));
  QCOMPARE(desktop.List().columnWidth(0), 321);
  QCOMPARE(desktop.List().horizontalHeader()->sortIndicatorSection(), 1);
  QCOMPARE(desktop.List().Records().SortOrder(), Qt::DescendingOrder);
  // A heading that is clicked while the list is still read.
  QHeaderView& header = *desktop.List().horizontalHeader();
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.Window().ChooseNode(cConstNodo().Provincias());
  QCOMPARE(desktop.List().Records().TotalCount(), 0);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, {header.sectionViewportPosition(0) + 20, 8});
  desktop.WaitForTheList();
  QCOMPARE(header.sortIndicatorSection(), 0);
  QCOMPARE(desktop.List().Records().SortColumn(), 0);
  QVERIFY(desktop.List().Records().LineAt(0).startsWith(u"A Coruña"_s));
}

void tst_main_window::NonsenseInTheSettingsIsPassedOver() {
  TestDesktop desktop;
  {
    QSettings settings;
    settings.setValue(u"Listas/22/Anchos"_s, QVariantList({-5, 2000000000, u"x"_s}));
    settings.setValue(u"Listas/22/Orden"_s, 77);
    settings.setValue(u"Ventana/Geometria"_s, QByteArray("nada"));
    settings.setValue(u"Ventana/Division"_s, QByteArray(64, '\xff'));
  }
  desktop.ChooseNode(cConstNodo().Provincias());
  for (int column = 0; column < 3; ++column) {
    const int width = desktop.List().columnWidth(column);
    QVERIFY(width > 0 && width < desktop.Window().screen()->availableSize().width());
  }
  QCOMPARE(desktop.List().Records().SortColumn(), 0);
  // A screen that is gone.
  desktop.Window().move(30000, 20000);
  QSettings().setValue(u"Ventana/Geometria"_s, desktop.Window().saveGeometry());
  const QRect screen = desktop.Window().screen()->availableGeometry();
  QVERIFY(screen.contains(desktop.Restart().frameGeometry().center()));
}

void tst_main_window::NothingBeginsOnceTheProgramEnds() {
  TestDesktop desktop;
  FakeComponent::Register([&](adodb::Connection&, int) { desktop.Bridge().End(); });
  desktop.ChooseNode(cConstNodo().Paises());
  desktop.Action("actModify").trigger();
  desktop.Action("actModify").trigger();
  QCOMPARE(FakeComponent::Requests().size(), 1);
}

void tst_main_window::UsersAreForAdministrators() {
  TestDesktop desktop;
  desktop.Session().userKind = 2;
  desktop.ChooseNode(cConstNodo().Bancos());
  desktop.ChooseNode(cConstNodo().Usuarios());
  QVERIFY(desktop.Window().windowTitle().startsWith(u"Bancos"_s));
  QVERIFY(!desktop.Action("actLocks").isVisible());
}

// The user takes another name, and is no administrator any more then.
void tst_main_window::WhoWorksMayChange() {
  TestDesktop desktop;
  host::Door door;
  host::Rescue rescue(desktop.Services(), desktop.Bridge());
  const auto account = host::ReadAccount(desktop.Office(), desktop.Session().userId);
  QVERIFY(account && account->IsAdministrator());
  host::AccessDesk desk(desktop.Bridge(), door, rescue, account, u"kel.db"_s, true);
  desktop.Window().Offer(desk);
  desktop.driver.On("usersDialog", [&](const support::DialogUser& dialog) {
    desktop.driver.On("userDialog", [](const support::DialogUser& user) {
      user.Type("txtName", u"eva"_s);
      user.Key(Qt::Key_Return);
    });
    dialog.Press("modifyUser");
    dialog.Close();
  });
  desktop.Action("actUsers").trigger();
  QVERIFY(desktop.Window().findChild<QLabel*>(u"lblSession"_s)->text().startsWith(u"Usuario: eva "_s));
  QVERIFY(desktop.Window().findChild<QLabel*>(u"lblGreeting"_s)->text().contains(u"eva"_s));
  desktop.ChooseNode(cConstNodo().Usuarios());
  QVERIFY(desktop.Window().windowTitle().startsWith(u"Usuarios"_s));
  desktop.database.Execute(u"UPDATE Usuarios SET Administrador=0 WHERE IDUsuario=1");
  desktop.Session().lookAtRights(desktop.Office());
  QVERIFY(desktop.Window().windowTitle().startsWith(u"Inicio"_s));
  QCOMPARE(desktop.List().Records().TotalCount(), 0);
  desktop.ChooseNode(cConstNodo().Bancos());
  desktop.ChooseNode(cConstNodo().Usuarios());
  QVERIFY(desktop.Window().windowTitle().startsWith(u"Bancos"_s));
  for (const char* name : {"actLocks", "actImport", "actUsers"}) {
    QVERIFY2(!desktop.Action(name).isVisible(), name);
  }
  QCOMPARE(desktop.TakeBoxes(), QStringList());
}

void tst_main_window::LocksAreShownAndReleased() {
  TestDesktop desktop;
  AddBank(desktop);
  const int bank = desktop.database.Id(u"SELECT MAX(IDBanco) FROM Bancos");
  const auto lock = [&](const QString& column, int id, const QString& moment) {
    desktop.database.Execute(
        u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo, Desde) VALUES "
        u"(7, '{}', {}, 'blas', 'pc3', '{}')",
        column, id, moment);
  };
  lock(u"IDBanco"_s, bank, u"2020-01-02T03:04:05Z"_s);
  lock(u"IDPais"_s, 35, u"2020-01-03T03:04:05Z"_s);
  lock(u"IDRaro"_s, 9, QString());
  desktop.driver.On("locksDialog", [&](const support::DialogUser& dialog) {
    QVERIFY(!dialog.IsVisible("noLocks"));
    const auto* list = dialog.Find<QTreeWidget>("lockList");
    QStringList rows;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      const QTreeWidgetItem& item = *list->topLevelItem(row);
      rows.append(item.text(0) + u'|' + item.text(1) + u'|' + item.text(2) + u'|' + item.text(3));
    }
    QCOMPARE(rows,
             (QStringList{u"IDRaro|9|blas|pc3"_s, u"Bancos|0001 Banco Uno|blas|pc3"_s, u"Países|España|blas|pc3"_s}));
    dialog.Find<QTreeWidget>("lockList")->setCurrentItem(list->topLevelItem(1));
    desktop.driver.Answer(QMessageBox::No);
    dialog.Press("releaseLock");
    QCOMPARE(list->topLevelItemCount(), 3);
    dialog.Find<QTreeWidget>("lockList")->setCurrentItem(list->topLevelItem(1));
    desktop.driver.Answer(QMessageBox::Yes);
    dialog.Press("releaseLock");
    dialog.Key(Qt::Key_Escape);
  });
  desktop.Action("actLocks").trigger();
  QCOMPARE(desktop.TakeBoxes().size(), 2);
  QCOMPARE(desktop.database.Query(u"SELECT campoID FROM BloqueoRegistros ORDER BY campoID"),
           (QStringList{u"IDPais"_s, u"IDRaro"_s}));
  desktop.database.Execute(u"DELETE FROM BloqueoRegistros");
  desktop.driver.On("locksDialog", [&](const support::DialogUser& dialog) {
    QVERIFY(dialog.IsVisible("noLocks"));
    dialog.Key(Qt::Key_Escape);
  });
  desktop.Action("actLocks").trigger();
}

KEL_TEST(tst_main_window);
#include "tst_main_window.moc"
