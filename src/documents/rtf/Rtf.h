#pragma once

#include "documents/Export.h"
#include "documents/rtf/Report.h"

#include <QByteArray>
#include <QString>

class QTextCursor;
class QTextDocument;

/// Letters in Rich Text Format (RTF), read into a QTextDocument and written from it, without widgets.
///
/// Understood, shown and written from the document's own formats:
/// - font, size, bold, italic, underlines, strike-out, capitals, super- and subscript, text and background colour;
/// - alignment, left, right and first-line indent, space before and after, line spacing, direction, tab stops with
///   their kinds (leaders are carried), page breaks;
/// - bullets and numbers in both notations (`\pn`, `\ls` with the list tables); a list's mark is Qt's nearest one;
/// - line breaks, special characters, code pages by font and document, Unicode escapes;
/// - hyperlinks (the text shows, with its address), results of other fields and of objects;
/// - PNG, JPEG and DIB pictures, and metafiles made of one bitmap;
/// - tables, in tables too: widths, merged cells, lines, shading, inner margins, alignment, repeated rows. One with a
///   row that has other cells than it defines shows as its cells' paragraphs, as do those deeper than eight levels.
///
/// Carried, that is kept at its place and written back:
/// - byte for byte, as an object character without extent: unknown groups that may be ignored, footnotes, bookmarks,
///   annotations, drawings, index entries, fields and objects without a visible result, hidden text; as an image, the
///   group of every picture;
/// - byte for byte, aside: font, colour, style and list tables, information about the document, headers and footers,
///   instructions of fields, the data of objects;
/// - by their meaning: the other words for characters and paragraphs (language, spacing of letters, direction of a run,
///   borders, shading, positions, keeping together), for sections and the document (page size, margins), and for rows
///   and cells of tables (heights, positions).
///
/// Dropped where a paragraph is edited, and named in the report: words that the keyword table does not have, the trail
/// of editing sessions
/// (`\rsid`), fonts of other scripts that say nothing of the text itself (`\af` and its like), the markup of letters
/// that were HTML, alternative texts of list items, which are written anew. Lengths are cut at 32,767 twips.
///
/// Nothing is ever fetched, opened or executed: fields are not evaluated, objects' data not read, templates not loaded.
///
/// Public sources: Rich Text Format Specification, version 1.9.1 (the headers beside this one name its sections), and
/// the documentation of the rich edit control where it departs from that.
namespace rtf {

/// Reads `content` into `document`, whose text, formats, undo stack and default tab distance are replaced. What is no
/// RTF becomes plain text (UTF-8, or else Windows-1252). A refusal leaves the document empty. The document keeps the
/// content until the next reading, for Write.
KELDOCUMENTOS_EXPORT Report Read(const QByteArray& content, QTextDocument& document, const Limits& limits = {});

/// The same for a text column. RTF is ASCII; characters up to U+00FF stand for the bytes of those numbers, whatever
/// code page the column was filled with, and characters beyond were decoded on the way and are taken as themselves.
/// With a `textWidth`, in twips, tab stops are fitted to it (FittedTabs.h), which costs more later.
KELDOCUMENTOS_EXPORT Report Read(const QString& content, QTextDocument& document, const Limits& limits = {},
                                 int textWidth = 0);

/// The document as RTF, in ASCII except for what is carried byte for byte. The very bytes that were read while the
/// document is as it was read. After an edit all of them but for the words typed or deleted within runs; where more has
/// changed, the bytes up to the first such paragraph and from behind the last one, where they can stand around what is
/// written anew (a table is, as a whole). That reads the original once more.
KELDOCUMENTOS_EXPORT QByteArray Write(const QTextDocument& document);

/// The same for a text column: the very text that was read, or characters up to U+00FF.
KELDOCUMENTOS_EXPORT QString WriteText(const QTextDocument& document);

/// The selection as RTF of its own, for the clipboard; empty without a selection.
KELDOCUMENTOS_EXPORT QByteArray WriteSelection(const QTextCursor& cursor);

/// Replaces the selection with RTF, as pasted, in one step for undo. In a cell it stays in that cell, where tables
/// become nested ones and one cell alone its text. Of the content's
/// own document nothing comes along: its paper, headers and styles stay behind, and list tables become lists of the
/// document.
KELDOCUMENTOS_EXPORT Report Insert(const QByteArray& content, QTextCursor& cursor, const Limits& limits = {});

}  // namespace rtf
