// Letters converted by LibreOffice: what is written here opens there with the same text and formats, what is written
// there opens here with them, also through the clipboard, and the text of every letter in KEL_RTF_DIR is compared, and
// what LibreOffice shows of it before and after an edit (of those letters only that arguments name, "*carta*.rtf").
// Exit code 1 for a difference.

#include "documents/letter/LetterTemplate.h"
#include "documents/rtf/Documents.h"
#include "documents/rtf/interop/OpenDocument.h"
#include "documents/rtf/interop/PrintedPages.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

int differences = 0;

void Check(bool same, const QString& what) {
  if (!same) {
    ++differences;
  }
  std::printf("%s %s\n", same ? "  =" : " !=", qPrintable(what));
}

bool Convert(const QString& folder, const QString& format, const QStringList& files) {
  QProcess office;
  office.setProcessChannelMode(QProcess::MergedChannels);
  office.start(u"soffice"_s, QStringList{u"-env:UserInstallation=file://%1/profile"_s.arg(folder), u"--headless"_s,
                                         u"--convert-to"_s, format, u"--outdir"_s, folder} +
                                 files);
  return office.waitForFinished(600'000) && office.exitStatus() == QProcess::NormalExit;
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size()) {
    qFatal("%s", qPrintable(file.errorString()));
  }
}

struct Expected {
  const char* words;      ///< RTF in front of the text
  const char* attribute;  ///< of OpenDocument
  const char* value;      ///< the beginning of its value
};

constexpr Expected expected[] = {
    {"\\f3", "style:font-name", "MS Gothic"},
    {"\\fs17", "fo:font-size", "8.5pt"},
    {"\\b", "fo:font-weight", "bold"},
    {"\\i", "fo:font-style", "italic"},
    {"\\ul", "style:text-underline-style", "solid"},
    {"\\strike", "style:text-line-through-style", "solid"},
    {"\\super", "style:text-position", "super"},
    {"\\sub", "style:text-position", "sub"},
    {"\\cf1", "fo:color", "#ff0000"},
    {"\\highlight2", "fo:background-color", "#0000ff"},
    {"\\qc", "fo:text-align", "center"},
    {"\\qr", "fo:text-align", "end"},
    {"\\qj", "fo:text-align", "justify"},
    {"\\li720", "fo:margin-left", "0.5in"},
    {"\\ri720", "fo:margin-right", "0.5in"},
    {"\\fi360", "fo:text-indent", "0.25in"},
    {"\\sb120", "fo:margin-top", "0.0835in"},
    {"\\sa240", "fo:margin-bottom", "0.1665in"},
    {"\\sl360\\slmult1", "fo:line-height", "150%"},
    {"\\tqr\\tldot\\tx7200", "tabs", "5in/right/."},
    {"\\tqdec\\tx1440", "tabs", "1in/char/"},
    {"\\page", "fo:break-before", "page"},
    {"{\\*\\pn\\pnlvlblt\\pnf1{\\pntxtb\\'b7}}\\fi-360\\li720", "list", "bullet"},
    // LibreOffice takes the numbers of this notation as decimal ones, whatever their kind.
    {"{\\*\\pn\\pnlvlbody\\pnlcrm{\\pntxta)}}\\fi-360\\li720", "list", "1"},
};

