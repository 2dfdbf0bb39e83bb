#include "database/Maintenance.h"
#include "database/Place.h"
#include "host/cli/DatabaseChoice.h"
#include "host/cli/FirstWindow.h"
#include "host/cli/SettingsFile.h"
#include "host/cli/Startup.h"
#include "host/desktop/CopiesDialog.h"
#include "host/desktop/DatabaseDialog.h"
#include "host/desktop/RecentDatabases.h"
#include "host/desktop/WindowMemory.h"
#include "host_desktop/TestDesktop.h"
#include "platform/process/PrivateFiles.h"
#include "support/TestProgram.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <future>

using support::DialogUser;
using namespace Qt::StringLiterals;

namespace {

void ChooseFile(support::Driver& driver, const char* dialog, const QString& path) {
  driver.On(dialog, [path](const DialogUser& user) {
    user.Find<QLineEdit>("fileNameEdit")->setText(path);
    user.Dialog()->findChild<QDialogButtonBox*>()->buttons().constFirst()->click();
  });
}

QString TextFor(const QString& file) {
  return database::ConnectionStringForFile(file);
}

void Touch(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly)) {
    qFatal("cannot write a test file");
  }
}

}  // namespace

/// Which database the window opens, and what is copied and put back.
class tst_databases : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void RecentOnesThatAreGoneAreToldOnce();
  void RecentOnesAreInAMenu();
  void AStartWithoutADatabaseAsks();
  void ACopyIsMadeLookedIntoAndPutBack();
  void ADamagedFileIsReplacedByACopy();
  void ASecondStartShowsTheFirstWindow();
  void ListsBelongToADatabaseAndAUser();
  void SettingsThatMakeNoSenseAreSetAside_data();
  void SettingsThatMakeNoSenseAreSetAside();

 private:
  std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_databases::init() {
  m_folder = std::make_unique<QTemporaryDir>();
  QCoreApplication::setOrganizationName(u"Kel"_s);
  QCoreApplication::setApplicationName(u"kel-host"_s);
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder->path());
  qputenv("XDG_DATA_HOME", m_folder->filePath(u"datos"_s).toLocal8Bit());
}

void tst_databases::RecentOnesThatAreGoneAreToldOnce() {
  constexpr int noted = 44;
  for (int i = 0; i < noted; ++i) {
    const QString file = m_folder->filePath(u"%1.db"_s.arg(i));
    if (i % 2 == 0) {
      Touch(file);
    }
    host::NoteDatabase(TextFor(file));
  }
  host::NoteDatabase(u"postgresql://ana@servidor/kel"_s);
  host::NoteDatabase(u"Motor=nada"_s);
  // Forty are kept; what makes no sense is gone, too.
  const host::RecentDatabases recent = host::TakeRecentDatabases();
  QCOMPARE(recent.strings.size(), 20);
  QCOMPARE(recent.gone, 20);
  QCOMPARE(recent.strings.constFirst(), u"postgresql://ana@servidor/kel"_s);
  QCOMPARE(recent.strings[1], TextFor(m_folder->filePath(u"42.db"_s)));
  QCOMPARE(host::TakeRecentDatabases().gone, 0);
}

