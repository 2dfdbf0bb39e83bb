#pragma once

#include <QString>
#include <QTextCursor>

/// Texts of a letter, whatever the case. An empty one is nowhere.
namespace letters {

/// The first place of `text` in the selection, or without one in the whole letter; null when there is none.
QTextCursor FindText(const QTextCursor& cursor, const QString& text);
/// The next place behind the selection, or from the start again.
QTextCursor FindNextText(const QTextCursor& cursor, const QString& text);
/// Whether the selection is a place of `text`.
bool IsFound(const QTextCursor& cursor, const QString& text);

int CountText(const QTextDocument& letter, const QString& text);
/// Puts `other` in every place of `text`, as one step of undo; what is put in isn't searched. Returns how many they
/// were.
int ReplaceText(QTextDocument& letter, const QString& text, const QString& other);

}  // namespace letters
