#pragma once

#include "documents/rtf/Properties.h"
#include "documents/rtf/Styles.h"

#include <QTextBlockFormat>
#include <QTextListFormat>

namespace rtf {

/// Pixels of Qt's documents, at their 96 dots per inch.
inline constexpr double twipsPerPixel = 15.0;
/// Indents of paragraphs are half-points: of all lengths Qt takes these alone in the units of the device, and that is
/// what letters are laid out for.
inline constexpr double twipsPerIndent = 10.0;

/// The format that shows a style. On the items of a list the first line's indent is kept aside, as the marker already
/// hangs to the left of the text. Tab stops are moved to where Qt counts them from, and a hanging indent gets the stop
/// that RTF implies. Tables and numbering are the caller's.
QTextBlockFormat ToBlockFormat(const ParagraphStyle& style, bool listItem);

/// The stops that a format has by itself, wherever FitTabs moved them.
QList<QTextOption::Tab> OwnTabs(const QTextBlockFormat& format, bool listItem);

/// The style that a format shows; `list` is the format of the paragraph's list, null outside lists. `indentWidth` is
/// the document's, in pixels.
ParagraphStyle FromBlockFormat(const QTextBlockFormat& format, const QTextListFormat* list, double indentWidth);

}  // namespace rtf
