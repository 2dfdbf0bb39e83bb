#pragma once

#include <QString>
#include <QTextCursor>

namespace letters {

/// The first place of `text` in the selection, or without one in the whole letter, whatever the case; null when there
/// is none.
QTextCursor FindText(const QTextCursor& cursor, const QString& text);
/// The next place behind the selection, or from the start again.
QTextCursor FindNextText(const QTextCursor& cursor, const QString& text);

}  // namespace letters