// Ten at most, without the window's own and those that are gone, by number, in the words of their places.
void tst_databases::RecentOnesAreInAMenu() {
  TestDesktop desktop;
  QSettings().remove(u"Bases"_s);
  QAction& own = *desktop.Window().findChild<QMenu*>(u"mnuRecent"_s)->menuAction();
  const auto lines = [&] {
    Q_EMIT own.menu()->aboutToShow();
    QStringList texts;
    for (const QAction* each : own.menu()->actions()) {
      texts.append(each->isEnabled() ? each->text() : u'(' + each->text() + u')');
    }
    return texts;
  };
  QCOMPARE(lines(), QStringList(u"(No hay otras)"_s));
  for (const char* name : {"z0", "z1", "z2", "z3", "z4", "z5", "z6", "z7", "z8", "a&b\tc.db", "último"}) {
    Touch(m_folder->filePath(QString::fromUtf8(name)));
    host::NoteDatabase(TextFor(m_folder->filePath(QString::fromUtf8(name))));
  }
  host::NoteDatabase(TextFor(m_folder->filePath(u"perdida.db"_s)));
  host::NoteDatabase(desktop.database.ConnectionString());
  const QStringList first = lines();
  QCOMPARE(first.size(), 12);
  QVERIFY2(first[0].startsWith(u"&1  "_s) && first[0].endsWith(u"/último"_s), qPrintable(first[0]));
  QVERIFY2(first[1].startsWith(u"&2  "_s) && first[1].endsWith(u"/a&&b c.db"_s), qPrintable(first[1]));
  QVERIFY2(first[9].startsWith(u"&0  "_s) && first[9].endsWith(u"/z1"_s), qPrintable(first[9]));
  QVERIFY2(first[11].contains(u"ya no está en su sitio"_s), qPrintable(first[11]));
  QCOMPARE(lines().size(), 10);
  QList<host::NextStart> wanted;
  connect(&desktop.Window(), &host::MainWindow::NextStartWanted, this,
          [&](const host::NextStart& next) { wanted.append(next); });
  own.menu()->actions()[1]->trigger();
  QCOMPARE(wanted.size(), 1);
  QCOMPARE(wanted.constFirst().connectionString, TextFor(m_folder->filePath(u"a&b\tc.db"_s)));
  QVERIFY(!desktop.Window().isVisible());
}

void tst_databases::AStartWithoutADatabaseAsks() {
  support::Driver driver;
  host::CommandLine line;
  QVERIFY(host::MayChooseDatabase(line));
  // Given up: no database, and none is made.
  driver.On("databaseDialog", [](const DialogUser& user) {
    QVERIFY(user.Find<QLabel>("lblMotivo")->text().contains(u"Todavía no hay"_s));
    QVERIFY(user.IsVisible("cmdRestaurar") && !user.IsVisible("lstRecientes"));
    user.Key(Qt::Key_Escape);
  });
  QVERIFY(!host::FirstDatabase(line));
  const QString usual = host::UsualDatabaseFile(false);
  QVERIFY(!QFile::exists(usual));
  // A new one takes no name that is taken.
  Touch(m_folder->filePath(u"hay.db"_s));
  driver.On("databaseDialog", [&](const DialogUser& user) {
    ChooseFile(driver, "dlgBase", m_folder->filePath(u"hay.db"_s));
    driver.Answer(QMessageBox::Ok);
    user.Press("cmdCrear");
    ChooseFile(driver, "dlgBase", m_folder->filePath(u"nueva.db"_s));
    user.Press("cmdCrear");
  });
  const auto created = host::FirstDatabase(line);
  QVERIFY(created && created->create);
  QCOMPARE(database::PlaceOf(created->connectionString).file, m_folder->filePath(u"nueva.db"_s));
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"Ya existe"_s));
  // It was chosen: asked for again only when it is gone.
  driver.On("databaseDialog", [&](const DialogUser& user) {
    QVERIFY(user.Find<QLabel>("lblMotivo")->text().contains(u"nueva.db» ya no está"_s));
    user.Press("cmdDemostracion");
  });
  QVERIFY(host::FirstDatabase(line)->demonstration);
  Touch(m_folder->filePath(u"nueva.db"_s));
  QCOMPARE(host::FirstDatabase(line)->connectionString, created->connectionString);
  line.demonstration = true;
  QVERIFY(!host::MayChooseDatabase(line));
  QCOMPARE(driver.TakeProblems(), QStringList());
}

