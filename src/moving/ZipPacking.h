#pragma once

#include <QByteArray>
#include <QFile>
#include <QIODevice>

#include <vector>

namespace moving {

/// A part of a zip file.
struct ZipPart {
  QByteArray name;
  QByteArray content;
  QFile* file = nullptr;  ///< Instead of the content: an open file, from its beginning.
  bool isCompressed = true;
};

/// Writes a zip file of these parts, in their order. False when that failed.
bool Pack(const std::vector<ZipPart>& parts, QIODevice& output);

}  // namespace moving
