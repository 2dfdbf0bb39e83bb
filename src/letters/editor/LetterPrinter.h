#pragma once

#include "letters/editor/PageGeometry.h"

class QPrinter;
class QTextCursor;
class QTextDocument;

namespace letters {

/// Prints a letter with the margins of its paper. Lines break where they do on the screen. Prints nothing where the
/// margins leave no room.
void PrintLetter(const QTextDocument& letter, const Margins& margins, QPrinter& printer);
/// The same for what is selected.
void PrintSelection(const QTextCursor& selection, const Margins& margins, QPrinter& printer);

}  // namespace letters
