#include "support/Relay.h"

#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace support {

namespace {

const QString socketName = u".s.PGSQL.5432"_s;
const QRegularExpression folderPart(u"Servidor=([^;]*)"_s);

sockaddr_un SocketIn(const QString& folder) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const QByteArray path = QFile::encodeName(folder + u'/' + socketName);
  std::strncpy(address.sun_path, path.constData(), sizeof(address.sun_path) - 1);
  return address;
}

int NewSocket() {
  return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

QByteArray Receive(int from) {
  std::array<char, 65536> bytes{};
  const ssize_t count = read(from, bytes.data(), bytes.size());
  return QByteArray(bytes.data(), static_cast<qsizetype>(std::max<ssize_t>(count, 0)));
}

bool SendAll(int to, const QByteArray& bytes) {
  for (qsizetype sent = 0; sent < bytes.size();) {
    const ssize_t count =
        send(to, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
    if (count <= 0) {
      return false;
    }
    sent += count;
  }
  return true;
}

using Clock = std::chrono::steady_clock;

/// What is on its way, and when it is there.
struct Parcel {
  Clock::time_point due;
  QByteArray bytes;
  bool isAnswer = false;
};

// In milliseconds; -1 for no end.
int TimeToNext(const std::deque<Parcel>& parcels) {
  if (parcels.empty()) {
    return -1;
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(parcels.front().due - Clock::now());
  return static_cast<int>(std::max<qint64>(left.count(), 0));
}

}  // namespace

Relay::Relay(const QString& connectionString)
    : m_original(connectionString), m_serverFolder(folderPart.match(connectionString).captured(1)) {
  const int listening = NewSocket();
  const sockaddr_un address = SocketIn(m_folder.path());
  if (bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 || listen(listening, 8) != 0 ||
      pipe(m_ending) != 0) {
    throw std::runtime_error("no relay");
  }
  m_thread = std::thread([this, listening] { Run(listening); });
}

Relay::~Relay() {
  close(m_ending[1]);
  m_thread.join();
  close(m_ending[0]);
}

QString Relay::ConnectionString() const {
  return QString(m_original).replace(folderPart, u"Servidor="_s + m_folder.path());
}

void Relay::BeAway(bool away) {
  const QString there = m_folder.filePath(socketName);
  const QString hidden = m_folder.filePath(u"away"_s);
  QFile::rename(away ? there : hidden, away ? hidden : there);
}

void Relay::SwallowAnswerTo(const QByteArray& text) {
  const std::lock_guard lock(m_mutex);
  m_text = text;
}

bool Relay::HoldsText(const QByteArray& message) {
  const std::lock_guard lock(m_mutex);
  if (m_text.isEmpty() || !message.contains(m_text)) {
    return false;
  }
  m_text.clear();
  return true;
}

void Relay::Run(int listening) {
  std::array<pollfd, 2> awaited = {pollfd{listening, POLLIN, 0}, pollfd{m_ending[0], POLLIN, 0}};
  std::vector<std::thread> lines;
  while (poll(awaited.data(), awaited.size(), -1) > 0 && awaited[1].revents == 0) {
    const int client = accept(listening, nullptr, nullptr);
    lines.emplace_back([this, client] {
      Serve(client);
      close(client);
    });
  }
  for (std::thread& line : lines) {
    line.join();
  }
  close(listening);
}

void Relay::Serve(int client) {
  const int server = NewSocket();
  const auto closeServer = qScopeGuard([&] { close(server); });
  const sockaddr_un address = SocketIn(m_serverFolder);
  if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
    return;
  }
  bool isToBeCut = false;
  bool wasAnswered = true;
  std::deque<Parcel> onTheirWay;
  std::array<pollfd, 3> awaited = {pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0},
                                   pollfd{m_ending[0], POLLIN, 0}};
  while (poll(awaited.data(), awaited.size(), TimeToNext(onTheirWay)) >= 0 && awaited[2].revents == 0) {
    for (const bool isAnswer : {false, true}) {
      if (awaited[isAnswer ? 1 : 0].revents == 0) {
        continue;
      }
      const QByteArray bytes = Receive(isAnswer ? server : client);
      m_roundTrips += wasAnswered && !isAnswer ? 1 : 0;
      wasAnswered = wasAnswered && isAnswer;
      isToBeCut = isToBeCut || (!isAnswer && HoldsText(bytes));
      if (bytes.isEmpty() || (isAnswer && isToBeCut)) {
        return;
      }
      onTheirWay.push_back({Clock::now() + m_delay.load(), bytes, isAnswer});
    }
    for (; !onTheirWay.empty() && onTheirWay.front().due <= Clock::now(); onTheirWay.pop_front()) {
      const auto& [due, bytes, isAnswer] = onTheirWay.front();
      if (!SendAll(isAnswer ? client : server, bytes)) {
        return;
      }
      wasAnswered = wasAnswered || isAnswer;
    }
  }
}

}  // namespace support
