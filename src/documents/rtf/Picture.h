#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>

namespace rtf {

/// Pictures larger than this are kept but not shown: a sheet of A4 that was scanned at 600 dots per inch is not. Of
/// PNGs with 16 bits for each colour it is half as many pixels.
inline constexpr qint64 mostPicturePixels = 36'000'000;
/// Larger ones are shown in fewer pixels: such a sheet in 300 dots per inch.
inline constexpr qint64 mostShownPixels = 9'000'000;
inline constexpr qsizetype mostPictureBytes = 8 * 1024 * 1024;

/// The size at which a `\pict` group wants to be shown, in pixels; empty where it does not say. Reads no further than
/// the group's words.
QSizeF PictureSize(const QByteArray& group);

/// The picture of a group that holds a `\pict` group: PNG, JPEG, a device-independent bitmap, or a Windows metafile
/// made of one, as a pasted bitmap is. Null for anything else, and beyond the limits above.
/// Source: Rich Text Format Specification 1.9.1, "Pictures".
QImage ReadPicture(const QByteArray& group);

}  // namespace rtf
