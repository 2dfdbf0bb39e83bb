#include "documents/rtf/Joint.h"
#include "letters/editor/Formatting.h"
#include "letters/editor/LetterEdit.h"
#include "letters/editor/LetterSearch.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTest>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>

using namespace Qt::StringLiterals;

using letters::LetterEdit;

namespace {

// A joint, a table of two rows, a joint, a paragraph.
const QString letterText =
    u"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}antes\\par\\trowd\\cellx2000\\cellx4000\\pard\\intbl aa\\cell "
    "bb\\cell\\row\\trowd\\cellx2000\\cellx4000\\pard\\intbl cc\\cell dd\\cell\\row\\pard\\par fin\\par}"_s;

/// A letter with these rows, of the cells' definitions and what they hold.
QString LetterOf(const QList<std::pair<QString, QString>>& rows) {
  QString body;
  for (const auto& [cells, content] : rows) {
    body += u"\\trowd%1\\pard\\intbl %2\\row"_s.arg(cells, content);
  }
  return u"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}antes\\par%1\\pard fin\\par}"_s.arg(body);
}

QString TextOf(QTextFrame::iterator part);

QString TextOf(const QTextTable& table) {
  QStringList rows;
  for (int row = 0; row < table.rows(); ++row) {
    QStringList cells;
    for (int column = 0; column < table.columns(); ++column) {
      cells.append(TextOf(table.cellAt(row, column).begin()));
    }
    rows.append(cells.join(u','));
  }
  return u'[' + rows.join(u'/') + u']';
}

/// Paragraphs, tables in brackets; joints left out.
QString TextOf(QTextFrame::iterator part) {
  QStringList parts;
  for (; !part.atEnd(); ++part) {
    if (const auto* table = qobject_cast<const QTextTable*>(part.currentFrame())) {
      parts.append(TextOf(*table));
    } else if (!rtf::IsJoint(part.currentBlock())) {
      parts.append(part.currentBlock().text());
    }
  }
  return parts.join(u'|');
}

QString TextOf(const LetterEdit& letter) {
  return TextOf(letter.document()->rootFrame()->begin());
}

int PositionOf(const LetterEdit& letter, const QString& text) {
  return letter.document()->find(text).selectionStart();
}

}  // namespace

