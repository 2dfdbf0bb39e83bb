#pragma once

#include <QTemporaryDir>

namespace support {

/// A disk of a few megabytes that this process alone sees, and that can be filled up or closed to writing. It takes
/// root's rights to make; a test without one skips what it is for, and says so.
class SmallDisk {
 public:
  SmallDisk();
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk();

  bool IsThere() const { return m_isThere; }
  QString Path(const QString& name) const { return m_folder.filePath(name); }
  /// Leaves no byte free.
  void Fill() const;
  void Free() const;
  void CloseToWriting() const;

 private:
  QTemporaryDir m_folder;
  bool m_isThere = false;
};

}  // namespace support
