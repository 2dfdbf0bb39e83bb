#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

namespace support {

/// Stands between a program and a server on a local socket, hands everything on as slowly as a test wants it, and cuts
/// lines.
class Relay {
 public:
  /// `connectionString` names the folder of the server's socket.
  explicit Relay(const QString& connectionString);
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;
  ~Relay();

  /// The same database by way of this.
  QString ConnectionString() const;
  /// What is sent from now on, to the server or from it, is that long on its way.
  void Delay(std::chrono::milliseconds delay) { m_delay = delay; }
  /// Whether new lines find nobody.
  void BeAway(bool away);
  /// How often something was sent and an answer waited for, on all lines. Without a delay what is sent in two parts
  /// may count twice.
  int RoundTrips() const { return m_roundTrips; }
  /// The next message to the server that holds this text gets there, its answer doesn't come back, and the line is cut.
  void SwallowAnswerTo(const QByteArray& text);

 private:
  void Run(int listening);
  void Serve(int client);
  bool HoldsText(const QByteArray& message);

  QTemporaryDir m_folder;
  QString m_original;
  QString m_serverFolder;
  std::mutex m_mutex;
  QByteArray m_text;
  std::atomic<std::chrono::milliseconds> m_delay{};
  std::atomic<int> m_roundTrips = 0;
  int m_ending[2] = {-1, -1};
  std::thread m_thread;
};

}  // namespace support
