#pragma once

#include <QByteArray>
#include <QString>

namespace moving {

/// The characters of a list's bytes in the encoding of ListForm; without one by its mark, else UTF-8 where all of it
/// is that, else Windows-1252.
QString DecodeList(const QByteArray& bytes, const QString& encoding = {});

}  // namespace moving
