#pragma once

#include "documents/Export.h"

#include <QByteArray>
#include <QImage>
#include <QString>

namespace rtf {

/// A letter of nothing but one picture, to be inserted; or why there is none, for the user.
struct PictureLetter {
  QByteArray content;
  QString reason;
};

/// The picture of a file (PNG, JPEG, or whatever else Qt reads), at the size that it says or at 96 dots an inch, no
/// larger than the given room in twips. Files stay as they are; what has more dots than print shows becomes smaller.
KELDOCUMENTOS_EXPORT PictureLetter LetterOfPicture(const QByteArray& file, int width, int height);
/// The same for a picture without a file, as another program offers it.
KELDOCUMENTOS_EXPORT PictureLetter LetterOfPicture(const QImage& image, int width, int height);

}  // namespace rtf
