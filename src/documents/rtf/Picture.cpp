#include "documents/rtf/Picture.h"

#include "documents/rtf/Tokenizer.h"

#include <QBuffer>
#include <QImageReader>
#include <QMutex>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace rtf {

namespace {

enum class PictureKind { Unknown, Png, Jpeg, Dib, Metafile };

struct PictureWords {
  PictureKind kind = PictureKind::Unknown;
  int width = 0;  ///< Twips, before scaling.
  int height = 0;
  int scaleX = 100;
  int scaleY = 100;
};

void ReadWord(PictureWords& words, const Token& token) {
  if (token.text == "pngblip") {
    words.kind = PictureKind::Png;
  } else if (token.text == "jpegblip") {
    words.kind = PictureKind::Jpeg;
  } else if (token.text == "dibitmap") {
    words.kind = PictureKind::Dib;
  } else if (token.text == "wmetafile") {
    words.kind = PictureKind::Metafile;
  } else if (token.text == "picwgoal") {
    words.width = token.parameter;
  } else if (token.text == "pichgoal") {
    words.height = token.parameter;
  } else if (token.text == "picscalex") {
    words.scaleX = token.parameter;
  } else if (token.text == "picscaley") {
    words.scaleY = token.parameter;
  }
}

/// Reads the first `\pict` of a group: its words, and its data where `data` is not null.
PictureWords ReadGroup(const QByteArray& group, QByteArray* data) {
  Tokenizer tokenizer({group.constData(), static_cast<std::size_t>(group.size())});
  PictureWords words;
  QByteArray hex;
  int depth = 0;
  int pictureDepth = 0;
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    const bool inPicture = pictureDepth != 0 && depth == pictureDepth;
    if (token.kind == TokenKind::GroupStart) {
      ++depth;
    } else if (token.kind == TokenKind::GroupEnd) {
      if (inPicture) {
        break;
      }
      --depth;
    } else if (token.kind == TokenKind::Word && token.text == "pict" && pictureDepth == 0) {
      pictureDepth = depth;
    } else if (inPicture && token.kind == TokenKind::Word) {
      ReadWord(words, token);
    } else if (inPicture && data == nullptr) {
      break;
    } else if (inPicture && token.kind == TokenKind::Text) {
      hex.append(token.text.data(), static_cast<qsizetype>(token.text.size()));
    } else if (inPicture && token.kind == TokenKind::Binary) {
      data->append(token.text.data(), static_cast<qsizetype>(token.text.size()));
    }
  }
  if (data != nullptr && data->isEmpty()) {
    *data = QByteArray::fromHex(hex);
  }
  return words;
}

quint32 Word32(const QByteArray& bytes, qsizetype at) {
  return at + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + at) : 0;
}

quint16 Word16(const QByteArray& bytes, qsizetype at) {
  return at + 2 <= bytes.size() ? qFromLittleEndian<quint16>(bytes.constData() + at) : quint16(0);
}

/// A bitmap file: the header that names where the pixels are, then the bitmap as it is.
QByteArray BitmapFile(const QByteArray& dib) {
  const quint32 headerSize = Word32(dib, 0);
  const bool old = headerSize == 12;
  const quint16 bits = Word16(dib, old ? 10 : 14);
  quint32 colours = old ? 0 : Word32(dib, 32);
  if (colours == 0 && bits <= 8) {
    colours = 1U << bits;
  }
  const quint32 masks = !old && headerSize == 40 && Word32(dib, 16) == 3 ? 12 : 0;
  const quint64 offset = 14ULL + headerSize + masks + quint64(colours) * (old ? 3 : 4);
  if (offset > static_cast<quint64>(dib.size()) + 14) {
    return {};
  }
  QByteArray file("BM");
  file.resize(14, '\0');
  qToLittleEndian(static_cast<quint32>(dib.size() + 14), file.data() + 2);
  qToLittleEndian(static_cast<quint32>(offset), file.data() + 10);
  return file + dib;
}

