#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace reader {

/// A text of a file since 2000, as UTF-8: FF FE, then runs of one-byte characters that a zero byte switches to UTF-16
/// and back; without FF FE plain UTF-16. A lone surrogate becomes U+FFFD.
QByteArray DecodeText(QByteArrayView stored);

}  // namespace reader
