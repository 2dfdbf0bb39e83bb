#include "documents/rtf/Properties.h"

#include <QCryptographicHash>

namespace rtf {

QString Piece::Name() const {
  return QString::fromLatin1(QCryptographicHash::hash(Bytes(), QCryptographicHash::Sha1).toHex());
}

}  // namespace rtf
