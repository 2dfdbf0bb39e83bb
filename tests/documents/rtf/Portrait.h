#pragma once

#include <QStringList>

class QTextDocument;

namespace support {

/// Everything that a document holds, a line each: what is carried for the whole document, then for each paragraph its
/// format and list, its runs with text and format, and the format of its end. Two documents are equal if these are.
QStringList Portrait(const QTextDocument& document);

/// The first lines in which two portraits differ, for a test's message; empty if they are equal.
QString Difference(const QStringList& one, const QStringList& other);

}  // namespace support
