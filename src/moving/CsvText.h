#pragma once

#include <QByteArray>

namespace moving {

/// A list's bytes as UTF-8 without a mark: by their mark; else taken for UTF-8 where all of it is that; else for
/// Windows-1252.
QByteArray ListAsUtf8(QByteArray bytes);

}  // namespace moving
