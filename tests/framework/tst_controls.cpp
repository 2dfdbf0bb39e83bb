#include "framework/GridKeys.h"
#include "framework/KeyFilter.h"
#include "framework/Sql.h"
#include "support/TestHost.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

class tst_controls : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void KeyFilters_data() {
    QTest::addColumn<bool>("clearWhenFull");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("beeps");
    QTest::newRow("digits") << true << ""
                            << "0049"
                            << "0049" << 0;
    QTest::newRow("others beep and are dropped") << true << ""
                                                 << "a1 -2"
                                                 << "12" << 3;
    QTest::newRow("a key in a full box starts anew") << true << "0049"
                                                     << "7"
                                                     << "7" << 0;
    QTest::newRow("a refused key clears nothing") << true << "0049"
                                                  << "x"
                                                  << "0049" << 1;
    QTest::newRow("without that, a full box refuses") << false << "0049"
                                                      << "7"
                                                      << "0049" << 1;
  }
  void KeyFilters() {
    QFETCH(bool, clearWhenFull);
    QFETCH(QString, initial);
    QFETCH(QString, keys);
    support::TestPlatform platform;
    QLineEdit box;
    new KeyFilter(&box, EsDigito, 4,
                  KeyFilter::BeepOnRefusal | (clearWhenFull ? KeyFilter::ClearWhenFull : KeyFilter::NoOptions));
    box.setText(initial);
    QTest::keyClicks(&box, keys);
    QTEST(box.text(), "text");
    QTEST(platform.beeps, "beeps");
  }

  void PastedTextIsFilteredStoredTextIsNot() {
    support::TestPlatform platform;
    QLineEdit box;
    new KeyFilter(&box, EsLetraODigito, 5, KeyFilter::BeepOnRefusal);
    box.setText(QStringLiteral("ñ-antiguo"));
    QCOMPARE(box.text(), QStringLiteral("ñ-antiguo"));
    QTest::keyClick(&box, Qt::Key_Left);
    QCOMPARE(box.text(), QStringLiteral("ñ-antiguo"));
    QApplication::clipboard()->setText(QStringLiteral(" AD-5ñ00 9"));
    box.selectAll();
    box.paste();
    QCOMPARE(box.text(), QStringLiteral("AD500"));
    QCOMPARE(platform.beeps, 1);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QCOMPARE(box.text(), QStringLiteral("AD50"));
  }

  void GridKeysAreTaken() {
    QTableWidget grid(1, 1);
    GridKeys keys(&grid);
    QSignalSpy add(&keys, &GridKeys::Add);
    QSignalSpy modify(&keys, &GridKeys::Modify);
    QSignalSpy remove(&keys, &GridKeys::Delete);
    QTest::keyClick(&grid, Qt::Key_Insert);
    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::keyClick(&grid, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(&grid, Qt::Key_Delete);
    QTest::keyClick(&grid, Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(add.size(), 1);
    QCOMPARE(modify.size(), 2);
    QCOMPARE(remove.size(), 1);
  }

  void SqlTexts() {
    QCOMPARE(TextoSql(QStringLiteral("  O'Brien's  ")), QStringLiteral("O''Brien''s"));
    QCOMPARE(TextoSql(QStringLiteral(" \t ")), QString());
  }
};

KEL_TEST(tst_controls);
#include "tst_controls.moc"
