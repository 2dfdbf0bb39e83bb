#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/help/HelpBrowser.h"
#include "host/help/HelpDesk.h"
#include "host/help/HelpWindow.h"
#include "host/help/Pages.h"
#include "host/records/NodeCatalog.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/contract/cConstNodo.h"

#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolBar>
#include <QTreeWidget>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QString folder = u"" KEL_SOURCES "/docs/ayuda"_s;
const QString firstPage = folder + u"/contenido.html"_s;

QStringList PageNames() {
  QStringList names;
  for (const QString& file : QDir(folder).entryList({u"*.html"_s}, QDir::Files)) {
    names.append(file.chopped(5));
  }
  // With their endings they stand in another order.
  names.sort();
  return names;
}

QString TextOf(const QString& file) {
  QFile opened(file);
  return opened.open(QIODevice::ReadOnly) ? QString::fromUtf8(opened.readAll()) : QString();
}

// What the expression's first group catches, everywhere.
QStringList Caught(const QString& text, const QString& expression) {
  QStringList all;
  for (auto it = QRegularExpression(expression).globalMatch(text); it.hasNext();) {
    all.append(it.next().captured(1));
  }
  return all;
}

QStringList NamesOfControls(const QString& dialog) {
  QDirIterator files(u"" KEL_SOURCES "/src"_s, {dialog + u".ui"_s}, QDir::Files, QDirIterator::Subdirectories);
  if (!files.hasNext()) {
    // Made in code.
    return {u"txtMargenIzdo"_s, u"txtMargenDcho"_s, u"cboFuentes"_s, u"cboTamaño"_s, u"rtfCarta"_s};
  }
  return Caught(TextOf(files.next()),
                u"<widget class=\"(?!QLabel|QGroupBox|QDialog|QWidget|QFrame)[^\"]*\" name=\"([^\"]*)\""_s);
}

void PressF1() {
  QDesktopServices::openUrl(QUrl::fromLocalFile(firstPage));
}

}  // namespace

class tst_help : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void LinksPicturesAndContents();
  void EveryControlIsExplained_data();
  void EveryControlIsExplained();
  void EveryNodeIsExplained();
  void Search_data();
  void Search();
  void F1InADialog();
  void WhatIsInFront();
  void ClicksBesideAModalDialog();
  void WhatIsNotThere();
  void KeysOfTheMenus();

 private:
  const QTemporaryDir m_settings;
};

void tst_help::initTestCase() {
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
}

void tst_help::LinksPicturesAndContents() {
  host::Pages pages(folder);
  QStringList listed{host::Pages::first};
  for (const host::Pages::Entry& entry : pages.Contents()) {
    listed.append(entry.page);
  }
  listed.sort();
  QCOMPARE(listed, PageNames());
  for (const QString& page : listed) {
    const QString html = TextOf(folder + u'/' + page + u".html"_s);
    for (const QString& link : Caught(html, u"href=\"([^\"]*)\""_s)) {
      const QUrl target = pages.UrlOf(page).resolved(QUrl(link));
      const QString where = page + u" -> "_s + link;
      QVERIFY2(pages.Has(pages.PageOf(target)), qPrintable(where));
      QVERIFY2(!target.hasFragment() || pages.HasAnchor(pages.PageOf(target), target.fragment()), qPrintable(where));
    }
    for (const QString& picture : Caught(html, u"src=\"([^\"]*)\""_s)) {
      QVERIFY2(QFile::exists(folder + u'/' + picture), qPrintable(page + u" -> "_s + picture));
    }
    QVERIFY2(!html.contains(u"[["_s), qPrintable(page));
    // Colours of their own would not be seen in the dark.
    QVERIFY2(!html.contains(QRegularExpression(u"color *[=:]"_s)), qPrintable(page));
  }
}

void tst_help::EveryControlIsExplained_data() {
  QTest::addColumn<QString>("dialog");
  for (const char* dialog :
       {"frmBanco", "frmSucursal", "frmPresentador", "frmEmisor", "frmCobrador", "frmPais", "frmProvincia",
        "frmDiocesis", "frmComunidadAutonoma", "frmDeduccionComunidad", "frmTipoDeduccion", "frmTipoDonativo",
        "frmPublicacion", "frmCabecera", "frmEncabezado", "frmEtiquetas1", "frmEtiquetas2", "frmCartaModelo"}) {
    QTest::newRow(dialog) << QString::fromLatin1(dialog);
  }
}

void tst_help::EveryControlIsExplained() {
  QFETCH(const QString, dialog);
  host::Pages pages(folder);
  QVERIFY(pages.Has(dialog));
  const QStringList controls = NamesOfControls(dialog);
  QVERIFY(controls.size() >= 3);
  for (const QString& control : controls) {
    QVERIFY2(pages.HasAnchor(dialog, control), qPrintable(control));
  }
}

void tst_help::EveryNodeIsExplained() {
  TestDesktop desktop;
  host::Pages pages(folder);
  for (const host::Node& node : host::NodeCatalog()) {
    desktop.ChooseNode(node.id);
    const QStringList topic = desktop.Window().property(host::HelpDesk::topicProperty).toString().split(u'#');
    QVERIFY2(topic.size() == 2 && pages.HasAnchor(topic[0], topic[1]), qPrintable(node.title));
  }
}

