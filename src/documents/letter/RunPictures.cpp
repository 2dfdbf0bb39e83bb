#include "documents/letter/RunPictures.h"

#include <QHash>
#include <QImage>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

namespace documents {

namespace {

// A picture's size counts 96 to the inch.
constexpr double finest = 600.0 / 96;

QImage Scaled(const QImage& picture, QSizeF printed) {
  const QSizeF wanted = (printed.isEmpty() ? QSizeF(picture.size()) : printed) * finest;
  if (picture.width() <= wanted.width() || picture.height() <= wanted.height()) {
    return picture;
  }
  return picture.scaled(wanted.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

void KeepPictures(QTextDocument& letter) {
  QHash<QString, QSizeF> sizes;
  for (QTextBlock block = letter.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextImageFormat format = at.fragment().charFormat().toImageFormat();
      if (format.isValid()) {
        QSizeF& size = sizes[format.name()];
        size = size.expandedTo(QSizeF(format.width(), format.height()));
      }
    }
  }
  const QTextDocument::ResourceProvider source = letter.resourceProvider();
  QHash<QString, QVariant> pictures;
  for (auto size = sizes.cbegin(); source && size != sizes.cend(); ++size) {
    const QImage picture = source(QUrl(size.key())).value<QImage>();
    pictures.insert(size.key(), picture.isNull() ? QVariant() : Scaled(picture, size.value()));
  }
  letter.setResourceProvider([pictures](const QUrl& url) { return pictures.value(url.toString()); });
}

}  // namespace documents
