// Any bytes as a picture's group and as a text column.

#include "documents/rtf/Picture.h"
#include "documents/rtf/Rtf.h"
#include "documents/rtf/fuzz/FuzzRun.h"

#include <QImage>
#include <QTextDocument>

void FuzzOne(const QByteArray& input) {
  rtf::PictureSize(input);
  const QImage picture = rtf::ReadPicture(input);
  Expect(qint64(picture.width()) * picture.height() <= rtf::mostPicturePixels, "picture too large");

  const QString column = QString::fromUtf8(input);
  QTextDocument document;
  if (rtf::Read(column, document).outcome != rtf::Outcome::Refused) {
    Expect(rtf::WriteText(document) == column, "unchanged, but other characters");
  }
}
