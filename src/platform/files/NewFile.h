#pragma once

#include "platform/process/UnfinishedFile.h"

#include <QFile>
#include <QString>

namespace files {

/// A private file that appears under its name when it is whole, in the place of one that is there; without that nothing
/// is left of it. One object may make many files of a folder, one after the other. What is there and no file (a folder,
/// a device) is never replaced.
class NewFile {
 public:
  /// Raises 5 where no file can be made there.
  explicit NewFile(const QString& path);
  /// Begins the next one, in the same folder.
  void Next(const QString& path);

  /// To be written; sequential writers may keep it until Finish.
  QFile& Device() { return m_file; }
  /// Raises 5 where something could not be written.
  void Finish();
  /// The same without giving it its name: whoever wants a whole file only for a while reads it at Path.
  void RequireWhole();
  QString Path() const { return m_unfinished.Path(); }

 private:
  /// Remembers a failure, which writers of documents don't.
  class CheckedFile : public QFile {
   public:
    using QFile::QFile;
    bool HasFailed() const { return m_hasFailed; }
    void Forgive() { m_hasFailed = false; }

   protected:
    qint64 writeData(const char* data, qint64 size) override;

   private:
    bool m_hasFailed = false;
  };

  void Open(bool isMade);
  [[noreturn]] void Fail() const;

  QString m_path;
  process::UnfinishedFile m_unfinished;
  CheckedFile m_file;
};

}  // namespace files
