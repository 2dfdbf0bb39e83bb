#pragma once

#include "documents/letter/Margins.h"

class QPrinter;
class QTextCursor;
class QTextDocument;

namespace letters {

/// Prints a letter with the margins of its paper. Lines break where they do on the screen. Prints nothing where the
/// margins leave no room.
void PrintLetter(const QTextDocument& letter, const documents::Margins& margins, QPrinter& printer,
                 const documents::Paper& paper = documents::UsualPaper());
/// The same for what is selected.
void PrintSelection(const QTextCursor& selection, const documents::Margins& margins, QPrinter& printer,
                    const documents::Paper& paper = documents::UsualPaper());

}  // namespace letters
