#pragma once

#include "documents/letter/Twips.h"

#include <QTextCharFormat>

class QColor;
class QString;
class QTextCursor;
class QTextEdit;

/// What the tool bars do with the selection of a letter. Each is one step of undo.
namespace letters {

enum class Attribute { Bold, Italic, Underline };

/// Whether the whole selection has the attribute, or what is typed next.
bool Has(const QTextEdit& letter, Attribute attribute);
/// Gives the selection the attribute, or takes it from one that has it throughout. Returns whether it has it now.
bool Toggle(QTextEdit& letter, Attribute attribute);

/// The horizontal alignment of the paragraph with the caret: one of left, centre, right, justify.
Qt::AlignmentFlag AlignmentOf(const QTextCursor& cursor);
void Align(QTextEdit& letter, Qt::AlignmentFlag alignment);

/// Makes the selected paragraphs items with bullets, or plain paragraphs when all of them are items.
void ToggleBullets(QTextEdit& letter);

/// Makes the selected paragraphs plain ones.
void LeaveList(QTextEdit& letter);

/// Moves the left indent of the selected paragraphs, never below the margin.
void MoveIndent(QTextEdit& letter, documents::Twips distance);

void SetFontName(QTextEdit& letter, const QString& name);
/// In points; halves are kept.
void SetFontSize(QTextEdit& letter, double points);
void SetColour(QTextEdit& letter, const QColor& colour);

/// The name and the size of the font at the caret.
QString FontName(const QTextEdit& letter);
double FontSize(const QTextEdit& letter);

}  // namespace letters