void tst_databases::ACopyIsMadeLookedIntoAndPutBack() {
  const support::TestDatabase office;
  support::Driver driver;
  const QString text = office.ConnectionString();
  office.Execute(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0001','uno')");
  const QString copy = office.Path(u"memoria.db"_s);
  host::CopiesDialog dialog(text, u"Kel"_s, true);
  dialog.show();
  QVERIFY(!dialog.findChild<QPushButton*>(u"cmdRestaurar"_s)->isEnabled());
  ChooseFile(driver, "dlgCopia", copy);
  dialog.findChild<QPushButton*>(u"cmdCopiar"_s)->click();
  QTRY_VERIFY(!dialog.IsBusy());
  QTRY_VERIFY(dialog.findChild<QLabel*>(u"lblEstado"_s)->text().startsWith(u"Copia hecha"_s));
  QCOMPARE(database::LookIntoCopy(copy).rows.value(u"Bancos"_s), 1);
  // The same name again is refused, and the copy stays what it was.
  office.Execute(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0002','dos')");
  ChooseFile(driver, "dlgCopia", copy);
  driver.Answer(QMessageBox::Ok);
  dialog.findChild<QPushButton*>(u"cmdCopiar"_s)->click();
  QTRY_COMPARE(driver.Boxes().size(), 1);
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"Ya existe"_s));
  QTRY_VERIFY(!dialog.IsBusy());
  // What is no database says so; the question has what is in the copy.
  const QString other = office.Path(u"otra.db"_s);
  Touch(other);
  ChooseFile(driver, "dlgCopia", other);
  driver.Answer(QMessageBox::No);
  dialog.findChild<QPushButton*>(u"cmdRestaurarOtra"_s)->click();
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"No es una base de datos de este programa"_s));
  ChooseFile(driver, "dlgCopia", copy);
  driver.Answer(QMessageBox::Yes);
  dialog.findChild<QPushButton*>(u"cmdRestaurarOtra"_s)->click();
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"Bancos: 1 "_s));
  QCOMPARE(dialog.Wanted(), copy);
  driver.Answer(QMessageBox::Ok);
  host::PrepareNext({.connectionString = text, .copy = dialog.Wanted()}, {});
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"se conserva en"_s));
  QCOMPARE(database::LookIntoCopy(database::PlaceOf(text).file).rows.value(u"Bancos"_s), 1);
  QCOMPARE(host::CopiesOf(text).size(), 1);
  QCOMPARE(database::LookIntoCopy(host::CopiesOf(text).constFirst().path).rows.value(u"Bancos"_s), 2);
  // A damaged one leaves everything as it was.
  driver.Answer(QMessageBox::Ok);
  host::PrepareNext({.connectionString = text, .copy = other}, {});
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"no se ha restaurado"_s));
  QCOMPARE(driver.TakeProblems(), QStringList());
}

