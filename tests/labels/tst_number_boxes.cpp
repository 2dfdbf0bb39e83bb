#include "framework/KeyFilter.h"
#include "labels/NumberBox.h"
#include "labels/UpDown.h"
#include "support/TestHost.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

using namespace framework;
using namespace Qt::StringLiterals;

using labels::UpDown;

namespace {

// A box of measures with its spinner, bounded at each change, as the sheet dialog has them.
class Window : public QWidget {
 public:
  Window(int min, int max) {
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(box);
    layout->addWidget(spinner);
    layout->addWidget(other);
    spinner->setProperty("Min", min);
    spinner->setProperty("Max", max);
    auto* number = new labels::NumberBox(box, spinner);
    new KeyFilter(
        box, [](QChar c) { return IsDigit(c) || c == u','; }, 10, KeyFilter::BeepOnRefusal | KeyFilter::PointIsComma);
    spinner->Bind(box);
    connect(box, &QLineEdit::textChanged, this, [number] { number->Bound(); });
    show();
    QVERIFY(QTest::qWaitForWindowActive(this));
    box->setFocus();
  }

  void Click(int button) const { QTest::mouseClick(Button(button), Qt::LeftButton); }
  void Turn(int angle) const { Turn(angle, box); }
  // As the window system tells it: only then a control that has no use for the wheel passes it on.
  void Turn(int angle, QWidget* under) const {
    QWheelEvent event({}, {}, {}, {0, angle}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(under, &event);
  }
  QToolButton* Button(int button) const { return spinner->findChildren<QToolButton*>()[button]; }

  QLineEdit* box = new QLineEdit;
  labels::UpDown* spinner = new labels::UpDown;
  QLineEdit* other = new QLineEdit;

 private:
  support::CountingDesktop m_desktop;
};

}  // namespace

class tst_number_boxes : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // What stands in the box after each key ("<" is backspace, "!" empties the box).
  void Typing_data() {
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("within") << 6 << 20 << u"7,5"_s << QStringList{u"7"_s, u"7,"_s, u"7,5"_s};
    QTest::newRow("a beginning below the bound")
        << 6 << 20 << u"10,5"_s << QStringList{u"6"_s, u"10"_s, u"10,"_s, u"10,5"_s};
    QTest::newRow("a point is a comma") << 6 << 20 << u"1.0"_s << QStringList{u"6"_s, u"6"_s, u"6"_s};
    QTest::newRow("below for good") << 6 << 20 << u"5,4"_s << QStringList{u"6"_s, u"6"_s, u"6"_s};
    QTest::newRow("above") << 1 << 40 << u"99999"_s << QStringList{u"9"_s, u"40"_s, u"40"_s, u"40"_s, u"40"_s};
    QTest::newRow("above, from below") << 6 << 20 << u"30"_s << QStringList{u"6"_s, u"20"_s};
    QTest::newRow("emptied") << 6 << 20 << u"7!8"_s << QStringList{u"7"_s, u"6"_s, u"8"_s};
    QTest::newRow("taken back") << 6 << 20 << u"12<4"_s << QStringList{u"6"_s, u"12"_s, u"6"_s, u"14"_s};
    QTest::newRow("the bound itself is taken back") << 6 << 20 << u"1<8"_s << QStringList{u"6"_s, u"6"_s, u"8"_s};
    QTest::newRow("emptied, and may be 0") << 0 << 10 << u"3!"_s << QStringList{u"3"_s, u""_s};
    QTest::newRow("a second comma") << 0 << 10 << u"5,,5"_s << QStringList{u"5"_s, u"5,"_s, u"5,"_s, u"5,5"_s};
    QTest::newRow("a refused key forgets nothing") << 6 << 20 << u"1-2"_s << QStringList{u"6"_s, u"6"_s, u"12"_s};
  }
  void Typing() {
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(QString, keys);
    const Window window(min, max);
    QStringList texts;
    for (const QChar key : keys) {
      if (key == u'<') {
        QTest::keyClick(window.box, Qt::Key_Backspace);
      } else if (key == u'!') {
        QTest::keySequence(window.box, QKeySequence::SelectAll);
        QTest::keyClick(window.box, Qt::Key_Delete);
      } else {
        QTest::keyClicks(window.box, QString(key));
      }
      texts.append(window.box->text());
    }
    QTEST(texts, "texts");
  }