/// The bitmap that a metafile paints, from the first record that has one.
/// Source: [MS-WMF] "Bitmap Record Types".
QByteArray BitmapOfMetafile(const QByteArray& metafile) {
  qsizetype at = qsizetype(Word16(metafile, 2)) * 2;
  while (at + 6 <= metafile.size()) {
    const quint32 words = Word32(metafile, at);
    if (words < 3 || words > static_cast<quint32>(metafile.size())) {
      return {};
    }
    const qsizetype size = std::min(qsizetype(words) * 2, metafile.size() - at);
    qsizetype header = 0;
    switch (Word16(metafile, at + 4)) {
      case 0x0940:  // DIBBITBLT
        header = 6 + 16;
        break;
      case 0x0B41:  // DIBSTRETCHBLT
        header = 6 + 20;
        break;
      case 0x0F43:  // STRETCHDIB
        header = 6 + 22;
        break;
      default:
        break;
    }
    if (header != 0 && size > header + 40) {
      return BitmapFile(metafile.mid(at + header, size - header));
    }
    at += size;
  }
  return {};
}

/// Lets Qt read all that this reads: its own bound counts four bytes for each pixel, of black and white pictures, too,
/// and a scanned sheet is a little more. Whoever set another one gets it back. One at a time: the bound is the
/// process's, and letters are made ready for paper on threads of their own.
class RaisedBound {
 public:
  RaisedBound() : m_lock(&Mutex()), m_before(QImageReader::allocationLimit()) {
    if (m_before != 0) {
      QImageReader::setAllocationLimit(std::max(m_before, int(4 * mostPicturePixels / mebibyte) + 1));
    }
  }
  ~RaisedBound() { QImageReader::setAllocationLimit(m_before); }
  Q_DISABLE_COPY_MOVE(RaisedBound)

 private:
  static QMutex& Mutex() {
    static QMutex mutex;
    return mutex;
  }
  static constexpr qint64 mebibyte = 1024 * 1024;
  const QMutexLocker<QMutex> m_lock;
  const int m_before;
};

QImage Load(const QByteArray& data, const char* format) {
  QBuffer buffer;
  buffer.setData(data);
  QImageReader reader(&buffer, format);
  const QSize size = reader.size();
  const qint64 pixels = qint64(size.width()) * size.height();
  if (!size.isValid() || pixels > mostPicturePixels) {
    return {};
  }
  if (pixels > mostShownPixels) {
    // In eighths, as libjpeg reads: anything else would be read larger and scaled once more.
    constexpr double parts = 8;
    const double share = std::floor(parts * std::sqrt(double(mostShownPixels) / double(pixels))) / parts;
    reader.setScaledSize({int(std::ceil(size.width() * share)), int(std::ceil(size.height() * share))});
  }
  const RaisedBound bound;
  return reader.read();
}

double Pixels(int twips, int percent) {
  const double scaled = twips / 15.0 * (percent > 0 ? percent : 100) / 100.0;
  return qBound(0.0, scaled, 10000.0);
}

}  // namespace

QSizeF PictureSize(const QByteArray& group) {
  const PictureWords words = ReadGroup(group, nullptr);
  const QSizeF size(Pixels(words.width, words.scaleX), Pixels(words.height, words.scaleY));
  return size.isEmpty() ? QSizeF() : size;
}

QImage ReadPicture(const QByteArray& group) {
  if (group.size() > 2 * mostPictureBytes + 4096) {
    return {};
  }
  QByteArray data;
  const PictureWords words = ReadGroup(group, &data);
  if (data.isEmpty() || data.size() > mostPictureBytes) {
    return {};
  }
  switch (words.kind) {
    case PictureKind::Png:
      return Load(data, "png");
    case PictureKind::Jpeg:
      return Load(data, "jpg");
    case PictureKind::Dib:
      return Load(BitmapFile(data), "bmp");
    case PictureKind::Metafile:
      return Load(BitmapOfMetafile(data), "bmp");
    default:
      return {};
  }
}

}  // namespace rtf
