// Long random editing: no step may crash or hang, and undoing everything brings the original back, to the byte.
// KEL_LETTER_STEPS says how many steps, in runs of 60 (1,800 where it is not set); KEL_LETTER_SEED which ones.

#include "letters/editor/Formatting.h"
#include "letters/editor/LetterEdit.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QRandomGenerator>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

using namespace Qt::StringLiterals;

using letters::LetterEdit;

namespace {

const QString contents[] = {
    u"{\\rtf1\\ansi uno dos tres\\par cuatro\\par\\pard\\qj cinco seis\\par}"_s,
    u"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}{\\f1\\fcharset2 "
    u"Symbol;}}\\pard{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1"
    "\\pnindent0{\\pntxtb\\'B7}}\\fi-360\\li720\\qj\\f0 uno dos\\par{\\pntext\\f1\\'B7\\tab}tres {\\b "
    "cuatro}\\par\\pard "
    "cinco\\par}"_s,
    u"{\\rtf1\\ansi{\\*\\listtable{\\list{\\listlevel\\levelnfc0\\levelstartat3{\\leveltext\\'02\\'00.;}}\\listid7}}"
    "{\\*\\listoverridetable{\\listoverride\\listid7\\ls0}}\\ls0 uno\\par dos\\par\\pard\\caps tres\\par\\ls0 cuatro}"_s,
    u"{\\rtf1\\ansi antes\\par\\trowd\\cellx2000\\cellx4000\\intbl uno\\cell dos\\par tres\\cell\\row\\pard\\qj "
    u"detr\\'e1s "
    "de la tabla, en varias l\\'edneas de texto que se justifican\\par}"_s,
    // Merged cells, a shaded one, lines between; a nested table with the empty paragraph that ends its cell.
    u"{\\rtf1\\ansi{\\colortbl;\\red200\\green200\\blue0;}"
    u"\\par\\trowd\\trgaph70\\clmgf\\clvmgf\\clbrdrt\\brdrs\\cellx1000\\clmrg\\cellx"
    "2000\\clcbpat1\\clvertalc\\cellx4000\\pard\\intbl\\qj uno "
    "dos\\cell\\cell\\cell\\row\\trowd\\clvmrg\\cellx2000\\cellx4000\\intbl"
    "\\cell tres\\par cuatro\\cell\\row\\pard\\par cinco\\par}"_s,
    u"{\\rtf1\\ansi antes\\par\\trowd\\cellx5000\\cellx9000\\pard\\intbl fuera\\par\\pard\\intbl\\itap2\\qj "
    u"n1\\nestcell n2"
    "\\nestcell{\\*\\nesttableprops\\trowd\\cellx2000\\cellx4000\\nestrow}{\\nonesttables\\par}\\pard\\intbl\\cell x\\cell\\row\\pard fin}"_s,
    u"{\\rtf1\\ansi{\\*\\bkmkstart x}uno {\\field{\\*\\fldinst DATE}{\\fldrslt hoy}} dos\\page tres\\par\\sect\\sectd "
    "cuatro\\par}"_s,
};

class RandomUser {
 public:
  RandomUser(LetterEdit& letter, quint32 seed) : m_letter(letter), m_random(seed) {}

  void Step() {
    switch (m_random.bounded(20)) {
      case 0:
      case 1:
        QTest::keyClicks(&m_letter, u"ab "_s);
        break;
      case 2:
        QTest::keyClick(&m_letter, Qt::Key_Return);
        break;
      case 3:
        QTest::keyClick(&m_letter, m_random.bounded(2) == 0 ? Qt::Key_Backspace : Qt::Key_Delete);
        break;
      case 4:
      case 5:
      case 6:
      case 7:
        Select();
        break;
      case 8:
        m_letter.selectAll();
        break;
      case 9:
        m_letter.cut();
        break;
      case 10:
        m_letter.copy();
        break;
      case 11:
      case 12:
        m_letter.paste();
        break;
      case 13:
        m_letter.Undo();
        break;
      case 14:
        m_letter.Redo();
        break;
      case 15:
        letters::ToggleList(m_letter, letters::ListKind(m_random.bounded(2)));
        break;
      case 16:
        letters::Align(m_letter, m_random.bounded(2) == 0 ? Qt::AlignJustify : Qt::AlignRight);
        break;
      case 17:
        letters::MoveIndent(m_letter, {m_random.bounded(2) == 0 ? 360 : -360});
        break;
      case 18:
        letters::Toggle(m_letter, letters::Attribute(m_random.bounded(int(letters::Attribute::Highlight) + 1)));
        break;
      default:
        letters::SetFontSize(m_letter, 8 + m_random.bounded(8));
    }
  }

 private:
  void Select() {
    const int length = m_letter.document()->characterCount();
    QTextCursor cursor(m_letter.document());
    cursor.setPosition(m_random.bounded(length));
    if (m_random.bounded(3) != 0) {
      cursor.setPosition(m_random.bounded(length), QTextCursor::KeepAnchor);
    }
    m_letter.setTextCursor(cursor);
  }

  LetterEdit& m_letter;
  QRandomGenerator m_random;
};

int Number(const char* name, int otherwise) {
  bool isNumber = false;
  const int value = qEnvironmentVariableIntValue(name, &isNumber);
  return isNumber ? value : otherwise;
}

}  // namespace

class tst_letter_random : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  /// The undo takes back text at the start of a paragraph, behind other text that it brings back: that paragraph needs
  /// new lines, which Qt alone does not make.
  void JustifiedTextAfterAnUndo() {
    LetterEdit letter;
    letter.SetTextWidth(letters::Twips{6000});
    letter.Load(contents[0]);
    letters::ToggleList(letter, letters::ListKind::Bullets);
    letter.selectAll();
    letter.cut();
    QTest::keyClick(&letter, Qt::Key_Return);
    letter.moveCursor(QTextCursor::Start);
    letter.paste();
    letter.selectAll();
    QTest::keyClicks(&letter, u"a"_s);
    letter.undo();
    for (QTextBlock block = letter.document()->begin(); block.isValid(); block = block.next()) {
      const QTextLayout& lines = *block.layout();
      const QTextLine last = lines.lineAt(lines.lineCount() - 1);
      QCOMPARE(last.textStart() + last.textLength(), block.length() - 1);
    }
  }

  void UndoneIsTheOriginal() {
    constexpr int stepsOfARun = 60;
    const int runs = Number("KEL_LETTER_STEPS", 1'800) / stepsOfARun;
    const int first = Number("KEL_LETTER_SEED", 1);
    QStringList changed;
    for (int run = first; run < first + runs; ++run) {
      LetterEdit letter;
      letter.resize(600, 400);
      letter.SetTextWidth(letters::Twips{6000});
      const QString content = contents[run % static_cast<int>(std::size(contents))];
      letter.Load(content);
      RandomUser user(letter, run);
      for (int i = 0; i < stepsOfARun; ++i) {
        user.Step();
        letter.grab();
      }
      while (letter.document()->isUndoAvailable()) {
        letter.Undo();
      }
      if (letter.Content() != content) {
        changed.append(QString::number(run));
      }
    }
    QVERIFY2(changed.size() * 100 <= runs,
             qPrintable(u"%1 of %2: %3"_s.arg(changed.size()).arg(runs).arg(changed.join(u' '))));
  }
};

KEL_TEST(tst_letter_random);
#include "tst_letter_random.moc"
