#pragma once

#include "letters/editor/Commands.h"

#include <optional>

class QTextCursor;

namespace letters {

struct LetterWindow;

/// The tool bar of formats and the boxes of fonts, over one window.
class FormatTools {
 public:
  explicit FormatTools(LetterWindow& window) : m_window(window) {}

  /// Fills the boxes with what the screen has, and chooses the editor's own font and size.
  void FillFontBoxes();
  /// Does a command of formats; false for another one. Raises 6 where the selection is too far down to be justified.
  bool Run(Command command);
  /// Buttons and boxes as the selection is.
  void ShowSelection();
  void ApplyFontName();
  void ApplyFontSize();

 private:
  bool ToggleAttribute(Command command);
  void ShowAttributes();
  void AlignSelection(Command command);
  void Justify();
  void PressAlignment(Command command);
  void ShowFontBoxes();
  void ChooseFont();
  void ChooseColour();
  void ChooseSpacing();
  std::optional<double> TypedSize() const;

  LetterWindow& m_window;
  /// How many steps of indent the tool bar has added.
  qint16 m_indentLevel = 0;
};

}  // namespace letters