/// Keys, the clipboard and formats in tables and beside them.
class tst_letter_tables : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void NumbersPassJointsOver() {
    LetterEdit letter;
    letter.Load(letterText);
    letter.selectAll();
    letters::ToggleList(letter, letters::ListKind::Numbers);
    QStringList numbers;
    for (QTextBlock block = letter.document()->begin(); block.isValid(); block = block.next()) {
      numbers.append(block.textList() == nullptr ? QString() : block.textList()->itemText(block));
    }
    QCOMPARE(numbers.join(QString()), u"1.2.3.4.5.6.7."_s);
    letters::ToggleList(letter, letters::ListKind::Numbers);
    QCOMPARE(letter.document()->lastBlock().textList(), nullptr);
  }

  void Gestures_data() {
    QTest::addColumn<QString>("from");  // A text that is selected from its start, or the caret's place.
    QTest::addColumn<QString>("to");    // The one that it is selected to, end included; empty for none.
    QTest::addColumn<QString>("keys");  // Of the table below.
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("content");
    const auto row = [](const char* name, const QString& from, const QString& to, const QString& keys,
                        const QString& text, const QString& content = letterText) {
      QTest::newRow(name) << from << to << keys << text << content;
    };
    const QString whole = u"antes|[aa,bb/cc,dd]||fin"_s;
    row("Backspace at a cell's start", u"bb"_s, {}, u"B"_s, whole);
    row("Delete at a cell's end", u"aa"_s, {}, u">>D"_s, whole);
    row("Return in a cell", u"bb"_s, {}, u">R"_s, u"antes|[aa,b|b/cc,dd]||fin"_s);
    row("Delete over cells", u"aa"_s, u"bb"_s, u"D"_s, u"antes|[,/cc,dd]||fin"_s);
    row("Delete over an empty row", u"aa"_s, u"bb"_s, u"DD"_s, u"antes|[cc,dd]||fin"_s);
    row("Delete over all cells", u"aa"_s, u"dd"_s, u"D"_s, u"antes|[,/,]||fin"_s);
    row("Delete over all cells, twice", u"aa"_s, u"dd"_s, u"DD"_s, u"antes||fin"_s);
    row("Delete over a column", u"aa"_s, u"cc"_s, u"DD"_s, u"antes|[,bb/,dd]||fin"_s);
    row("from outside into the table", u"antes"_s, u"cc"_s, u"D"_s, u"||fin"_s);
    row("all of the letter", u"antes"_s, u"fin"_s, u"D"_s, QString());
    row("Delete in front of a table", u"antes"_s, {}, u">>>>>D"_s, whole);
    row("Backspace behind a table", u"fin"_s, {}, u"<B"_s, whole);
    row("Return in front of a table", u"antes"_s, {}, u">>>>>Rx"_s, u"antes|x|[aa,bb/cc,dd]||fin"_s);
    row("to the right past a joint", u"antes"_s, {}, u">>>>>>x"_s, u"antes|[xaa,bb/cc,dd]||fin"_s);
    row("to the left past a joint", u"aa"_s, {}, u"<x"_s, u"antesx|[aa,bb/cc,dd]||fin"_s);
    row("down past a joint", u"dd"_s, {}, u"vx"_s, u"antes|[aa,bb/cc,dd]|x|fin"_s);
    row("up past a joint", u"fin"_s, {}, u"<^x"_s, u"antes|[aa,bb/cc,ddx]||fin"_s);
    row("Tab", u"aa"_s, {}, u"TTx"_s, u"antes|[aa,bb/xcc,dd]||fin"_s);
    row("Tab in the last cell", u"dd"_s, {}, u"Tx"_s, u"antes|[aa,bb/cc,xdd]||fin"_s);
    row("Shift and Tab", u"cc"_s, {}, u"Sx"_s, u"antes|[aa,xbb/cc,dd]||fin"_s);
    row("Tab outside", u"fin"_s, {}, u"T"_s, u"antes|[aa,bb/cc,dd]||\tfin"_s);
    row("bold, justified, bullets over cells", u"aa"_s, u"dd"_s, u"*=."_s, whole);
    row("cells pasted into a cell", u"aa"_s, u"bb"_s, u"CTTTP"_s, u"antes|[aa,bb/cc,[aa,bb]|dd]||fin"_s);
    row("cells pasted elsewhere", u"aa"_s, u"cc"_s, u"CEP"_s, u"antes|[aa,bb/cc,dd]||fin|[aa/cc]"_s);
    row("a cell's text pasted into another", u"aa"_s, u"aa"_s, u"CTP"_s, u"antes|[aa,aabb/cc,dd]||fin"_s);
    row("Delete over an empty row that is not to be changed", u"aa"_s, u"bb"_s, u"DLD"_s, u"antes|[,/cc,dd]||fin"_s);
    const QString two = u"\\cellx2000\\cellx4000"_s;
    row("Delete over an empty column, all empty", u"aa"_s, u"cc"_s, u"DD"_s, u"antes|[,/,]|fin"_s,
        LetterOf({{two, u"aa\\cell\\cell"_s}, {two, u"cc\\cell\\cell"_s}}));
    row("Tab past what is merged", u"aa"_s, {}, u"TTTx"_s, u"antes|[aa,aa,bb/aa,aa,cc/xdd,ee,ff]|fin"_s,
        LetterOf({{u"\\clvmgf\\clmgf\\cellx2000\\clvmgf\\clmrg\\cellx4000\\cellx6000"_s, u"aa\\cell\\cell bb\\cell"_s},
                  {u"\\clvmrg\\clmgf\\cellx2000\\clvmrg\\clmrg\\cellx4000\\cellx6000"_s, u"\\cell\\cell cc\\cell"_s},
                  {u"\\cellx2000\\cellx4000\\cellx6000"_s, u"dd\\cell ee\\cell ff\\cell"_s}}));
    row("Tab in the last cell of a nested table", u"bb"_s, {}, u"Tx"_s, u"antes|[[aa,xbb]|,cc]|fin"_s,
        LetterOf({{two,
                   u"\\itap2 aa\\nestcell bb\\nestcell{\\*\\nesttableprops\\trowd\\cellx900\\cellx1800\\nestrow}"
                   "\\pard\\intbl\\cell cc\\cell"_s}}));
  }

  void Gestures() {
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, keys);
    QFETCH(QString, text);
    QFETCH(QString, content);
    LetterEdit letter;
    letter.SetTextWidth(letters::Twips{6000});
    letter.Load(content);
    QTextCursor cursor = letter.textCursor();
    cursor.setPosition(PositionOf(letter, from));
    if (!to.isEmpty()) {
      cursor.setPosition(PositionOf(letter, to) + static_cast<int>(to.size()), QTextCursor::KeepAnchor);
    }
    letter.setTextCursor(cursor);
    for (const QChar key : keys) {
      Press(letter, key);
    }
    QCOMPARE(TextOf(letter), text);
    // What is written reads as what is shown, with a definition for each row.
    LetterEdit again;
    again.Load(letter.Content());
    QCOMPARE(TextOf(again), text);
    QCOMPARE(letter.Content().count(u"\\trowd"),
             letter.Content().count(u"\\row") + letter.Content().count(u"\\nestrow"));
    while (letter.document()->isUndoAvailable()) {
      letter.undo();
    }
    QCOMPARE(letter.Content(), content);
  }

  void JointsAtTheEndsTakeText() {
    LetterEdit letter;
    letter.Load(u"{\\rtf1\\ansi\\trowd\\cellx2000\\intbl aa\\cell\\row}"_s);
    const QString content = letter.Content();
    letter.moveCursor(QTextCursor::Start);
    QTest::keyClicks(&letter, u"x"_s);
    letter.moveCursor(QTextCursor::End);
    QTest::keyClicks(&letter, u"y"_s);
    QCOMPARE(TextOf(letter), u"x|[aa]|y"_s);
    letter.undo();
    letter.undo();
    QCOMPARE(letter.Content(), content);
  }

  void TypedInAShadedCell() {
    LetterEdit letter;
    letter.Load(
        u"{\\rtf1\\ansi{\\colortbl;\\red255\\green255\\blue0;}\\trowd\\clcbpat1\\clvertalc\\cellx2000\\pard\\intbl"
        "\\cell\\row\\pard x\\par}"_s);
    letter.moveCursor(QTextCursor::NextBlock);
    QTest::keyClicks(&letter, u"a"_s);
    letter.selectAll();
    letters::Toggle(letter, letters::Attribute::Bold);
    for (const QString& word : {u"\\cb1"_s, u"\\highlight"_s, u"\\chcbpat"_s, u"\\super"_s}) {
      QVERIFY2(!letter.Content().contains(word), qPrintable(letter.Content()));
    }
    QVERIFY(letter.Content().contains(u"\\clcbpat1\\clvertalc\\cellx2000"));
  }

  void TablesFromElsewhere() {
    LetterEdit letter;
    letter.SetTextWidth(letters::Twips{6000});
    auto* page = new QMimeData;
    page->setHtml(
        u"<p>uno</p><table border=1 width=\"50%\"><tr><td bgcolor=\"#ff0000\">a</td><td rowspan=2>b</td></tr>"
        "<tr><td>c</td></tr></table><p>dos</p>"_s);
    QApplication::clipboard()->setMimeData(page);
    letter.paste();
    QCOMPARE(TextOf(letter), u"uno|[a,b/c,b]|dos"_s);
    const QString content = letter.Content();
    QCOMPARE(content.count(u"\\trowd"), 2);
    QVERIFY2(content.contains(u"\\clbrdrt\\brdrs\\brdrw10"), qPrintable(content));
    QCOMPARE(content.count(u"\\clcbpat"), 1);
    QCOMPARE(content.count(u"\\clvmgf") + content.count(u"\\clvmrg"), 2);
  }

  void AColumnIsFormattedAndSearchedAlone() {
    LetterEdit letter;
    letter.Load(letterText);
    QTextCursor column(letter.document());
    column.setPosition(PositionOf(letter, u"aa"_s));
    column.setPosition(PositionOf(letter, u"cc"_s) + 2, QTextCursor::KeepAnchor);
    letter.setTextCursor(column);
    QVERIFY(letters::FindText(column, u"bb"_s).isNull() && !letters::FindText(column, u"cc"_s).isNull());
    letters::Align(letter, Qt::AlignHCenter);
    QVERIFY(letters::Toggle(letter, letters::Attribute::Bold));
    const QString content = letter.Content();
    QCOMPARE(content.count(u"\\qc"_s), 2);
    QCOMPARE(letter.document()->find(u"bb"_s).blockFormat().alignment() & Qt::AlignHCenter, 0);
    QVERIFY(!letters::Toggle(letter, letters::Attribute::Bold));
    QVERIFY(letter.document()->find(u"cc"_s).charFormat().fontWeight() <= QFont::Normal);
  }

 private:
  static void Press(LetterEdit& letter, QChar key) {
    static const QMap<QChar, Qt::Key> keys{
        {u'B', Qt::Key_Backspace}, {u'D', Qt::Key_Delete}, {u'R', Qt::Key_Return}, {u'<', Qt::Key_Left},
        {u'>', Qt::Key_Right},     {u'^', Qt::Key_Up},     {u'v', Qt::Key_Down},   {u'T', Qt::Key_Tab},
    };
    if (keys.contains(key)) {
      QTest::keyClick(&letter, keys[key]);
    } else if (key == u'S') {
      QTest::keyClick(&letter, Qt::Key_Backtab, Qt::ShiftModifier);
    } else if (key == u'E') {
      QTest::keyClick(&letter, Qt::Key_End, Qt::ControlModifier);
    } else if (key == u'L') {
      letter.setReadOnly(true);
    } else if (key == u'C') {
      letter.copy();
    } else if (key == u'P') {
      letter.paste();
    } else if (key == u'*') {
      letters::Toggle(letter, letters::Attribute::Bold);
    } else if (key == u'=') {
      letters::Align(letter, Qt::AlignJustify);
    } else if (key == u'.') {
      letters::ToggleList(letter, letters::ListKind::Bullets);
    } else {
      QTest::keyClicks(&letter, key);
    }
  }
};

KEL_TEST(tst_letter_tables);
#include "tst_letter_tables.moc"
