#include "letters/editor/LetterEdit.h"

#include "documents/letter/Margins.h"
#include "documents/letter/SmallCapitals.h"
#include "documents/rtf/FittedTabs.h"
#include "documents/rtf/PictureFile.h"
#include "documents/rtf/Rtf.h"
#include "letters/editor/Clipboard.h"
#include "letters/editor/Formatting.h"
#include "letters/editor/LayoutLimits.h"
#include "letters/editor/ParagraphRange.h"
#include "letters/editor/TableKeys.h"
#include "platform/process/TerminationSignals.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTextLayout>
#include <QTextList>

#include <utility>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

// A notch of the wheel, in the eighths of a degree that its events count.
constexpr int wheelNotch = 120;
// RTF's own distance of tab stops, half an inch, in pixels of a document.
constexpr double defaultTabs = 48;

// In half-points.
constexpr int caretWidth = 2;

// So high that it stands on a page with the line that it is in, in twips.
constexpr int picturesHeight = 12000;

void ClearPageBreak(const QTextCursor& cursor) {
  ChangeParagraphs(cursor, [](QTextBlockFormat& format) { format.clearProperty(QTextFormat::PageBreakPolicy); });
}

QRect Scaled(const QRectF& rect, double factor) {
  return QRectF(rect.topLeft() * factor, rect.size() * factor).toAlignedRect();
}

bool HasOldLines(const QTextBlock& block) {
  const QTextLayout& layout = *block.layout();
  if (layout.lineCount() == 0) {
    return false;
  }
  const QTextLine last = layout.lineAt(layout.lineCount() - 1);
  return last.textStart() + last.textLength() != block.length() - 1;
}

// Where text is taken away in front of a paragraph that stays, and where one undo takes several changes back, Qt may
// report a change that ends too early. The lines of paragraphs behind it are not made anew then: they go on beyond
// their text, and justifying them reads memory that is none.
void LayOutAllChanges(QTextDocument& document) {
  QObject::connect(&document, &QTextDocument::contentsChange, &document,
                   [&document, redoSteps = 0](int from, int, int added) mutable {
                     const auto layOut = [&document](const QTextBlock& block) {
                       document.markContentsDirty(block.position(), block.length());
                     };
                     if (const QTextBlock behind = document.findBlock(from + added); behind.isValid()) {
                       layOut(behind);
                     }
                     const int before = std::exchange(redoSteps, document.availableRedoSteps());
                     for (QTextBlock block = document.begin(); redoSteps != before && block.isValid();
                          block = block.next()) {
                       if (HasOldLines(block)) {
                         layOut(block);
                       }
                     }
                   });
}

// Empty, with the settings that what is read into it must find. Letters keep their widths at any size on the screen.
std::unique_ptr<QTextDocument> NewDocument(QFont font) {
  auto document = std::make_unique<QTextDocument>();
  font.setHintingPreference(QFont::PreferNoHinting);
  document->setDefaultFont(font);
  document->setDocumentMargin(0);
  document->setUseDesignMetrics(true);
  return document;
}

const QString tooHeavy =
    u"Tiene un párrafo demasiado largo, o con demasiados cambios de formato. Divídalo en varios."_s;

std::unique_ptr<QTextDocument> Parsed(const QByteArray& content) {
  auto document = std::make_unique<QTextDocument>();
  document->setUndoRedoEnabled(false);
  rtf::Read(content, *document);
  return document;
}

// The text alone, in lines that are laid out one by one.
std::unique_ptr<QTextDocument> InLines(const QTextDocument& letter) {
  constexpr qsizetype lineLength = 200;
  QString lines;
  for (QTextBlock block = letter.begin(); block.isValid(); block = block.next()) {
    const QString text = block.text().remove(QChar::ObjectReplacementCharacter);
    qsizetype start = 0;
    do {
      const qsizetype end = start + lineLength;
      const bool splitsCharacter = end < text.size() && text[end].isLowSurrogate();
      lines += text.mid(start, splitsCharacter ? lineLength - 1 : lineLength) + u'\n';
      start = splitsCharacter ? end - 1 : end;
    } while (start < text.size());
  }
  auto plain = NewDocument(letter.defaultFont());
  plain->setUndoRedoEnabled(false);
  plain->setPlainText(lines);
  return plain;
}

}  // namespace

