// Pictures that were not read from RTF.

#include "documents/rtf/Writer.h"

#include <QBuffer>
#include <QImage>
#include <QTextImageFormat>
#include <QUrl>

namespace rtf {

/// A PNG group of an image that the document has as a resource; empty where it has none.
QByteArray Writer::PictureOf(const QTextCharFormat& format) const {
  const QTextImageFormat image = format.toImageFormat();
  const QVariant resource = m_document.resource(QTextDocument::ImageResource, QUrl(image.name()));
  const QImage pixels = resource.userType() == QMetaType::QByteArray ? QImage::fromData(resource.toByteArray())
                                                                     : resource.value<QImage>();
  if (pixels.isNull()) {
    return {};
  }
  QBuffer buffer;
  buffer.open(QBuffer::WriteOnly);
  pixels.save(&buffer, "PNG");
  constexpr double twipsPerPixel = 15.0;
  const auto twips = [](double wanted, int natural) { return qRound((wanted > 0 ? wanted : natural) * twipsPerPixel); };
  RtfText group;
  group.OpenGroup();
  group.Word("\\pict\\pngblip");
  group.Word("\\picw", pixels.width());
  group.Word("\\pich", pixels.height());
  group.Word("\\picwgoal", twips(image.width(), pixels.width()));
  group.Word("\\pichgoal", twips(image.height(), pixels.height()));
  group.Raw("\r\n" + buffer.data().toHex());
  group.CloseGroup();
  return group.Bytes();
}

}  // namespace rtf
