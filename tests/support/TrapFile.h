#pragma once

#include <QByteArray>
#include <QString>

namespace support {

/// A picture file that nobody has a reason to open, and that knows when somebody did.
class TrapFile {
 public:
  /// Throws std::runtime_error where the system can't watch files.
  TrapFile();
  TrapFile(const TrapFile&) = delete;
  TrapFile& operator=(const TrapFile&) = delete;
  ~TrapFile();

  QString Path() const { return m_path; }
  /// A name that opens the file wherever it is taken for HTML, and has a link.
  QString Name() const;
  /// Whether the file was opened since the last time this was asked.
  bool WasOpened();

 private:
  QString m_path;
  int m_watch;
};

}  // namespace support