/// Every format in a paragraph of its own, through this reader and writer, then converted.
void WrittenHere(const QString& folder) {
  QByteArray body;
  int number = 0;
  for (const Expected& row : expected) {
    body += QByteArray("\\pard\\plain\\f0\\fs20 ") + row.words + " formato" + QByteArray::number(number++) +
            "\\u241?\\u8364?\\par\r\n";
  }
  body +=
      "\\pard{\\pict\\pngblip\\picwgoal300\\pichgoal300 "
      "89504e470d0a1a0a0000000d4948445200000001000000010806000000"
      "1f15c4890000000d49444154789c6360606060000000050001a5f645400000000049454e44ae426082} "
      "{\\field{\\*\\fldinst{HYPERLINK \"https://ejemplo.es/\"}}{\\fldrslt enlace}}\\par";
  auto document = support::Document(support::Letter(body));
  QTextCursor cursor(document.get());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(u" fin"_s);
  WriteFile(folder + u"/here.rtf"_s, rtf::Writer(*document).Write());
  Check(Convert(folder, u"fodt"_s, {folder + u"/here.rtf"_s}), u"converted"_s);
  const QList<interop::Run> runs = interop::ReadRuns(folder + u"/here.fodt"_s);
  number = 0;
  for (const Expected& row : expected) {
    const QString text = u"formato%1ñ€"_s.arg(number++);
    bool found = false;
    QString value;
    for (const interop::Run& run : runs) {
      if (run.text == text) {
        found = true;
        value = run.attributes.value(QString::fromLatin1(row.attribute));
      }
    }
    Check(
        found && value.startsWith(QString::fromLatin1(row.value)),
        u"written here: %1 -> %2 %3"_s.arg(QString::fromLatin1(row.words), QString::fromLatin1(row.attribute), value));
  }
  const auto has = [&](const QString& text, const QString& attribute, const QString& value) {
    return std::any_of(runs.begin(), runs.end(), [&](const interop::Run& run) {
      return run.text.contains(text) && (attribute.isEmpty() || run.attributes.value(attribute) == value);
    });
  };
  Check(has(u"@"_s, {}, {}), u"written here: picture"_s);
  Check(has(u"enlace"_s, u"link"_s, u"https://ejemplo.es/"_s), u"written here: link"_s);
}

/// Whether the paragraphs of `expected` look the same.
void CompareFormats(const QTextDocument& mine, const QTextDocument& theirs, const QString& what) {
  for (QTextBlock block = mine.begin(); block.isValid(); block = block.next()) {
    QTextBlock other = theirs.begin();
    while (other.isValid() && other.text() != block.text()) {
      other = other.next();
    }
    if (!other.isValid() || !block.text().startsWith(u"formato")) {
      continue;
    }
    const QTextCharFormat a = block.begin().fragment().charFormat();
    const QTextCharFormat b = other.begin().fragment().charFormat();
    const auto near = [](double x, double y) { return qAbs(x - y) < 1.5; };
    const QTextBlockFormat p = block.blockFormat();
    const QTextBlockFormat q = other.blockFormat();
    const bool characters = a.fontPointSize() == b.fontPointSize() && a.fontWeight() == b.fontWeight() &&
                            a.fontItalic() == b.fontItalic() && a.fontStrikeOut() == b.fontStrikeOut() &&
                            a.underlineStyle() == b.underlineStyle() &&
                            a.verticalAlignment() == b.verticalAlignment() && a.fontFamilies() == b.fontFamilies() &&
                            a.background() == b.background() &&
                            // A text without a colour of its own gets one there where its background asks for it.
                            (a.foreground() == QBrush() || a.foreground() == b.foreground());
    const bool paragraph = p.alignment() == q.alignment() && near(p.leftMargin(), q.leftMargin()) &&
                           near(p.rightMargin(), q.rightMargin()) && near(p.textIndent(), q.textIndent()) &&
                           near(p.topMargin(), q.topMargin()) && near(p.bottomMargin(), q.bottomMargin()) &&
                           near(p.lineHeight(), q.lineHeight()) && p.pageBreakPolicy() == q.pageBreakPolicy() &&
                           (block.textList() == nullptr) == (other.textList() == nullptr);
    Check(characters && paragraph, u"%1: %2%3%4"_s.arg(what, block.text(), characters ? QString() : u" characters"_s,
                                                       paragraph ? QString() : u" paragraph"_s));
  }
}

