#pragma once

#include <QByteArray>
#include <QString>

namespace process {

/// A new file of the user's that stays out of everybody's reach until it is put under its name, even where others may
/// write in the folder: it has an unguessable name in a folder of its own (mode 0700) beside `target`, in the same file
/// system. What is not put there goes with this object. What killed programs left in the target's folder goes with the
/// next such file there; a folder whose program still runs is locked.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(const QString& target);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  /// False where the target's folder lets nobody make such a file.
  bool IsValid() const { return m_folder >= 0; }
  /// The empty file, mode 0600. Whoever writes it may keep files of its name with a suffix ("-journal") beside it.
  QString Path() const;

  /// Gives the file the mode of another one, and its group where the user may; leaves it private where others
  /// than the user may have chosen them. False when that failed.
  bool TakeRightsOf(const QString& file) const;

  /// Begins the next file, for a target in the same folder as the first, which was placed or goes. False when it could
  /// not be made; nothing can be placed then.
  bool Next(const QString& target);

  enum class Existing { Keep, Replace };
  /// Puts the file under the target's name, in one step. False when that failed, so also for a file that is there and
  /// is to be kept.
  bool Place(Existing existing) const;

 private:
  void Make();
  bool IsAtItsPath() const;

  QByteArray m_target;
  QByteArray m_folderPath;
  QByteArray m_name;
  int m_folder = -1;
};

}  // namespace process
