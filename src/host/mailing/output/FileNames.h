#pragma once

#include <QSet>
#include <QString>

namespace host {

/// Gives parts names of files: no separators, no control characters, no point in front, not too long for any disk, each
/// once.
class FileNames {
 public:
  /// The name for what is called `wished`, with the suffix (".pdf").
  QString Next(const QString& wished, const QString& suffix);

 private:
  QSet<QString> m_taken;
};

}  // namespace host
