#include "letters/editor/FormatTools.h"

#include "letters/editor/CommonDialog.h"
#include "letters/editor/Formatting.h"
#include "letters/editor/LetterWindow.h"
#include "letters/editor/cRichTextJustify.h"
#include "platform/automation/Conversion.h"

#include <QAction>
#include <QComboBox>
#include <QFontDatabase>
#include <QSignalBlocker>
#include <QToolBar>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

constexpr documents::Twips indentStep{737};
constexpr qint16 mostIndents = 13;
constexpr double smallestFont = 1;
constexpr double largestFont = 1638;

struct AttributeButton {
  Command command;
  Attribute attribute;
};
constexpr std::array attributes{AttributeButton{Command::Bold, Attribute::Bold},
                                AttributeButton{Command::Italic, Attribute::Italic},
                                AttributeButton{Command::Underline, Attribute::Underline},
                                AttributeButton{Command::StrikeOut, Attribute::StrikeOut},
                                AttributeButton{Command::Raised, Attribute::Raised},
                                AttributeButton{Command::Lowered, Attribute::Lowered},
                                AttributeButton{Command::Highlight, Attribute::Highlight}};

struct AlignmentButton {
  Command command;
  Qt::AlignmentFlag alignment;
};
constexpr std::array alignments{
    AlignmentButton{Command::Left, Qt::AlignLeft}, AlignmentButton{Command::Centre, Qt::AlignHCenter},
    AlignmentButton{Command::Right, Qt::AlignRight}, AlignmentButton{Command::Justify, Qt::AlignJustify}};

// A letter may name a font that this machine lacks: it stands in the list all the same, behind the others.
void ShowItem(QComboBox* box, const QString& text) {
  const QSignalBlocker blocked(box);
  if (box->findText(text, Qt::MatchFixedString) < 0 && !box->isEditable()) {
    box->addItem(text);
  }
  box->setCurrentIndex(box->findText(text, Qt::MatchFixedString));
  if (box->isEditable()) {
    box->setEditText(text);
  }
}

}  // namespace

void FormatTools::FillFontBoxes() {
  const QSignalBlocker blocked(m_window.cboFuentes);
  m_window.cboFuentes->clear();
  m_window.cboFuentes->addItems(QFontDatabase::families());
  ShowItem(m_window.cboFuentes, u"Times New Roman"_s);
  ShowItem(m_window.cboTamaño, u"8"_s);
}

bool FormatTools::Run(Command command) {
  LetterEdit& letter = *m_window.rtfCarta;
  if (ToggleAttribute(command)) {
    return true;
  }
  switch (command) {
    case Command::Left:
    case Command::Centre:
    case Command::Right:
      AlignSelection(command);
      return true;
    case Command::Justify:
      Justify();
      return true;
    case Command::Bullets:
      ToggleList(letter, ListKind::Bullets);
      return true;
    case Command::Numbers:
      ToggleList(letter, ListKind::Numbers);
      return true;
    case Command::Paragraph:
      ChooseSpacing();
      return true;
    case Command::IndentLess:
      if (m_indentLevel > 0) {
        MoveIndent(letter, -indentStep);
        --m_indentLevel;
      }
      return true;
    case Command::IndentMore:
      if (m_indentLevel < mostIndents) {
        MoveIndent(letter, indentStep);
        ++m_indentLevel;
      }
      return true;
    case Command::Font:
      ChooseFont();
      return true;
    case Command::Colour:
      ChooseColour();
      return true;
    default:
      return false;
  }
}

bool FormatTools::ToggleAttribute(Command command) {
  const auto* row = std::find_if(attributes.begin(), attributes.end(),
                                 [command](const AttributeButton& entry) { return entry.command == command; });
  if (row == attributes.end()) {
    return false;
  }
  Toggle(*m_window.rtfCarta, row->attribute);
  ShowAttributes();
  return true;
}

void FormatTools::ShowAttributes() {
  for (const AttributeButton& row : attributes) {
    m_window.commands->Check(row.command, Has(*m_window.rtfCarta, row.attribute));
  }
}

void FormatTools::AlignSelection(Command command) {
  for (const AlignmentButton& row : alignments) {
    if (row.command == command) {
      Align(*m_window.rtfCarta, row.alignment);
    }
  }
  PressAlignment(command);
}

void FormatTools::Justify() {
  const QTextCursor selection = m_window.rtfCarta->textCursor();
  try {
    const qint16 start = automation::CInt(selection.selectionStart());
    const qint16 end = automation::CInt(selection.selectionEnd());
    cRichTextJustify().Justify(*m_window.rtfCarta, start, end);
  } catch (...) {
    ShowSelection();
    throw;
  }
  PressAlignment(Command::Justify);
}

void FormatTools::PressAlignment(Command command) {
  for (const AlignmentButton& row : alignments) {
    m_window.commands->Button(row.command)->setChecked(row.command == command);
  }
  m_window.tlbFormato->repaint();
}

void FormatTools::ShowSelection() {
  ShowAttributes();
  const Qt::AlignmentFlag alignment = AlignmentOf(m_window.rtfCarta->textCursor());
  for (const AlignmentButton& row : alignments) {
    m_window.commands->Button(row.command)->setChecked(row.alignment == alignment);
  }
  ShowFontBoxes();
}

void FormatTools::ShowFontBoxes() {
  ShowItem(m_window.cboFuentes, FontName(*m_window.rtfCarta));
  ShowItem(m_window.cboTamaño, automation::CStr(FontSize(*m_window.rtfCarta)));
}

void FormatTools::ApplyFontName() {
  SetFontName(*m_window.rtfCarta, m_window.cboFuentes->currentText());
}

std::optional<double> FormatTools::TypedSize() const {
  const QString text = m_window.cboTamaño->currentText().replace(u'.', u',');
  if (!automation::IsNumeric(text)) {
    return std::nullopt;
  }
  const double size = automation::CDbl(text);
  return size >= smallestFont && size <= largestFont ? std::optional(size) : std::nullopt;
}

void FormatTools::ApplyFontSize() {
  if (const std::optional<double> size = TypedSize()) {
    SetFontSize(*m_window.rtfCarta, *size);
  } else {
    ShowFontBoxes();
  }
}

void FormatTools::ChooseFont() {
  QFont initial({FontName(*m_window.rtfCarta)});
  initial.setPointSizeF(FontSize(*m_window.rtfCarta));
  const std::optional<QFont> chosen = m_window.dlgCarta->ShowFont(initial);
  if (!chosen) {
    return;
  }
  ShowItem(m_window.cboFuentes, chosen->family());
  ShowItem(m_window.cboTamaño, automation::CStr(chosen->pointSizeF()));
  QTextCursor whole = m_window.rtfCarta->textCursor();
  whole.beginEditBlock();
  ApplyFontName();
  SetFontSize(*m_window.rtfCarta, chosen->pointSizeF());
  whole.endEditBlock();
}

void FormatTools::ChooseSpacing() {
  const Spacing before = SpacingOf(m_window.rtfCarta->textCursor());
  if (const std::optional<Spacing> chosen = m_window.dlgCarta->ShowSpacing(before)) {
    ChangeSpacing(*m_window.rtfCarta, before, *chosen);
  }
}

void FormatTools::ChooseColour() {
  const QColor initial = m_window.rtfCarta->currentCharFormat().foreground().color();
  if (const std::optional<QColor> chosen = m_window.dlgCarta->ShowColor(initial)) {
    SetColour(*m_window.rtfCarta, *chosen);
  }
}

}  // namespace letters