// Offered though the usual file is there.
void tst_databases::ADamagedFileIsReplacedByACopy() {
  const support::TestDatabase copied;
  copied.Execute(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0001','uno')");
  const QString copy = copied.Path(u"copia.db"_s);
  database::CopyDatabase(copied.ConnectionString(), copy);
  const QString usual = host::UsualDatabaseFile(false);
  process::CreatePrivateFolder(QFileInfo(usual).path());
  Touch(usual);
  host::CommandLine failed;
  failed.file = m_folder->filePath(u"dañada.db"_s);
  Touch(failed.file);
  support::Driver driver;
  driver.On("databaseDialog", [&](const DialogUser& user) {
    ChooseFile(driver, "dlgBase", copy);
    driver.Answer(QMessageBox::Ok);
    user.Press("cmdRestaurar");
  });
  const auto next = host::OtherDatabase({}, failed);
  QCOMPARE(driver.TakeProblems(), QStringList());
  QVERIFY(next && next->connectionString == TextFor(failed.file));
  QCOMPARE(database::LookIntoCopy(failed.file).rows.value(u"Bancos"_s), 1);
  QCOMPARE(QFileInfo(usual).size(), 0);
  // Nothing can take the place of what is no file.
  failed.file.clear();
  failed.connectionString = u"postgresql://ana@servidor/kel"_s;
  driver.On("databaseDialog", [](const DialogUser& user) {
    QVERIFY(!user.IsVisible("cmdRestaurar"));
    user.Key(Qt::Key_Escape);
  });
  QVERIFY(!host::OtherDatabase({}, failed));
  QCOMPARE(driver.TakeProblems(), QStringList());
}

void tst_databases::ASecondStartShowsTheFirstWindow() {
  const auto restore = qScopeGuard([before = qgetenv("XDG_RUNTIME_DIR")] { qputenv("XDG_RUNTIME_DIR", before); });
  qputenv("XDG_RUNTIME_DIR", m_folder->path().toLocal8Bit());
  QVERIFY(!host::FirstWindow::Show(u"una"_s));
  QWidget window;
  window.showMinimized();
  QString left;
  for (int start = 0; start < 2; ++start) {
    if (start > 0) {
      // As one that was killed leaves it.
      Touch(left);
    }
    const host::FirstWindow first(u"una"_s);
    int wanted = 0;
    connect(&first, &host::FirstWindow::Wanted, this, [&] { ++wanted; });
    connect(&first, &host::FirstWindow::Wanted, &window, host::ShowWindows);
    std::future<bool> other = std::async(std::launch::async, [] { return host::FirstWindow::Show(u"otra"_s); });
    std::future<bool> second = std::async(std::launch::async, [] { return host::FirstWindow::Show(u"una"_s); });
    QTRY_COMPARE(wanted, 1);
    QVERIFY(second.get() && !other.get());
    QVERIFY(!window.isMinimized());
    const QFileInfoList sockets = QDir(m_folder->path()).entryInfoList({u"kel-host-*"_s}, QDir::System);
    QCOMPARE(sockets.size(), 1);
    left = sockets.constFirst().filePath();
    QVERIFY(!process::IsOpenToOthers(left));
  }
  QVERIFY(!host::FirstWindow::Show(u"una"_s));
}

void tst_databases::ListsBelongToADatabaseAndAUser() {
  const host::Node& banks = *host::FindNodeByTable(u"Bancos"_s);
  const host::ListLayout layout{.shown = {1, 0}, .widths = {0, 77}, .sortColumn = 1, .order = Qt::DescendingOrder};
  host::SaveListLayout(u"oficina-1"_s, banks, layout);
  const host::ListLayout kept = host::LoadListLayout(u"oficina-1"_s, banks);
  QCOMPARE(kept.shown, layout.shown);
  QCOMPARE(kept.widths.first(2), QList<int>({0, 77}));
  QVERIFY(kept.sortColumn == 1 && kept.order == Qt::DescendingOrder);
  QVERIFY(host::LoadListLayout(u"oficina-2"_s, banks).shown.isEmpty());
  // By name: another order of the columns, and one that is gone.
  host::Node later = banks;
  later.columns = {{u"Nueva"_s}, banks.columns[1]};
  const host::ListLayout found = host::LoadListLayout(u"oficina-1"_s, later);
  QCOMPARE(found.shown, QList<int>({1}));
  QCOMPARE(found.widths, QList<int>({0, 77}));
  QCOMPARE(found.sortColumn, 1);
}

void tst_databases::SettingsThatMakeNoSenseAreSetAside_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<QString>("said");
  QTest::newRow("none") << QByteArray() << QString();
  QTest::newRow("of before") << QByteArray("[Aspecto]\nTexto=150\nOtro=1\n") << QString();
  QTest::newRow("of now") << QByteArray("[Aspecto]\nTexto=150\n[Programa]\nFormato=1\n") << QString();
  QTest::newRow("newer") << QByteArray("[Aspecto]\nTexto=150\n[Programa]\nFormato=2\n") << u"más nueva"_s;
  QTest::newRow("rubbish") << QByteArray("[Aspecto]\nTexto=150\n") + QByteArray(4096, '\x03') << u"dañado"_s;
  QTest::newRow("broken section") << QByteArray("[Aspecto]\nTexto=150\n[Vent") << u"dañado"_s;
}

void tst_databases::SettingsThatMakeNoSenseAreSetAside() {
  QFETCH(QByteArray, content);
  QFETCH(QString, said);
  QFile file(QSettings().fileName());
  QVERIFY(QDir().mkpath(QFileInfo(file).path()) && file.open(QFile::WriteOnly) && file.write(content) >= 0);
  file.close();
  const QString notice = host::PrepareSettings();
  QVERIFY2(said.isEmpty() ? notice.isEmpty() : notice.contains(said), qPrintable(notice));
  QCOMPARE(QSettings().value(u"Aspecto/Texto"_s, 0).toInt(), said.isEmpty() && !content.isEmpty() ? 150 : 0);
  const QFileInfoList kept = QFileInfo(file).dir().entryInfoList({u"*.antes-*"_s}, QDir::Files);
  QCOMPARE(kept.size(), said.isEmpty() ? 0 : 1);
  for (const QFileInfo& each : kept) {
    QFile aside(each.filePath());
    QVERIFY(aside.open(QFile::ReadOnly) && notice.contains(each.filePath()));
    QCOMPARE(aside.readAll(), content);
    QVERIFY(!process::IsOpenToOthers(file.fileName()));
  }
  // Told once.
  QCOMPARE(host::PrepareSettings(), QString());
}

KEL_TEST(tst_databases);
#include "tst_databases.moc"
