#pragma once

#include "platform/adodb/Connection.h"
#include "platform/automation/Error.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

namespace host {

/// Does work on the database on a thread of its own, over one connection of its own, one piece after the other, so that
/// neither a long one nor a busy database holds the window up. What is only read is best asked for through a Reading.
class DatabaseThread : public QObject {
 public:
  /// Makes a closed connection, on the thread: once, and again after an error. Between two pieces it is closed.
  using MakeConnection = std::function<std::unique_ptr<adodb::Connection>()>;
  /// What is to be done afterwards, on this object's thread.
  using Answer = std::function<void()>;
  using Work = std::function<Answer(adodb::Connection&)>;
  /// Asked on either thread; what nobody wants any more is neither done nor answered.
  using Wanted = std::function<bool()>;
  using Failure = std::function<void(const automation::Error&)>;

  explicit DatabaseThread(MakeConnection makeConnection, QObject* parent = nullptr);
  /// Waits for all that is still wanted, which a busy database holds up for as long as the connection waits for it; no
  /// answer follows.
  ~DatabaseThread() override;

  /// `work` runs on the thread, with an open connection; `failed` stands for its answer when it throws.
  void Run(const Wanted& wanted, const Work& work, const Failure& failed);

 private:
  void Do(const Wanted& wanted, const Work& work, const Failure& failed);
  Answer Try(const Work& work, const Failure& failed);

  MakeConnection m_makeConnection;
  QThread m_thread;
  QObject* m_worker;
  std::unique_ptr<adodb::Connection> m_connection;  ///< The worker's, from its first piece of work on.
};

/// One thing that is read again and again in the background: of several questions only the last one's answer arrives,
/// and none when this object is gone.
template <typename Result>
class Reading {
 public:
  using Take = std::function<void(Result&)>;

  /// Borrows `thread`. `take` and `failed` are called where that object lives, outside any call of this class.
  Reading(
      DatabaseThread& thread, Take take, DatabaseThread::Failure failed = [](const automation::Error&) {})
      : m_thread(thread), m_take(std::move(take)), m_failed(std::move(failed)) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() { Withdraw(); }

  /// `read` is given the connection, and whether its answer is still wanted, for long readings to ask.
  void Ask(const std::function<Result(adodb::Connection&, const DatabaseThread::Wanted&)>& read) {
    m_underWay = true;
    const DatabaseThread::Wanted wanted = [last = m_last, number = ++*m_last] { return *last == number; };
    m_thread.Run(
        wanted,
        [this, read, wanted](adodb::Connection& connection) -> DatabaseThread::Answer {
          return [this, result = std::make_shared<Result>(read(connection, wanted))] {
            m_underWay = false;
            m_take(*result);
          };
        },
        [this](const automation::Error& error) {
          m_underWay = false;
          m_failed(error);
        });
  }
  /// The last question's answer is not wanted any more.
  void Withdraw() {
    ++*m_last;
    m_underWay = false;
  }
  bool IsUnderWay() const { return m_underWay; }

 private:
  DatabaseThread& m_thread;
  Take m_take;
  DatabaseThread::Failure m_failed;
  std::shared_ptr<std::atomic<int>> m_last = std::make_shared<std::atomic<int>>(0);
  bool m_underWay = false;
};

}  // namespace host
