#include "paper/LetterPages.h"

namespace paper {

LetterPages::LetterPages(const QTextDocument& letter, const documents::Margins& margins, const documents::Paper& sheet)
    : m_letter(letter, margins, sheet), m_sheet(sheet) {}

LetterPages::LetterPages(const QTextCursor& selection, const documents::Margins& margins, const documents::Paper& sheet)
    : m_letter(selection, margins, sheet), m_sheet(sheet) {}

}  // namespace paper