/// The converted file comes back as RTF of LibreOffice's making, and shows the same here.
void WrittenThere(const QString& folder) {
  const auto mine = support::Document([&] {
    QFile file(folder + u"/here.rtf"_s);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }());
  QDir(folder).mkdir(u"back"_s);
  QFile::copy(folder + u"/here.fodt"_s, folder + u"/there.fodt"_s);
  Check(Convert(folder, u"rtf"_s, {folder + u"/there.fodt"_s}), u"converted back"_s);
  QFile file(folder + u"/there.rtf"_s);
  const auto theirs = support::Document(file.open(QFile::ReadOnly) ? file.readAll() : QByteArray());
  Check(support::Text(*mine).simplified() == support::Text(*theirs).simplified(), u"written there: text"_s);
  CompareFormats(*mine, *theirs, u"written there"_s);
}

/// Words without the marks of lists, spaces and hyphens of any kind the same.
QStringList WordsOf(QString text) {
  text.remove(QChar::ObjectReplacementCharacter).remove(QChar::SoftHyphen).remove(QChar(0xFEFF));
  text.replace(QChar(0x2011), u'-');
  QStringList words = text.simplified().split(u' ', Qt::SkipEmptyParts);
  static const QRegularExpression mark(u"^([•◦▪·o\uF0B7§]|[0-9a-z]{1,4}[.)])$"_s);
  words.removeIf([](const QString& word) { return mark.match(word).hasMatch(); });
  return words;
}

/// What a paragraph or text has that says nothing of it: "fo:margin-left=0in". Margins of a list's item do.
bool IsInitial(const QString& name, const QString& value, bool isItem) {
  static const QMap<QString, QStringList> initial{
      {u"fo:margin-left"_s, {u"0in"_s}},
      {u"fo:margin-right"_s, {u"0in"_s}},
      {u"fo:margin-top"_s, {u"0in"_s}},
      {u"fo:margin-bottom"_s, {u"0in"_s}},
      {u"fo:text-indent"_s, {u"0in"_s}},
      {u"fo:text-align"_s, {u"start"_s}},
      // Black and automatic, which LibreOffice says by an opacity.
      {u"fo:color"_s, {u"#000000"_s}},
      {u"loext:opacity"_s, {u"0%"_s, u"100%"_s}},
      {u"fo:font-weight"_s, {u"normal"_s}},
      {u"fo:font-style"_s, {u"normal"_s}},
      {u"fo:background-color"_s, {u"transparent"_s}},
      {u"style:line-height-at-least"_s, {u"0in"_s}},
      {u"style:writing-mode"_s, {u"lr-tb"_s, u"page"_s}},
      {u"style:text-underline-style"_s, {u"none"_s}},
      {u"style:text-line-through-style"_s, {u"none"_s}},
      {u"style:auto-text-indent"_s, {u"false"_s}},
      {u"style:contextual-spacing"_s, {u"false"_s}},
      {u"style:justify-single-word"_s, {u"false"_s}},
  };
  return initial.value(name).contains(value) && !(isItem && value == u"0in");
}

/// Neighbours with equal attributes as one, without what does not show: revision numbers, fonts of other scripts; and
/// without `typed`.
QStringList Shown(const QString& path, QChar typed = {}) {
  QStringList shown;
  QString before;
  for (interop::Run& run : interop::ReadRuns(path)) {
    if (!typed.isNull() && run.text.remove(typed).isEmpty()) {
      continue;
    }
    QString attributes;
    for (auto it = run.attributes.begin(); it != run.attributes.end(); ++it) {
      if (!it.key().startsWith(u"officeooo:") && !it.key().endsWith(u"-asian") && !it.key().endsWith(u"-complex") &&
          !IsInitial(it.key(), it.value(), run.attributes.contains(u"list"_s))) {
        attributes += it.key() + u'=' + it.value() + u"; "_s;
      }
    }
    const bool isMark = run.text == interop::paragraphMark || run.text == interop::cellMark;
    if (shown.isEmpty() || isMark || attributes != before) {
      shown.append(attributes + u'\t');
    }
    shown.last() += run.text;
    before = isMark ? QString() : attributes;
  }
  return shown;
}