LetterEdit::LetterEdit(QWidget* parent)
    : QTextEdit(parent), m_steps(std::make_unique<UndoSteps>(*this)), m_scale(ScreenScale(logicalDpiX())) {
  setFrameStyle(QFrame::NoFrame);
  setViewportMargins(0, 0, 0, 0);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setAcceptRichText(true);
  setLineWrapMode(QTextEdit::FixedPixelWidth);
  setCursorWidth(caretWidth);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Hidden, they would move the text all the same.
  for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()}) {
    connect(bar, &QScrollBar::rangeChanged, bar, [bar] { bar->setRange(0, 0); });
  }
  connect(this, &QTextEdit::selectionChanged, viewport(), qOverload<>(&QWidget::update));
  connect(this, &QTextEdit::cursorPositionChanged, this, &LetterEdit::ShowCaretNow);
  connect(this, &QTextEdit::cursorPositionChanged, this, [this] {
    const int before = std::exchange(m_caret, textCursor().position());
    LeaveJoint(*this, before);
  });
  Start(font());
}

// The document refers to the device that it is laid out for.
LetterEdit::~LetterEdit() {
  document()->documentLayout()->setPaintDevice(nullptr);
}

rtf::Report LetterEdit::Load(const QString& content) {
  auto letter = NewDocument(document()->defaultFont());
  const rtf::Limits untilASignal{.goOn = [] { return !process::TerminationSignals::IsOneUntold(); }};
  const rtf::Report report = rtf::Read(content, *letter, untilASignal, TextTwips());
  m_original.reset();
  if (!HeaviestOf(*letter).IsLight()) {
    m_original = content;
    letter = InLines(*letter);
  }
  Show(letter.release());
  setReadOnly(IsForReading());
  return report;
}

void LetterEdit::Start(const QFont& font) {
  auto letter = NewDocument(font);
  QTextOption option = letter->defaultTextOption();
  option.setTabStopDistance(defaultTabs);
  letter->setDefaultTextOption(option);
  m_original.reset();
  Show(letter.release());
  setReadOnly(false);
}

void LetterEdit::Show(QTextDocument* letter) {
  letter->setParent(this);
  documents::ShowSmallCapitals(*letter, 0, letter->characterCount());
  connect(letter, &QTextDocument::contentsChange, letter,
          [letter](int from, int, int added) { documents::ShowSmallCapitals(*letter, from, added); });
  LayOutAllChanges(*letter);
  const double tabs = letter->defaultTextOption().tabStopDistance();
  const QPointer<QTextDocument> before = document();
  letter->documentLayout()->setPaintDevice(&m_device);
  rtf::FitTabs(*letter, TextTwips());
  setDocument(letter);
  m_steps = std::make_unique<UndoSteps>(*this);
  // The base class's own says nothing of the format at its place until it moves.
  setTextCursor(QTextCursor(letter));
  setTabStopDistance(tabs);
  letter->setModified(false);
  const QAbstractTextDocumentLayout* layout = letter->documentLayout();
  connect(layout, &QAbstractTextDocumentLayout::documentSizeChanged, this,
          [this](const QSizeF& size) { Q_EMIT HeightChanged(documents::FromHalfPoints(size.height())); });
  connect(layout, &QAbstractTextDocumentLayout::update, this, &LetterEdit::Repaint);
  if (before && before->parent() == this) {
    delete before;
  }
}

QString LetterEdit::Content() const {
  return m_original ? *m_original : rtf::WriteText(*document());
}

