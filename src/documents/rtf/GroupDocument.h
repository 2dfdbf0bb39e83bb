#pragma once

#include <QByteArray>
#include <QList>

class QTextDocument;

/// Groups that a letter carries byte for byte (a header, a footnote), read as documents of their own and written back.
namespace rtf {

struct PreambleData;

/// The groups that stand one after the other in `groups`.
QList<QByteArray> SplitGroups(const QByteArray& groups);

/// What stands behind a group's name, its closing brace included, as a letter with the tables of the one it is from.
QByteArray AsLetter(const QByteArray& contents, const PreambleData& tables);

/// Reads what the group says, in the fonts, colours and lists of the letter that it belongs to.
void ReadGroup(const QByteArray& group, const QTextDocument& letter, QTextDocument& document);

/// The group with the text of the document that was read from it.
QByteArray WriteGroup(const QByteArray& group, const QTextDocument& document);

}  // namespace rtf