QString FirstDifference(const QStringList& one, const QStringList& other) {
  qsizetype at = 0;
  while (at < qMin(one.size(), other.size()) && one[at] == other[at]) {
    ++at;
  }
  if (at == one.size() && at == other.size()) {
    return {};
  }
  QStringList lost = one.value(at).section(u'\t', 0, 0).split(u"; "_s);
  QStringList added = other.value(at).section(u'\t', 0, 0).split(u"; "_s);
  const QStringList before = lost;
  lost.removeIf([&](const QString& part) { return added.contains(part); });
  added.removeIf([&](const QString& part) { return before.contains(part); });
  return u"'%1' [%2] -> '%3' [%4]"_s.arg(one.value(at).section(u'\t', 1).left(50), lost.join(u' ').left(300),
                                         other.value(at).section(u'\t', 1).left(50), added.join(u' ').left(300));
}

/// What the clipboard carries between two programs: a selection from here, and theirs inserted here. The letter of all
/// formats, with a table behind it.
void Clipboard(const QString& folder) {
  QFile here(folder + u"/here.rtf"_s);
  QByteArray content = here.open(QFile::ReadOnly) ? here.readAll() : QByteArray();
  content.insert(content.lastIndexOf('}'),
                 "\\pard\\trowd\\cellx3000\\cellx6000\\intbl uno\\cell dos\\cell\\row"
                 "\\trowd\\cellx3000\\cellx6000\\intbl tres\\cell cuatro\\cell\\row\\pard fin\\par");
  const auto letter = support::Document(content);
  QTextCursor all(letter.get());
  all.select(QTextCursor::Document);
  WriteFile(folder + u"/letter.rtf"_s, rtf::Write(*letter));
  WriteFile(folder + u"/clipboard.rtf"_s, rtf::WriteSelection(all));
  Check(Convert(folder, u"fodt"_s, {folder + u"/letter.rtf"_s, folder + u"/clipboard.rtf"_s}), u"copied"_s);
  const QString difference = FirstDifference(Shown(folder + u"/letter.fodt"_s), Shown(folder + u"/clipboard.fodt"_s));
  Check(difference.isEmpty(), u"copied here, pasted there: %1"_s.arg(difference));

  const QString back = folder + u"/back"_s;
  Check(Convert(back, u"rtf"_s, {folder + u"/clipboard.fodt"_s}), u"copied there"_s);
  QFile there(back + u"/clipboard.rtf"_s);
  const auto pasted = support::Document("{\\rtf1 }");
  QTextCursor at(pasted.get());
  rtf::Insert(there.open(QFile::ReadOnly) ? there.readAll() : QByteArray(), at);
  CompareFormats(*letter, *pasted, u"copied there, pasted here"_s);
  const auto tables = [](const QTextDocument& document) { return document.rootFrame()->childFrames().size(); };
  Check(tables(*letter) == 1 && tables(*pasted) == 1, u"copied there, pasted here: the table"_s);
}