  void Pasting_data() {
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::newRow("decimals with a point") << u"7.5"_s << u"7,5"_s;
    QTest::newRow("exponent") << u"1e5"_s << u"9"_s;
    QTest::newRow("negative") << u"-8"_s << u"9"_s;
    QTest::newRow("two commas") << u"5,,5"_s << u"9"_s;
    QTest::newRow("thousands") << u"1.234,5"_s << u"9"_s;
    QTest::newRow("large") << u"32768"_s << u"20"_s;
    QTest::newRow("longer than a number is") << QString(500, u'9') << u"9"_s;
    QTest::newRow("below") << u"3"_s << u"6"_s;
    QTest::newRow("nothing that a number has") << u"abc"_s << u"9"_s;
  }
  void Pasting() {
    QFETCH(QString, pasted);
    const Window window(6, 20);
    window.box->setText(u"9"_s);
    QApplication::clipboard()->setText(pasted);
    window.box->selectAll();
    QTest::keySequence(window.box, QKeySequence::Paste);
    QTEST(window.box->text(), "text");
  }

  // What was begun is forgotten when the user does something else first.
  void BegunAndLeft() {
    const Window window(6, 20);
    QTest::keyClicks(window.box, u"1"_s);
    window.other->setFocus(Qt::TabFocusReason);
    window.box->setFocus(Qt::TabFocusReason);
    window.box->selectAll();
    QTest::keyClicks(window.box, u"8"_s);
    QCOMPARE(window.box->text(), u"8"_s);
    window.box->selectAll();
    QTest::keyClicks(window.box, u"1"_s);
    QTest::keyClick(window.box, Qt::Key_End);
    QTest::keyClick(window.box, Qt::Key_Comma, Qt::NoModifier);
    QCOMPARE(window.box->text(), u"6,"_s);
  }

  void Steps_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("up");
    QTest::addColumn<QString>("down");
    QTest::newRow("whole") << u"7"_s << u"8"_s << u"6"_s;
    QTest::newRow("decimals stay until then") << u"7,5"_s << u"8"_s << u"7"_s;
    QTest::newRow("upper bound") << u"10"_s << u"10"_s << u"9"_s;
    QTest::newRow("just below it") << u"9,9"_s << u"10"_s << u"9"_s;
    QTest::newRow("lower bound") << u"0"_s << u"1"_s << u"0"_s;
    QTest::newRow("empty") << u""_s << u"1"_s << u"0"_s;
  }
  void Steps() {
    QFETCH(QString, text);
    QFETCH(QString, up);
    QFETCH(QString, down);
    const Window window(0, 10);
    QSignalSpy clicks(window.spinner, &labels::UpDown::Clicked);
    using Way = std::function<void(bool)>;
    const QList<Way> ways{
        [&](bool isUp) { window.Click(isUp ? 0 : 1); },
        [&](bool isUp) { QTest::keyClick(window.box, isUp ? Qt::Key_Up : Qt::Key_Down); },
        [&](bool isUp) { window.Turn(isUp ? 120 : -120); },
        [&](bool isUp) { window.Turn(isUp ? 120 : -120, window.Button(0)); },
    };
    for (const Way& way : ways) {
      window.box->setText(text);
      way(true);
      QCOMPARE(window.box->text(), up);
      window.box->setText(text);
      way(false);
      QCOMPARE(window.box->text(), down);
    }
    QCOMPARE(clicks.size(), 8);
  }

  void FineWheelsAndWheelsThatPass() {
    const Window window(0, 10);
    window.box->setText(u"5"_s);
    for (int i = 0; i < 3; ++i) {
      window.Turn(50);
    }
    QCOMPARE(window.box->text(), u"6"_s);
    window.other->setFocus();
    window.Turn(120);
    window.Turn(120, window.Button(1));
    QCOMPARE(window.box->text(), u"6"_s);
    window.Click(0);
    QCOMPARE(window.box->text(), u"7"_s);
    QVERIFY(window.box->hasFocus());
    QTest::keyClicks(window.box, u"3"_s);
    QCOMPARE(window.box->text(), u"3"_s);
  }
};

KEL_TEST(tst_number_boxes);
#include "tst_number_boxes.moc"