void tst_help::Search_data() {
  QTest::addColumn<QString>("words");
  QTest::addColumn<QString>("hit");
  QTest::newRow("headings first") << u"eliminar"_s << u"eliminar|Eliminar y recuperar"_s;
  QTest::newRow("folded, parts of words") << u"PROV eliMIN diócesis"_s
                                          << u"eliminar|Un registro que otros utilizan se conserva. Una provincia con "
                                             "diócesis, por ejemplo: cambie o elimine antes las diócesis."_s;
  QTest::newRow("a row of a table") << u"ctrl f busqueda flecha"_s
                                    << u"teclas|Ctrl+F: Va al cuadro de búsqueda; Esc lo vacía; flecha abajo o Intro "
                                       "van a la lista"_s;
  QTest::newRow("with the titles above") << u"emisor poblacion"_s << u"frmEmisor|Población. Localidad."_s;
  QTest::newRow("markup is a text") << u"<b>"_s << QString();
  QTest::newRow("nothing") << u"  "_s << QString();
}

void tst_help::Search() {
  QFETCH(const QString, words);
  host::Pages pages(folder);
  const QList<host::Pages::Hit> hits = pages.Search(words);
  const QString first = hits.isEmpty() ? QString() : hits.constFirst().page + u'|' + hits.constFirst().line;
  QTEST(first, "hit");
  if (hits.isEmpty()) {
    return;
  }
  host::HelpWindow window(pages);
  window.ShowBeside(nullptr);
  window.findChild<QLineEdit*>(u"helpWords"_s)->setText(words);
  QTest::keyClick(window.findChild<QLineEdit*>(u"helpWords"_s), Qt::Key_Return);
  QCOMPARE(window.findChild<QListWidget*>(u"helpHits"_s)->count(), hits.size());
  QCOMPARE(window.Browser().Page(), hits.constFirst().page);
  const QString marked = window.Browser().extraSelections().value(0).cursor.selectedText().trimmed();
  QVERIFY2(!marked.isEmpty() && hits.constFirst().line.startsWith(marked), qPrintable(marked));
  QTest::keyClick(&window, Qt::Key_Escape);
  QVERIFY(window.isVisible());
  QTest::keyClick(&window, Qt::Key_Escape);
  QVERIFY(!window.isVisible());
}

// The component's own way: what it does at F1 ends in the program's window.
void tst_help::F1InADialog() {
  TestDesktop desktop;
  desktop.Session().helpFile = firstPage;
  QVERIFY(automation::ComponentLibrary(QStringLiteral(KEL_COMPONENT)).Register());
  host::HelpDesk help(firstPage);
  QString page;
  QString place;
  QString marked;
  int pages = 0;
  desktop.driver.On("frmEmisor", [&](const support::DialogUser& user) {
    user.Find("txtSufijo")->setFocus();
    user.Key(Qt::Key_F1);
    page = help.Window()->Browser().Page();
    place = help.Window()->findChild<QTreeWidget*>(u"helpContents"_s)->currentItem()->text(0);
    marked = help.Window()->Browser().extraSelections().value(0).cursor.selectedText();
    for (int i = 0; i < 50; ++i) {
      QKeyEvent held(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
      QApplication::sendEvent(user.Dialog(), &held);
    }
    pages = help.Window()->Browser().backwardHistoryCount();
    // Its last words come when the dialog is on its way out.
    QObject::connect(user.Dialog(), &QDialog::finished, user.Dialog(), &PressF1);
    QObject::connect(user.Dialog(), &QObject::destroyed, &PressF1);
    user.Press("cmdEmisor_1");
  });
  desktop.ChooseNode(cConstNodo().Emisores());
  desktop.Action("actAdd").trigger();
  QCOMPARE(page, u"frmEmisor"_s);
  QCOMPARE(place, u"Emisor"_s);
  QVERIFY2(marked.startsWith(u"(*) Sufijo."_s), qPrintable(marked));
  QCOMPARE(pages, 0);
  QVERIFY(help.Window()->isVisible());
}

void tst_help::WhatIsInFront() {
  host::HelpDesk help(firstPage);
  const auto shown = [&] {
    const QUrl source = help.Window()->Browser().source();
    return source.fileName() + u'#' + source.fragment();
  };
  QWidget list;
  list.setProperty(host::HelpDesk::topicProperty, u"tablas#Paises"_s);
  list.show();
  list.activateWindow();
  QTRY_VERIFY(list.isActiveWindow());
  PressF1();
  QCOMPARE(shown(), u"tablas.html#Paises"_s);
  QLineEdit search(&list);
  search.setObjectName(u"txtSearch"_s);
  search.show();
  search.setFocus();
  help.Window()->close();
  list.activateWindow();
  QTRY_VERIFY(search.hasFocus());
  PressF1();
  QCOMPARE(shown(), u"ventana.html#txtSearch"_s);
  // A dialog of the host over one of the component; its own name has no page, and it does nothing at F1 by itself.
  QDialog form;
  form.setObjectName(u"frmBanco"_s);
  form.show();
  QDialog inner(&form);
  inner.setObjectName(u"nobody"_s);
  QPushButton button(&inner);
  button.setObjectName(u"cmdBanco_3"_s);
  inner.setModal(true);
  inner.show();
  button.setFocus();
  QTest::keyClick(&button, Qt::Key_F1);
  QCOMPARE(shown(), u"frmBanco.html#cmdBanco_3"_s);
  // In the help there is no help.
  help.Window()->ShowTopic(u"teclas"_s, {});
  QTest::keyClick(help.Window(), Qt::Key_F1);
  QCOMPARE(shown(), u"teclas.html#"_s);
  inner.hide();
  form.hide();
  QDialog nameless;
  nameless.setModal(true);
  nameless.show();
  QTest::keyClick(&nameless, Qt::Key_F1);
  QCOMPARE(shown(), u"contenido.html#"_s);
}

void tst_help::ClicksBesideAModalDialog() {
  host::HelpDesk help(firstPage);
  PressF1();
  host::HelpWindow& window = *help.Window();
  int clicks = 0;
  QObject::connect(window.findChild<QAction*>(u"actHelpFirst"_s), &QAction::triggered, [&] { ++clicks; });
  const auto isUsable = [&] {
    const int before = clicks;
    QToolBar* bar = window.findChild<QToolBar*>(u"helpBar"_s);
    QWidget* button = bar->widgetForAction(window.findChild<QAction*>(u"actHelpFirst"_s));
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, button->mapTo(&window, button->rect().center()));
    QCoreApplication::processEvents();
    return clicks > before;
  };
  QVERIFY(isUsable());
  QDialog outer;
  outer.setModal(true);
  outer.show();
  QVERIFY(!isUsable());
  PressF1();
  QVERIFY(isUsable());
  {
    QDialog inner;
    inner.setModal(true);
    inner.show();
    PressF1();
    QVERIFY(isUsable());
  }
  QTRY_VERIFY(isUsable());
  QVERIFY(window.windowHandle()->transientParent() == outer.windowHandle());
  outer.hide();
  QVERIFY(isUsable());
}

