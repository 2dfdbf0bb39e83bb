#pragma once

#include <QByteArray>
#include <QString>

namespace moving {

/// A list's bytes as UTF-8 without a mark, from the encoding of ListForm; without one by their mark, else UTF-8 where
/// all of it is that, else Windows-1252. Raises 5, naming the line, where some lines are the one and some the other.
QByteArray ListAsUtf8(QByteArray bytes, const QString& encoding = {});

}  // namespace moving
