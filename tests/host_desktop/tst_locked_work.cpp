#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/access/IdleLock.h"
#include "host/services/Rescue.h"
#include "platform/contract/cConstNodo.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QtTest>

using namespace Qt::StringLiterals;

using support::DialogUser;

/// What goes on under a locked program.
class tst_locked_work : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_desktop = std::make_unique<TestDesktop>();
    m_rescue = std::make_unique<host::Rescue>(m_desktop->Services(), m_desktop->Bridge());
    m_desktop->Window().Offer(*m_rescue);
    m_desktop->Window().show();
    m_lock = std::make_unique<host::IdleLock>(m_desktop->Session(), m_door, *m_rescue, host::Account(), u"kel.db"_s);
  }
  void cleanup() {
    m_lock.reset();
    m_desktop->Window().hide();
    m_desktop.reset();
    m_rescue.reset();
  }

  void AnExportGoesOn_data() {
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QByteArray>("dialog");
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("export") << QByteArray("actExport") << QByteArray("dlgExportar") << QByteArray("cmdGuardar");
    QTest::newRow("print") << QByteArray("actPrint") << QByteArray("dlgImprimirLista") << QByteArray("cmdPdf");
  }

  void AnExportGoesOn() {
    QFETCH(QByteArray, action);
    QFETCH(QByteArray, dialog);
    QFETCH(QByteArray, button);
    qputenv("CUPS_SERVER", "/nowhere/cups.sock");
    const QString file = m_desktop->database.Path(dialog == "dlgExportar" ? u"lista.ods"_s : u"lista.pdf"_s);
    m_desktop->ChooseNode(cConstNodo().Provincias());
    m_desktop->driver.On("dlgGuardar", [&](const DialogUser& user) {
      user.Find<QLineEdit>("fileNameEdit")->setText(file);
      user.Dialog()->findChild<QDialogButtonBox*>()->buttons().constFirst()->click();
    });
    m_desktop->driver.On(dialog, [&](const DialogUser& user) {
      QVERIFY(QTest::qWaitFor([&] { return user.IsEnabled(button); }));
      user.Press(button);
      Lock();
      QVERIFY(QTest::qWaitFor([&] { return QFile::exists(file); }));
      QVERIFY(m_lock->IsLocked() && IsCovered(m_desktop->Window()));
      m_lock.reset();
      if (dialog == "dlgImprimirLista") {
        QVERIFY(QTest::qWaitFor([&] { return user.IsEnabled(button); }));
        QVERIFY(user.Dialog()->isVisible() && !IsCovered(*user.Dialog()));
        user.Close();
      } else {
        QVERIFY(QTest::qWaitFor([&] { return !user.Dialog()->isVisible(); }));
      }
    });
    m_desktop->Action(action).trigger();
    QCOMPARE(m_desktop->TakeBoxes(), QStringList());
    QVERIFY(QFileInfo(file).size() > 0 && !IsCovered(m_desktop->Window()));
  }

  void AStripWaits() {
    Lock();
    host::KeptInput input;
    input.dialog = u"frmPais"_s;
    input.title = u"Agregar país"_s;
    input.moment = QDateTime::currentDateTimeUtc();
    input.rows = QStringList(u"Utopía"_s);
    m_rescue->Add({input});
    host::MainWindow& window = m_desktop->Window();
    QWidget* strip = nullptr;
    QVERIFY(QTest::qWaitFor([&] { return (strip = window.findChild<QWidget*>(u"stripRescue"_s)) != nullptr; }));
    auto* discard = strip->findChildren<QPushButton*>().constLast();
    QTest::qWait(0);
    QCOMPARE(window.childAt(discard->mapTo(&window, discard->rect().center()))->objectName(), u"lockCover"_s);
    QTest::mouseClick(discard, Qt::LeftButton);
    QCOMPARE(m_rescue->Inputs().size(), 1);
    m_lock.reset();
    QTest::mouseClick(discard, Qt::LeftButton);
    QCOMPARE(m_rescue->Inputs().size(), 0);
  }

 private:
  // Its box is nobody's to answer.
  void Lock() {
    qApp->removeEventFilter(&m_desktop->driver);
    m_lock->Lock();
    qApp->installEventFilter(&m_desktop->driver);
  }

  static bool IsCovered(const QWidget& window) {
    const auto* cover = window.findChild<QWidget*>(u"lockCover"_s, Qt::FindDirectChildrenOnly);
    return cover != nullptr && cover->isVisible() && cover->geometry() == window.rect();
  }

  std::unique_ptr<TestDesktop> m_desktop;
  std::unique_ptr<host::Rescue> m_rescue;
  std::unique_ptr<host::IdleLock> m_lock;
  host::Door m_door;
};

KEL_TEST(tst_locked_work);
#include "tst_locked_work.moc"