void tst_help::WhatIsNotThere() {
  const support::TestDatabase scratch;
  QVERIFY(QFile::copy(firstPage, scratch.Path(u"contenido.html"_s)));
  host::Pages pages(scratch.Path(u"."_s));
  host::HelpBrowser browser(pages);
  QSignalSpy outside(&browser, &host::HelpBrowser::LedOutside);
  browser.ShowPage(host::Pages::first);
  Q_EMIT browser.anchorClicked(QUrl(u"frmBanco.html"_s));
  QVERIFY(browser.toPlainText().startsWith(u"Falta esta página"_s));
  QVERIFY(browser.isBackwardAvailable());
  Q_EMIT browser.anchorClicked(QUrl(u"../../passwd.html"_s));
  Q_EMIT browser.anchorClicked(QUrl(u"file:///etc/passwd"_s));
  Q_EMIT browser.anchorClicked(QUrl(u"javascript:x"_s));
  QCOMPARE(outside.size(), 3);
  // Without any page nothing is found, and nothing fails.
  host::Pages nothing(scratch.Path(u"no"_s));
  host::HelpWindow window(nothing);
  window.ShowBeside(nullptr);
  window.ShowTopic(host::Pages::first, u"x"_s);
  QVERIFY(window.Browser().toPlainText().startsWith(u"Falta esta página"_s));
  window.findChild<QLineEdit*>(u"helpWords"_s)->setText(u"<img src=file:///x> %1"_s);
  QVERIFY(window.findChild<QListWidget*>(u"helpHits"_s)->count() == 0);
}

void tst_help::KeysOfTheMenus() {
  TestDesktop desktop;
  host::HelpDesk help(firstPage);
  QObject::connect(&desktop.Window(), &host::MainWindow::ShortcutsWanted, &help, &host::HelpDesk::ShowMade);
  desktop.Action("actFind").setText(u"&Buscar && <b>hallar</b>…"_s);
  desktop.Action("actShortcuts").trigger();
  const QString text = help.Window()->Browser().toPlainText();
  QVERIFY2(text.contains(u"Ctrl+F\nBuscar & <b>hallar</b>\n"_s) && text.contains(u"F2, Intro\nModificar\n"_s),
           qPrintable(text));
  for (const QAction* menu : desktop.Window().findChild<QMenuBar*>()->actions()) {
    for (const QAction* action : menu->menu()->actions()) {
      const QString keys = action->shortcut().toString(QKeySequence::NativeText);
      QVERIFY2(keys.isEmpty() || !action->isVisible() || text.contains(keys), qPrintable(action->text()));
    }
  }
  Q_EMIT help.Window()->Browser().anchorClicked(QUrl(u"teclas.html"_s));
  QCOMPARE(help.Window()->Browser().Page(), u"teclas"_s);
  help.Window()->Browser().backward();
  QVERIFY(help.Window()->Browser().toPlainText().startsWith(u"Atajos"_s));
}

KEL_TEST(tst_help);
#include "tst_help.moc"
