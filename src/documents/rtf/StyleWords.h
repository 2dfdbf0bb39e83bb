#pragma once

#include "documents/rtf/ColourTable.h"
#include "documents/rtf/Keywords.h"
#include "documents/rtf/Styles.h"
#include "documents/rtf/Tokenizer.h"

namespace rtf {

/// Tab stops of a paragraph beyond this many are left out.
inline constexpr qsizetype mostTabs = 64;

/// The character style after a control word; false for a word that is none of character formatting. A word without
/// its parameter means what RTF 1.9 gives as the default.
/// Source: Rich Text Format Specification 1.9.1, "Font (Character) Formatting Properties".
bool ApplyCharacterWord(CharacterStyle& style, const Keyword& keyword, const Token& token, const ColourTable& colours);

/// The same for paragraphs. `pendingTab` keeps the kind and leader of the tab stop that comes.
/// Source: Rich Text Format Specification 1.9.1, "Paragraph Formatting Properties", "Tabs".
bool ApplyParagraphWord(ParagraphStyle& style, TabStop& pendingTab, const Keyword& keyword, const Token& token,
                        const ColourTable& colours);

/// The word to carry for a control word: a colour's number becomes the colour.
CarriedWord Carried(const Keyword& keyword, const Token& token, const ColourTable& colours);

}  // namespace rtf
