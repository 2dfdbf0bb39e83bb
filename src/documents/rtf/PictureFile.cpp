#include "documents/rtf/PictureFile.h"

#include "documents/rtf/Picture.h"

#include <QBuffer>
#include <QImageReader>

namespace rtf {

namespace {

constexpr double twipsPerInch = 1440;
constexpr double inchesPerMetre = 1 / 0.0254;
constexpr double usualDotsPerInch = 96;
// More than this is no finer on paper.
constexpr double mostDotsPerInch = 300;
constexpr int jpegQuality = 90;

/// In twips, within the room.
QSizeF ShownSize(const QImage& image, int width, int height) {
  const auto length = [](int dots, int dotsPerMetre) {
    const double dotsPerInch = dotsPerMetre / inchesPerMetre;
    return dots / (dotsPerInch >= 1 ? dotsPerInch : usualDotsPerInch) * twipsPerInch;
  };
  const QSizeF natural(length(image.width(), image.dotsPerMeterX()), length(image.height(), image.dotsPerMeterY()));
  const QSizeF room(qMax(1, width), qMax(1, height));
  return natural.width() <= room.width() && natural.height() <= room.height()
             ? natural
             : natural.scaled(room, Qt::KeepAspectRatio);
}

QImage Finest(const QImage& image, const QSizeF& twips) {
  const QSize most = (twips / twipsPerInch * mostDotsPerInch).toSize().expandedTo({1, 1});
  return image.width() > most.width() ? image.scaled(most, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : image;
}

QByteArray Encoded(const QImage& image, bool asJpeg) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, asJpeg ? "JPG" : "PNG", asJpeg ? jpegQuality : -1);
  return bytes;
}

PictureLetter Letter(const QByteArray& encoded, bool isJpeg, const QSizeF& twips) {
  if (encoded.isEmpty() || encoded.size() > mostPictureBytes) {
    return {{}, QStringLiteral("La imagen es demasiado grande. Redúzcala con un programa de imágenes.")};
  }
  return {QByteArrayLiteral("{\\rtf1\\ansi {\\pict") + (isJpeg ? "\\jpegblip" : "\\pngblip") + "\\picwgoal" +
              QByteArray::number(qRound(twips.width())) + "\\pichgoal" + QByteArray::number(qRound(twips.height())) +
              "\r\n" + encoded.toHex() + "}}",
          {}};
}

}  // namespace

PictureLetter LetterOfPicture(const QByteArray& file, int width, int height) {
  QBuffer buffer;
  buffer.setData(file);
  QImageReader reader(&buffer);
  const QByteArray format = reader.format();
  const QSize size = reader.size();
  if (size.isValid() && qint64(size.width()) * size.height() > mostPicturePixels) {
    return Letter({}, false, {});
  }
  // Cameras say by a mark which side is up, which no reader of letters knows.
  const bool isTurned = reader.transformation() != QImageIOHandler::TransformationNone;
  reader.setAutoTransform(true);
  const QImage image = reader.read();
  if (image.isNull()) {
    return {{}, QStringLiteral("El archivo no es una imagen que se pueda leer. Elija un archivo PNG o JPEG.")};
  }
  const QSizeF twips = ShownSize(image, width, height);
  const QImage finest = Finest(image, twips);
  const bool isJpeg = format == "jpeg";
  const bool staysAsItIs = (isJpeg || format == "png") && !isTurned && finest.size() == image.size();
  return Letter(staysAsItIs ? file : Encoded(finest, isJpeg), isJpeg, twips);
}

PictureLetter LetterOfPicture(const QImage& image, int width, int height) {
  if (image.isNull() || qint64(image.width()) * image.height() > mostPicturePixels) {
    return Letter({}, false, {});
  }
  const QSizeF twips = ShownSize(image, width, height);
  return Letter(Encoded(Finest(image, twips), false), false, twips);
}

}  // namespace rtf
