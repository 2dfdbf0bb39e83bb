#pragma once

#include "platform/adodb/Connection.h"
#include "platform/automation/Error.h"

#include <QObject>
#include <QThread>

#include <array>
#include <atomic>
#include <functional>
#include <memory>

namespace host {

/// Does the window's work on the database on a thread and over a connection of its own, one job after the other, so
/// that neither a long list nor a busy database holds the window up.
class BackgroundReader : public QObject {
  Q_OBJECT

 public:
  /// What a job is about: a later one about the same makes an earlier one's result worthless. Writes are all done.
  enum class Topic { Choices, Selection, People, Mailing, Printers, Write };
  static constexpr std::size_t topicCount = 6;

  /// Runs in the window's thread when the job has ended.
  using Done = std::function<void()>;
  /// Runs in the reader's thread, with an open connection; it may raise.
  using Job = std::function<Done(adodb::Connection& connection)>;
  using MakeConnection = std::function<std::unique_ptr<adodb::Connection>()>;

  explicit BackgroundReader(MakeConnection makeConnection, QObject* parent = nullptr);
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
  void Work(Topic topic, int ticket, const Job& job);
  adodb::Connection& Opened();

  MakeConnection m_makeConnection;
  std::unique_ptr<adodb::Connection> m_connection;  ///< The thread's.
  std::array<std::atomic<int>, topicCount> m_tickets = {};
  std::array<int, topicCount> m_waiting = {};
  QThread m_thread;
  QObject* m_worker;
};

}  // namespace host
