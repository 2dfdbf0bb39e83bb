#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

/// Letters that could not be saved, kept in a folder that only the user can read ("Kel/cartas" of the user's data) as
/// files in RTF that any word processor opens.
namespace letters {

struct Rescued {
  QString file;
  qint32 record = 0;  ///< 0 for a letter that was never saved.
  QString name;       ///< Without the characters that file names don't take.
  QDateTime when;
};

/// The folder, for messages.
QString RescueFolder();
/// Keeps a letter and gives its file, when all of it is on the disk; nothing where it can't be kept.
std::optional<QString> Rescue(const QByteArray& content, qint32 record, const QString& name);
/// The newest letter that was kept: of that record, or, for record 0, of any. Not what an editor still keeps for
/// itself (FileInUse).
std::optional<Rescued> FindRescued(qint32 record);
QByteArray ReadRescued(const Rescued& letter);
void Discard(const Rescued& letter);

/// A kept file that is nobody's to be offered while this object lives, however the program ends.
class FileInUse {
 public:
  explicit FileInUse(const QString& file);
  FileInUse(const FileInUse&) = delete;
  FileInUse& operator=(const FileInUse&) = delete;
  ~FileInUse();

  const QString& Path() const { return m_path; }

 private:
  QString m_path;
  int m_descriptor;
};

}  // namespace letters