/// The same filled letter on paper, printed here and there: the text of each page, and each line within a millimetre.
void PrintedLetters(const QString& folder) {
  const QByteArray text =
      "Gracias a personas como usted la Fundaci\\'f3n ha podido atender este a\\'f1o a m\\'e1s de doscientas familias, "
      "abrir un comedor nuevo y conceder treinta becas de estudio. ";
  const QByteArray begin =
      "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\froman Liberation Serif;}{\\f1\\fswiss Liberation Sans;}}"
      "\\paperw11906\\paperh16838{\\footer\\pard\\qc\\f0\\fs18 Calle del Olivar, 24\\par}\\f0\\fs24\\pard\\qr Madrid, "
      "[dd/mm/aaaa]\\par\\pard [Tratamiento] [Nombre y apellidos]\\par [Direccion]\\par [Pais]\\par\\par ";
  const QByteArray end = "\\pard\\qj " + text.repeated(4) + "\\par\\pard\\li720\\fi-360\\f1\\fs20 " + text.repeated(2) +
                         "\\par\\pard\\sb240\\qc\\b [Nombre y apellidos]\\b0\\par}";
  const QByteArray table = "\\trowd\\trgaph0\\cellx3000\\cellx8500\\pard\\intbl [Nombre y apellidos]\\cell " + text +
                           "\\cell\\row\\trowd\\trgaph0\\cellx3000\\cellx8500\\pard\\intbl dos\\cell "
                           "tres\\cell\\row\\pard\\par ";
  // No longer ones: lines are up to a half-point higher here, which makes a full page one line.
  const std::pair<QString, QByteArray> letters[] = {{u"plain"_s, begin + end}, {u"table"_s, begin + table + end}};
  for (const auto& [name, content] : letters) {
    documents::LetterTemplate letter(support::Document(content), documents::Margins());
    QStringList values;
    for (const documents::Marker marker : letter.Markers()) {
      values.append(marker == documents::Marker::Date      ? u"22/11/2026"_s
                    : marker == documents::Marker::Country ? QString()
                    : marker == documents::Marker::Street  ? u"Calle de los Álamos, 69"_s
                    : marker == documents::Marker::Title   ? u"D.ª"_s
                                                           : u"Adela Abadía Fariñas"_s);
    }
    const auto filled = letter.Filled(values);
    const QString file = folder + u"/printed-"_s + name;
    WriteFile(file + u".rtf"_s, rtf::Write(*filled));
    interop::PrintLetter(*filled, file + u"-here.pdf"_s);
    Check(Convert(folder, u"pdf"_s, {file + u".rtf"_s}), u"printed there: %1"_s.arg(name));
    const QList<interop::Line> ours = interop::LinesOf(file + u"-here.pdf"_s);
    const QStringList difference = interop::Differences(ours, interop::LinesOf(file + u".pdf"_s));
    Check(!ours.isEmpty() && difference.isEmpty(), u"on paper: %1, %2 lines"_s.arg(name).arg(ours.size()));
    for (const QString& line : difference) {
      std::printf("     %s\n", qPrintable(line));
    }
  }
}

/// As interop::ReadRows has them.
void CollectRows(const QTextTable& table, QList<QStringList>& rows) {
  for (int row = 0; row < table.rows(); ++row) {
    QStringList cells;
    for (int column = 0; column < table.columns(); ++column) {
      const QTextTableCell cell = table.cellAt(row, column);
      if (cell.row() != row || cell.column() != column) {
        continue;
      }
      QString text;
      for (auto part = cell.begin(); !part.atEnd(); ++part) {
        if (const auto* inner = qobject_cast<const QTextTable*>(part.currentFrame())) {
          CollectRows(*inner, rows);
        }
        text += part.currentBlock().text() + u' ';
      }
      const bool isOne = cell.columnSpan() * cell.rowSpan() == 1;
      cells.append(text.simplified() + (isOne ? QString() : u"(%1x%2)"_s.arg(cell.columnSpan()).arg(cell.rowSpan())));
    }
    rows.append(cells);
  }
}

QList<QStringList> RowsOf(const QTextDocument& document) {
  QList<QStringList> rows;
  for (const QTextFrame* frame : document.rootFrame()->childFrames()) {
    if (const auto* table = qobject_cast<const QTextTable*>(frame)) {
      CollectRows(*table, rows);
    }
  }
  return rows;
}

