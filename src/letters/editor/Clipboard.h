#pragma once

#include <QByteArray>
#include <QImage>
#include <QTextCursor>

class QMimeData;

/// Rich text on its way through the clipboard.
namespace letters {

/// The selection as RTF, HTML and plain text. The HTML is made when somebody asks for it. The caller owns it.
QMimeData* ToClipboard(const QTextCursor& selection);

bool HasText(const QMimeData& data);
/// The richest form of the contents as RTF: as it is, or made of HTML. Empty where there is only plain text. Nothing
/// that HTML refers to is fetched or opened; its pictures are left out, and a page of nothing else is no text.
QByteArray RtfFrom(const QMimeData& data);
/// A picture that stands for itself; null where there is none.
QImage ImageFrom(const QMimeData& data);
/// Plain text without characters that mean something else in a document.
QString PlainFrom(const QMimeData& data);

}  // namespace letters
