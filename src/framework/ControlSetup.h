#pragma once

#include <QtGlobal>

#include <initializer_list>

class QComboBox;
class QTableView;
class QWidget;

namespace framework {

/// What all controls of a form get, whatever the dialog. Sizes follow the font, so that they hold at any scale.

/// Lists are found by typing (ComboSearch) and don't turn under a wheel that only passes over them; Enter presses the
/// button that has the focus, and a mnemonic gives its button the focus.
void PrepareControls(QWidget& form);

/// Gives boxes, lists and grids the size of their content. The width of a box or a list is the number of characters in
/// its dynamic property `Characters`, or the longest text that a box takes, or a common width; what is shorter than
/// that keeps its width in a wider cell. A grid shows its columns whole, and as many rows as its property `Rows` says
/// (10 without one). Called when the form is about to be shown, with its captions and models in place.
void SizeControls(QWidget& form);

/// Widths of a grid's columns until the user has chosen others, in characters. The last column takes what is left, and
/// at least its own width.
void SetColumnCharacters(QTableView& grid, std::initializer_list<int> characters);

/// The item data (an identifier) of the selected item of a list, 0 when nothing is selected.
qint32 ItemData(const QComboBox* combo);

}  // namespace framework
