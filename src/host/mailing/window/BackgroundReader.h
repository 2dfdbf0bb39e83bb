#pragma once

#include "host/records/DatabaseThread.h"

#include <QObject>

#include <array>
#include <atomic>

namespace host {

/// Does the window's work on the database in the background, and knows what of it is still wanted.
class BackgroundReader : public QObject {
  Q_OBJECT

 public:
  /// What a job is about: a later one about the same makes an earlier one's result worthless. Writes are all done.
  enum class Topic { Choices, Selection, People, Mailing, Printers, Write };
  static constexpr std::size_t topicCount = 6;

  /// Runs in the window's thread when the job has ended.
  using Done = DatabaseThread::Answer;
  /// Runs in the background, with an open connection; it may raise.
  using Job = DatabaseThread::Work;

  explicit BackgroundReader(DatabaseThread::MakeConnection makeConnection, QObject* parent = nullptr);
  /// Waits for the job in progress; what waits behind it is dropped, writes are done.
  ~BackgroundReader() override;

  void Run(Topic topic, Job job);
  bool IsBusy(Topic topic) const { return m_waiting[static_cast<std::size_t>(topic)] > 0; }
  bool IsBusy() const;

 Q_SIGNALS:
  void Failed(host::BackgroundReader::Topic topic, const automation::Error& error);
  /// Something began or ended.
  void BusyChanged();

 private:
  void Finish(Topic topic, const Done& done);

  std::array<std::atomic<int>, topicCount> m_tickets = {};
  std::array<int, topicCount> m_waiting = {};
  DatabaseThread m_thread;
};

}  // namespace host