void LetterEdit::SetTextWidth(Twips width) {
  // Also for the same width the base class would lay the whole letter out again.
  if (const int halfPoints = std::max(1, ToHalfPoints(width)); halfPoints != lineWrapColumnOrWidth()) {
    setLineWrapColumnOrWidth(halfPoints);
    m_steps->Hide([&] { rtf::FitTabs(*document(), width.count); });
  }
}

void LetterEdit::SetScale(Scale scale) {
  m_scale = scale;
  viewport()->update();
}

double LetterEdit::PixelsPerHalfPoint() const {
  return m_scale.pixelsPerTwip * documents::FromHalfPoints(1).count;
}

QRect LetterEdit::CaretRect() const {
  return Scaled(cursorRect(), PixelsPerHalfPoint());
}

void LetterEdit::TypeText(const QString& text) {
  if (isReadOnly()) {
    return;
  }
  QTextCursor cursor = textCursor();
  // A block of its own, or undo would take what was typed around it back, too.
  cursor.beginEditBlock();
  cursor.insertText(text);
  cursor.endEditBlock();
  ensureCursorVisible();
}

int LetterEdit::TextTwips() const {
  const int width = lineWrapColumnOrWidth();
  return width > 0 ? documents::FromHalfPoints(width).count : documents::TextWidth({}).count;
}

QString LetterEdit::InsertPicture(const QByteArray& file) {
  const rtf::PictureLetter picture = rtf::LetterOfPicture(file, TextTwips(), picturesHeight);
  if (picture.reason.isEmpty()) {
    PasteRich(picture.content);
  }
  return picture.reason;
}

void LetterEdit::InsertPageNumber() {
  if (isReadOnly()) {
    return;
  }
  const QTextCharFormat format = currentCharFormat();
  QTextCursor cursor = textCursor();
  const int start = cursor.selectionStart();
  cursor.beginEditBlock();
  rtf::Insert("{\\rtf1{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}}", cursor);
  // It looks like the text around it.
  QTextCursor field(document());
  field.setPosition(start);
  field.setPosition(cursor.position(), QTextCursor::KeepAnchor);
  field.mergeCharFormat(format);
  cursor.endEditBlock();
  setTextCursor(cursor);
  setCurrentCharFormat(format);
}

rtf::Report LetterEdit::ReplaceAll(const QByteArray& content) {
  if (!HeaviestOf(*Parsed(content)).IsLight()) {
    return {.outcome = rtf::Outcome::Refused, .reason = tooHeavy, .carried = {}, .dropped = {}};
  }
  QTextCursor all(document());
  all.select(QTextCursor::Document);
  const rtf::Report report = rtf::Insert(content, all);
  rtf::FitTabs(*document(), TextTwips());
  return report;
}

QMimeData* LetterEdit::createMimeDataFromSelection() const {
  return ToClipboard(textCursor());
}

bool LetterEdit::canInsertFromMimeData(const QMimeData* source) const {
  return HasText(*source) || source->hasImage();
}

void LetterEdit::insertFromMimeData(const QMimeData* source) {
  if (const QByteArray content = RtfFrom(*source); !content.isEmpty()) {
    PasteRich(content);
  } else if (!source->hasText() && source->hasImage()) {
    PasteImage(ImageFrom(*source));
  } else {
    PasteText(PlainFrom(*source));
  }
  ensureCursorVisible();
}

void LetterEdit::PasteImage(const QImage& image) {
  const rtf::PictureLetter picture = rtf::LetterOfPicture(image, TextTwips(), picturesHeight);
  if (picture.reason.isEmpty()) {
    PasteRich(picture.content);
  } else {
    Q_EMIT PasteRefused(picture.reason);
  }
}

void LetterEdit::PasteRich(const QByteArray& content) {
  QTextCursor cursor = textCursor();
  if (!(WeightOf(cursor.block()) + HeaviestOf(*Parsed(content))).IsLight()) {
    Q_EMIT PasteRefused(tooHeavy);
    return;
  }
  const rtf::Report report = rtf::Insert(content, cursor);
  if (report.outcome == rtf::Outcome::Refused) {
    Q_EMIT PasteRefused(report.reason);
  } else {
    rtf::FitTabs(*document(), TextTwips());
    setTextCursor(cursor);
  }
}