/// Tables of every origin, cell by cell: the letter's own after an edit, pieces of them, those of a page of the web or
/// a spreadsheet, which come to the clipboard as HTML.
void Tables(const QString& folder) {
  const QByteArray rows =
      "\\trowd\\trgaph70\\clmgf\\cellx1000\\clmrg\\cellx3000\\clvmgf\\cellx4500\\pard\\intbl a\\cell\\cell b\\par "
      "c\\cell\\row"
      "\\trowd\\trgaph70\\cellx1000\\cellx3000\\clvmrg\\cellx4500\\pard\\intbl d\\cell e\\cell\\cell\\row"
      "\\trowd\\trgaph70\\cellx2000\\cellx4500\\pard\\intbl f\\cell\\pard\\intbl\\itap2 n\\nestcell o\\nestcell"
      "{\\*\\nesttableprops\\trowd\\cellx900\\cellx1900\\nestrow}{\\nonesttables\\par}\\pard\\intbl g\\cell\\row\\pard "
      "fin\\par";
  const auto letter = support::Document(support::Letter(rows));
  QTextCursor(letter->find(u"d"_s)).insertText(u"dd"_s);
  const auto* table = qobject_cast<const QTextTable*>(letter->rootFrame()->childFrames().first());
  QTextCursor piece = table->cellAt(1, 0).firstCursorPosition();
  piece.setPosition(table->cellAt(1, 1).lastPosition(), QTextCursor::KeepAnchor);
  QTextDocument page;
  QTextCursor(&page).insertFragment(QTextDocumentFragment::fromHtml(
      u"<table border=1><tr><th colspan=2>t</th><td rowspan=2>u<br>v</td></tr><tr><td>w</td><td>x</td></tr></table>"_s));
  // As spreadsheets have it: columns with widths, empty cells.
  QTextDocument sheet;
  QTextCursor(&sheet).insertFragment(QTextDocumentFragment::fromHtml(
      u"<table><colgroup><col width=80><col width=120></colgroup><tr><td align=right>1,5</td><td></td></tr>"
      "<tr><td></td><td bgcolor=#ffff00>suma</td></tr></table>"_s));
  const std::pair<const char*, QByteArray> origins[] = {{"edited", rtf::Write(*letter)},
                                                        {"anew", rtf::Writer(*letter).Write()},
                                                        {"piece", rtf::WriteSelection(piece)},
                                                        {"page", rtf::Write(page)},
                                                        {"sheet", rtf::Write(sheet)}};
  QStringList files;
  for (const auto& [name, content] : origins) {
    files.append(folder + u"/table-%1.rtf"_s.arg(QLatin1String(name)));
    WriteFile(files.last(), content);
  }
  Check(Convert(folder, u"fodt"_s, files), u"tables converted"_s);
  for (const auto& [name, content] : origins) {
    const QList<QStringList> here = RowsOf(*support::Document(content));
    const QList<QStringList> there = interop::ReadRows(folder + u"/table-%1.fodt"_s.arg(QLatin1String(name)));
    QString shown;
    for (qsizetype i = 0; i < qMax(here.size(), there.size()); ++i) {
      if (here.value(i) != there.value(i)) {
        shown += u" '%1' there '%2'"_s.arg(here.value(i).join(u'|'), there.value(i).join(u'|'));
      }
    }
    Check(shown.isEmpty() && !here.isEmpty(),
          u"cells of %1: %2 rows%3"_s.arg(QLatin1String(name)).arg(here.size()).arg(shown));
  }
}

/// Types a letter that it does not have behind the first one that it has, and returns it; null where there is none.
QChar TypeOneLetter(QTextDocument& document) {
  const QString text = document.toPlainText();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    static const QRegularExpression aLetter(u"\\w"_s, QRegularExpression::UseUnicodePropertiesOption);
    const qsizetype at = block.text().indexOf(aLetter);
    for (char16_t letter = at < 0 ? u'{' : u'A'; letter <= u'z'; ++letter) {
      if (QChar::isLetter(letter) && !text.contains(QChar(letter))) {
        QTextCursor cursor(block);
        cursor.setPosition(block.position() + static_cast<int>(at));
        cursor.movePosition(QTextCursor::NextCharacter);
        cursor.insertText(QChar(letter));
        return letter;
      }
    }
  }
  return {};
}

