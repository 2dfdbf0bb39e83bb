#pragma once

#include <QByteArray>

namespace bench {

/// A letter of about `bytes` bytes as the classic rich edit control writes them: accents, headings, justified text with
/// indents and colours, tab stops, and a bullet list of three items in every nine paragraphs of about a hundred bytes.
QByteArray BigLetter(qsizetype bytes);

/// A letter of one page in the same form.
QByteArray OnePage();
/// A table of so many rows with four cells each, between two paragraphs.
QByteArray LongTable(int rows);

}  // namespace bench