// A page break belongs to the paragraph that begins the page, not to those that are made of it.
void LetterEdit::PasteText(const QString& text) {
  QTextCursor cursor = textCursor();
  if (!(WeightOf(cursor.block()) + HeaviestOf(QTextDocument(text))).IsLight()) {
    Q_EMIT PasteRefused(tooHeavy);
    return;
  }
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  const int start = cursor.position();
  cursor.insertText(text);
  QTextCursor added(document());
  added.setPosition(start);
  added.movePosition(QTextCursor::NextBlock);
  if (added.position() > start && added.position() <= cursor.position()) {
    added.setPosition(cursor.position(), QTextCursor::KeepAnchor);
    ClearPageBreak(added);
  }
  cursor.endEditBlock();
  setTextCursor(cursor);
}

void LetterEdit::keyPressEvent(QKeyEvent* event) {
  const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
  const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
  if (isReadOnly() && event->matches(QKeySequence::InsertParagraphSeparator)) {
    event->accept();
  } else if (control && (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)) {
    LeaveByTab(event->key() == Qt::Key_Tab);
  } else if (event->key() == Qt::Key_Menu || (shift && event->key() == Qt::Key_F10)) {
    Q_EMIT MenuWanted(viewport()->mapToGlobal(CaretRect().bottomRight()));
  } else if (!isReadOnly() && event->matches(QKeySequence::Undo)) {
    Undo();
  } else if (!isReadOnly() && event->matches(QKeySequence::Redo)) {
    Redo();
  } else if (HandleTableKey(*this, *event)) {
    event->accept();
  } else if (event->matches(QKeySequence::InsertParagraphSeparator)) {
    BreakParagraph();
  } else if (!control && (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)) {
    MoveByPage(event);
  } else {
    QTextEdit::keyPressEvent(event);
  }
}

// Return in an empty item ends the list. In an empty paragraph the base class would take its format away instead of
// making another one. A page break stays with the paragraph that begins the page.
void LetterEdit::BreakParagraph() {
  QTextCursor cursor = textCursor();
  if (cursor.block().textList() != nullptr && cursor.block().length() == 1) {
    LeaveList(*this);
    return;
  }
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  cursor.insertBlock();
  ClearPageBreak(cursor);
  cursor.endEditBlock();
  setTextCursor(cursor);
}

void LetterEdit::MoveByPage(QKeyEvent* event) {
  const int step = ToHalfPoints(m_pageStep);
  const bool down = event->key() == Qt::Key_PageDown;
  const bool keepsAnchor = (event->modifiers() & Qt::ShiftModifier) != 0;
  const QPoint target = cursorRect().center() + QPoint(0, down ? step : -step);
  QTextCursor cursor = textCursor();
  cursor.setPosition(cursorForPosition(target).position(),
                     keepsAnchor ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
  setTextCursor(cursor);
}

// QTextEdit lets the focus go to the next control only where Tab types nothing.
void LetterEdit::LeaveByTab(bool forward) {
  setTabChangesFocus(true);
  focusNextPrevChild(forward);
  setTabChangesFocus(false);
}

void LetterEdit::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    // It is the ground that scrolls.
    QCoreApplication::sendEvent(parentWidget(), event);
    return;
  }
  m_wheel += event->angleDelta().y();
  if (const int steps = m_wheel / wheelNotch; steps != 0) {
    m_wheel -= steps * wheelNotch;
    Q_EMIT ZoomWanted(steps);
  }
  event->accept();
}

void LetterEdit::focusInEvent(QFocusEvent* event) {
  QTextEdit::focusInEvent(event);
  ShowCaretNow();
  Q_EMIT FocusChanged(true);
}

void LetterEdit::focusOutEvent(QFocusEvent* event) {
  QTextEdit::focusOutEvent(event);
  m_blink.stop();
  viewport()->update();
  Q_EMIT FocusChanged(false);
}

}  // namespace letters
