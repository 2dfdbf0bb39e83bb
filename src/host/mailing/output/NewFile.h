#pragma once

#include "platform/process/UnfinishedFile.h"

#include <QFile>
#include <QString>

namespace host {

/// A private file that appears under its name when it is whole, in the place of one that is there; without that nothing
/// is left of it.
class NewFile {
 public:
  /// Raises 5 where no file can be made there.
  explicit NewFile(const QString& path);

  /// To be written; sequential writers may keep it until Finish.
  QFile& Device() { return m_file; }
  /// Raises 5 where something could not be written.
  void Finish();

 private:
  /// Remembers a failure, which writers of documents don't.
  class CheckedFile : public QFile {
   public:
    using QFile::QFile;
    bool HasFailed() const { return m_hasFailed; }

   protected:
    qint64 writeData(const char* data, qint64 size) override;

   private:
    bool m_hasFailed = false;
  };

  [[noreturn]] void Fail() const;

  QString m_path;
  process::UnfinishedFile m_unfinished;
  CheckedFile m_file;
};

}  // namespace host