/// What LibreOffice shows of each letter, and of what is written when one letter has been typed, or the whole anew.
void EditedLetters(const QString& folder, const QStringList& files, bool whole) {
  const QString before = folder + u"/before"_s;
  const QString after = folder + (whole ? u"/whole"_s : u"/typed"_s);
  QDir(folder).mkpath(before + u"/letters"_s);
  QDir(folder).mkpath(after + u"/letters"_s);
  QStringList originals;
  QStringList edited;
  QList<QChar> typed;
  for (const QString& path : files) {
    // At the same depth, since links are written as seen from the converted file.
    originals.append(before + u"/letters/"_s + QFileInfo(path).fileName());
    edited.append(after + u"/letters/"_s + QFileInfo(path).fileName());
    QFile letter(path);
    const QByteArray content = letter.open(QFile::ReadOnly) ? letter.readAll() : QByteArray();
    WriteFile(originals.last(), content);
    const auto document = support::Document(content);
    typed.append(whole ? QChar() : TypeOneLetter(*document));
    WriteFile(edited.last(), typed.last().isNull() ? rtf::Writer(*document).Write() : rtf::Write(*document));
  }
  Check(Convert(before, u"fodt"_s, originals) && Convert(after, u"fodt"_s, edited), u"edited letters converted"_s);
  const char* how = whole ? "written anew" : "with a letter typed";
  int same = 0;
  for (qsizetype i = 0; i < files.size(); ++i) {
    const QString name = u'/' + QFileInfo(files[i]).completeBaseName() + u".fodt"_s;
    const QString difference = FirstDifference(Shown(before + name), Shown(after + name, typed[i]));
    same += difference.isEmpty() ? 1 : 0;
    if (!difference.isEmpty()) {
      std::printf("  ~ %s %s: %s\n", qPrintable(QFileInfo(files[i]).fileName()), how, qPrintable(difference));
    }
  }
  std::printf("%s: %d of %lld show the same\n", how, same, static_cast<long long>(files.size()));
}

void EditedLetters(const QString& folder, const QStringList& files) {
  EditedLetters(folder, files, false);
  EditedLetters(folder, files, true);
}

QStringList LettersOf(const QStringList& patterns) {
  QStringList files;
  for (const QFileInfo& info : QDir(qEnvironmentVariable("KEL_RTF_DIR")).entryInfoList(patterns)) {
    files.append(info.filePath());
  }
  return files;
}

void RealFiles(const QString& folder) {
  if (!qEnvironmentVariableIsSet("KEL_RTF_DIR")) {
    std::printf("KEL_RTF_DIR names no folder of letters: real files are NOT compared\n");
    return;
  }
  const QStringList files = LettersOf({u"*.rtf"_s});
  Check(Convert(folder, u"txt:Text (encoded):UTF8"_s, files), u"real files converted"_s);
  int same = 0;
  for (const QString& path : files) {
    QFile text(folder + u'/' + QFileInfo(path).completeBaseName() + u".txt"_s);
    QFile letter(path);
    if (!text.open(QFile::ReadOnly) || !letter.open(QFile::ReadOnly)) {
      std::printf("  ? %s: not converted\n", qPrintable(path));
      continue;
    }
    const QStringList theirs = WordsOf(QString::fromUtf8(text.readAll()));
    const QStringList ours = WordsOf(support::Document(letter.readAll())->toPlainText());
    if (theirs == ours) {
      ++same;
      continue;
    }
    qsizetype at = 0;
    while (ours.value(at) == theirs.value(at)) {
      ++at;
    }
    std::printf("  ~ %s: here '%s', there '%s'\n", qPrintable(QFileInfo(path).fileName()),
                qPrintable(ours.mid(at, 6).join(u' ')), qPrintable(theirs.mid(at, 6).join(u' ')));
  }
  std::printf("real files: %d of %lld with the same text\n", same, static_cast<long long>(files.size()));
  EditedLetters(folder, files);
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QTemporaryDir folder;
  const QStringList patterns = QCoreApplication::arguments().mid(1);
  if (patterns.isEmpty()) {
    WrittenHere(folder.path());
    WrittenThere(folder.path());
    Clipboard(folder.path());
    PrintedLetters(folder.path());
    Tables(folder.path());
    RealFiles(folder.path());
  } else {
    EditedLetters(folder.path(), LettersOf(patterns));
  }
  std::printf("%d differences\n", differences);
  return differences == 0 ? 0 : 1;
}
