#pragma once

#include "letters/editor/RecoveryFile.h"

#include <QObject>

#include <chrono>
#include <future>
#include <memory>

class QTimer;

namespace rtf {
class GradualWriter;
}

namespace letters {

class LetterEdit;

/// Keeps a letter in a file while somebody writes: what is typed reaches the disk within about a minute, so that no end
/// of the program or of the machine costs more. The text is made in steps that nobody feels and written by a thread of
/// its own. The file stays with the end of this object, and is offered then, unless it was dropped.
class RunningCopy : public QObject {
  Q_OBJECT

 public:
  /// A child of the letter, which is kept `pause` after its first change, and again that long after the next one.
  explicit RunningCopy(LetterEdit* letter, std::chrono::milliseconds pause = std::chrono::minutes(1));
  ~RunningCopy() override;

  /// The letter was loaded: from now on its changes count, under that record and name.
  void Watch(qint32 record, const QString& name);
  /// The letter was stored, or its changes given up: the file goes.
  void Drop();

 Q_SIGNALS:
  /// The letter was kept, or could not be: there is no room, or no right to write.
  void Tried(bool kept);

 private:
  void OnChange();
  void Step();
  void OnStored(const std::optional<QString>& file);

  LetterEdit* m_letter;
  qint32 m_record = 0;
  QString m_name;
  std::unique_ptr<rtf::GradualWriter> m_writer;
  std::unique_ptr<FileInUse> m_file;
  /// What the disk is busy with.
  std::future<std::optional<QString>> m_storing;
  bool m_changedSince = false;
  QTimer* m_due;
  QTimer* m_step;
};

}  // namespace letters
