#include "letters/editor/RunningCopy.h"

#include "documents/rtf/GradualWriter.h"
#include "letters/editor/LetterEdit.h"

#include <QTextDocument>
#include <QTimer>

#include <utility>

namespace letters {

namespace {

// A step is shorter than what a key press takes to show, and leaves as much time to others.
constexpr std::chrono::milliseconds stepLength{5};
constexpr std::chrono::milliseconds stepPause{5};

}  // namespace

RunningCopy::RunningCopy(LetterEdit* letter, std::chrono::milliseconds pause)
    : QObject(letter), m_letter(letter), m_due(new QTimer(this)), m_step(new QTimer(this)) {
  m_due->setObjectName(QStringLiteral("runningCopy"));
  m_due->setSingleShot(true);
  m_due->setInterval(pause);
  m_step->setSingleShot(true);
  m_step->setInterval(stepPause);
  connect(m_due, &QTimer::timeout, this, &RunningCopy::Step);
  connect(m_step, &QTimer::timeout, this, &RunningCopy::Step);
}

RunningCopy::~RunningCopy() = default;

void RunningCopy::Watch(qint32 record, const QString& name) {
  m_record = record;
  m_name = name;
  m_writer.reset();
  connect(m_letter->document(), &QTextDocument::contentsChange, this, &RunningCopy::OnChange);
}

void RunningCopy::Drop() {
  m_due->stop();
  m_step->stop();
  if (m_storing.valid()) {
    OnStored(m_storing.get());
  }
  if (m_file) {
    Discard({.file = m_file->Path(), .name = {}, .when = {}});
    m_file.reset();
  }
}

void RunningCopy::OnChange() {
  m_changedSince = true;
  if (!m_due->isActive() && !m_step->isActive()) {
    m_due->start();
  }
}

// Makes the text, hands it to the disk, waits for that.
void RunningCopy::Step() {
  if (m_storing.valid()) {
    if (m_storing.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
      m_step->start();
      return;
    }
    OnStored(m_storing.get());
    return;
  }
  if (!m_writer) {
    m_writer = std::make_unique<rtf::GradualWriter>(*m_letter->document());
  }
  if (m_writer->Continue(stepLength)) {
    m_changedSince = false;
    m_storing = std::async(std::launch::async, &Rescue, m_writer->Result(), m_record, m_name);
  }
  m_step->start();
}

// The copy before stays until there is a new one.
void RunningCopy::OnStored(const std::optional<QString>& file) {
  if (file) {
    const std::unique_ptr<FileInUse> before = std::exchange(m_file, std::make_unique<FileInUse>(*file));
    if (before) {
      Discard({.file = before->Path(), .name = {}, .when = {}});
    }
  }
  if (!file || m_changedSince) {
    m_due->start();
  }
  Q_EMIT Tried(file.has_value());
}

}  // namespace letters
