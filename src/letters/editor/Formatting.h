#pragma once

#include "documents/letter/Twips.h"

#include <QTextCharFormat>

#include <optional>

class QColor;
class QString;
class QTextCursor;
class QTextEdit;

/// What the tool bars do with the selection of a letter. Each is one step of undo.
namespace letters {

/// Raised and lowered exclude each other. The highlight that is given is yellow.
enum class Attribute { Bold, Italic, Underline, StrikeOut, Raised, Lowered, Highlight };

/// Whether the whole selection has the attribute, or what is typed next.
bool Has(const QTextEdit& letter, Attribute attribute);
/// Gives the selection the attribute, or takes it from one that has it throughout. Returns whether it has it now.
bool Toggle(QTextEdit& letter, Attribute attribute);

/// The horizontal alignment of the paragraph with the caret: one of left, centre, right, justify.
Qt::AlignmentFlag AlignmentOf(const QTextCursor& cursor);
void Align(QTextEdit& letter, Qt::AlignmentFlag alignment);

enum class ListKind { Bullets, Numbers };

/// Makes the selected paragraphs items of a list, or plain paragraphs when all of them are items of that kind. Numbers
/// go on from a list of theirs just above, or are the first of one just below.
void ToggleList(QTextEdit& letter, ListKind kind);

/// Makes the selected paragraphs plain ones.
void LeaveList(QTextEdit& letter);

/// Moves the left indent of the selected paragraphs, never below the margin.
void MoveIndent(QTextEdit& letter, documents::Twips distance);

/// The room of a paragraph's lines. In multiples of the font's own distance, and in points.
struct Spacing {
  std::optional<double> lines;  ///< None where the distance is a length.
  double before = 0;
  double after = 0;

  bool operator==(const Spacing&) const = default;
};

Spacing SpacingOf(const QTextCursor& cursor);
/// Changes what differs between both in the selected paragraphs and leaves the rest of each.
void ChangeSpacing(QTextEdit& letter, const Spacing& before, const Spacing& after);

/// Nothing for a selection that is so throughout, as the next one.
void SetFontName(QTextEdit& letter, const QString& name);
/// In points; halves are kept.
void SetFontSize(QTextEdit& letter, double points);
void SetColour(QTextEdit& letter, const QColor& colour);

/// The name and the size of the font at the caret.
QString FontName(const QTextEdit& letter);
double FontSize(const QTextEdit& letter);

}  // namespace letters
