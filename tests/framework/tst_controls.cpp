#include "framework/ComboSearch.h"
#include "framework/ControlSetup.h"
#include "framework/GridKeys.h"
#include "framework/KeyFilter.h"
#include "support/TestHost.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

using namespace framework;
using namespace Qt::StringLiterals;

class tst_controls : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void KeyFilters_data() {
    QTest::addColumn<bool>("clearWhenFull");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("beeps");
    QTest::newRow("digits") << true << u""_s << u"0049"_s << u"0049"_s << 0;
    QTest::newRow("others beep and are dropped") << true << u""_s << u"a1 -2"_s << u"12"_s << 3;
    QTest::newRow("a key in a full box starts anew") << true << u"0049"_s << u"7"_s << u"7"_s << 0;
    QTest::newRow("a refused key clears nothing") << true << u"0049"_s << u"x"_s << u"0049"_s << 1;
    QTest::newRow("without that, a full box refuses") << false << u"0049"_s << u"7"_s << u"0049"_s << 1;
  }
  void KeyFilters() {
    QFETCH(bool, clearWhenFull);
    QFETCH(QString, initial);
    QFETCH(QString, keys);
    support::CountingDesktop desktop;
    QLineEdit box;
    new KeyFilter(&box, IsDigit, 4,
                  KeyFilter::BeepOnRefusal | (clearWhenFull ? KeyFilter::ClearWhenFull : KeyFilter::NoOptions));
    box.setText(initial);
    QTest::keyClicks(&box, keys);
    QTEST(box.text(), "text");
    QTEST(desktop.beeps, "beeps");
  }

  // In a full box a key replaces what is selected.
  void AKeyOverASelection() {
    support::CountingDesktop desktop;
    QLineEdit box;
    new KeyFilter(&box, IsDigit, 4, KeyFilter::BeepOnRefusal);
    box.setText(u"0049"_s);
    box.setSelection(2, 2);
    QTest::keyClicks(&box, u"7"_s);
    QCOMPARE(box.text(), u"007"_s);
    QCOMPARE(desktop.beeps, 0);
  }

  // What is pasted stays as it is, or does not come in: it never becomes another value. What was stored is not judged.
  void PastedText_data() {
    QTest::addColumn<bool>("decimals");
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("selectedFrom");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::newRow("fits") << false << u"0049"_s << 0 << u"2100"_s << u"2100"_s;
    QTest::newRow("blanks around") << false << u""_s << 0 << u" 2100\n"_s << u"2100"_s;
    QTest::newRow("another character") << false << u"12"_s << 0 << u"6,5"_s << u"12"_s;
    QTest::newRow("exponent") << true << u"2"_s << 0 << u"1e5"_s << u"2"_s;
    QTest::newRow("sign") << true << u"2"_s << 0 << u"-3"_s << u"2"_s;
    QTest::newRow("too long") << false << u"49"_s << 1 << u"12345"_s << u"49"_s;
    QTest::newRow("nothing but blanks") << false << u"49"_s << 0 << u"  "_s << u"49"_s;
    QTest::newRow("point") << true << u"2"_s << 0 << u"7.5"_s << u"7,5"_s;
    QTest::newRow("into a stored text") << false << u"A-1"_s << 3 << u"7"_s << u"A-17"_s;
    QTest::newRow("refused in a stored text") << false << u"A-1"_s << 3 << u"x"_s << u"A-1"_s;
  }
  void PastedText() {
    QFETCH(bool, decimals);
    QFETCH(QString, before);
    QFETCH(int, selectedFrom);
    QFETCH(QString, pasted);
    QFETCH(QString, text);
    support::CountingDesktop desktop;
    QLineEdit box;
    if (decimals) {
      new KeyFilter(
          &box, [](QChar c) { return IsDigit(c) || c == u','; }, 5, KeyFilter::PointIsComma);
    } else {
      new KeyFilter(&box, IsDigit, 5, KeyFilter::NoOptions);
    }
    box.setText(before);
    QCOMPARE(box.text(), before);
    box.setSelection(selectedFrom, 99);
    QApplication::clipboard()->setText(pasted);
    box.paste();
    QCOMPARE(box.text(), text);
    QCOMPARE(desktop.beeps, text == before ? 1 : 0);
    QVERIFY(box.isModified());
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QCOMPARE(box.text(), text.chopped(1));
  }

  void APointIsACommaWhereTheBoxWantsIt() {
    support::CountingDesktop desktop;
    QLineEdit box;
    new KeyFilter(
        &box, [](QChar c) { return IsDigit(c) || c == u','; }, 0, KeyFilter::BeepOnRefusal | KeyFilter::PointIsComma);
    QTest::keyClicks(&box, u"3.7"_s);
    QCOMPARE(box.text(), u"3,7"_s);
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
    QTest::keyClick(&grid, Qt::Key_F2);
    QTest::keyClick(&grid, Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(add.size(), 1);
    QCOMPARE(modify.size(), 3);
    QCOMPARE(remove.size(), 1);
  }

  void ListsAreFoundByTyping_data() {
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("selected");
    QTest::newRow("beginning") << u"fra"_s << u"Francia"_s;
    QTest::newRow("any word's beginning") << u"baj"_s << u"Países Bajos"_s;
    QTest::newRow("accents ignored") << u"bel"_s << u"Bélgica"_s;
    QTest::newRow("accents typed") << u"BÉL"_s << u"Bélgica"_s;
    QTest::newRow("not inside a word") << u"ndor"_s << u"Andorra"_s;
    QTest::newRow("several words") << u"isl c"_s << u"Islas Cook"_s;
    QTest::newRow("stays while it fits") << u"be"_s << u"Bélgica"_s;
    QTest::newRow("one letter goes on") << u"ii"_s << u"Islas Cook"_s;
    QTest::newRow("what fits nothing is dropped") << u"frx"_s << u"Francia"_s;
    QTest::newRow("marks find nothing") << u"%"_s << u"Andorra"_s;
  }
  void ListsAreFoundByTyping() {
    QFETCH(QString, keys);
    QFETCH(QString, selected);
    support::CountingDesktop desktop;
    for (const bool open : {false, true}) {
      QComboBox combo;
      combo.addItems(
          {u"Andorra"_s, u"Bélgica"_s, u"Belice"_s, u"Francia"_s, u"Islandia"_s, u"Islas Cook"_s, u"Países Bajos"_s});
      new ComboSearch(&combo);
      combo.show();
      QVERIFY(QTest::qWaitForWindowActive(&combo));
      combo.setFocus();
      if (open) {
        combo.showPopup();
      }
      QTest::keyClicks(open ? static_cast<QWidget*>(combo.view()) : &combo, keys);
      if (open) {
        QTest::keyClick(combo.view(), Qt::Key_Return);
      }
      QCOMPARE(combo.currentText(), selected);
    }
  }

  void TheWheelTurnsOnlyAListWithTheFocus() {
    QWidget form;
    auto* layout = new QHBoxLayout(&form);
    auto* combo = new QComboBox;
    auto* box = new QLineEdit;
    layout->addWidget(combo);
    layout->addWidget(box);
    combo->addItems({u"uno"_s, u"dos"_s, u"tres"_s});
    PrepareControls(form);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    for (QWidget* focused : {static_cast<QWidget*>(box), static_cast<QWidget*>(combo)}) {
      focused->setFocus();
      QWheelEvent wheel(QPointF(5, 5), combo->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                        Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(combo, &wheel);
      QCOMPARE(combo->currentIndex(), focused == combo ? 1 : 0);
    }
  }

  void EnterPressesTheFocusedButton() {
    QDialog form;
    auto* layout = new QHBoxLayout(&form);
    auto* accept = new QPushButton;
    auto* add = new QPushButton;
    auto* more = new QToolButton;
    auto* tick = new QCheckBox;
    for (QWidget* control : QList<QWidget*>{tick, more, add, accept}) {
      layout->addWidget(control);
    }
    accept->setDefault(true);
    add->setAutoDefault(false);
    more->setFocusPolicy(Qt::StrongFocus);
    PrepareControls(form);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QStringList pressed;
    connect(accept, &QPushButton::clicked, this, [&] { pressed.append(u"accept"_s); });
    connect(add, &QPushButton::clicked, this, [&] { pressed.append(u"add"_s); });
    connect(more, &QToolButton::clicked, this, [&] { pressed.append(u"more"_s); });
    for (QWidget* control : QList<QWidget*>{more, add, tick}) {
      control->setFocus();
      QTest::keyClick(control, Qt::Key_Return);
    }
    QCOMPARE(pressed, QStringList({u"more"_s, u"add"_s, u"accept"_s}));
    QVERIFY(!tick->isChecked());
  }

  void SizesFollowTheContent() {
    QWidget form;
    auto* layout = new QVBoxLayout(&form);
    QList<QLineEdit*> boxes;
    for (const int longest : {3, 20, 32767}) {
      auto* box = new QLineEdit;
      box->setMaxLength(longest);
      layout->addWidget(box);
      boxes.append(box);
    }
    auto* chosen = new QLineEdit;
    chosen->setProperty("Characters", 60);
    layout->addWidget(chosen);
    auto* grid = new QTableWidget(1, 2);
    layout->addWidget(grid);
    SetColumnCharacters(*grid, {10, 90});
    SizeControls(form);
    form.show();
    const int digit = form.fontMetrics().horizontalAdvance(u'0');
    QVERIFY(boxes[0]->width() >= 3 * digit && boxes[0]->width() < 8 * digit);
    QVERIFY(boxes[1]->width() >= 20 * digit && boxes[1]->width() < 26 * digit);
    QVERIFY(boxes[0]->x() == boxes[2]->x());
    QCOMPARE(boxes[2]->width(), chosen->width());
    QVERIFY(chosen->width() >= 60 * digit);
    QVERIFY(grid->viewport()->width() >= grid->columnWidth(0) + 90 * form.fontMetrics().averageCharWidth());
    QCOMPARE(grid->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QVERIFY(grid->horizontalHeader()->length() <= grid->viewport()->width());
  }
};

KEL_TEST(tst_controls);
#include "tst_controls.moc"
