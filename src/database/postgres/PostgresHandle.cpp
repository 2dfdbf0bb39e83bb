#include "database/postgres/PostgresHandle.h"

#include "database/postgres/Passwords.h"
#include "database/postgres/PostgresErrors.h"

#include <QDeadlineTimer>
#include <QSysInfo>

#include <libpq-fe.h>
#include <poll.h>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr int longestConnecting = 10000;

void IgnoreNotice(void* /*nothing*/, const PGresult* /*notice*/) {}

bool IsOnThisMachine(const QByteArray& host) {
  return host.isEmpty() || host.startsWith('/') || host.startsWith('@') || host == "localhost" || host == "127.0.0.1" ||
         host == "::1";
}

// A stricter mode that the user's variables ask for stays.
bool AsksForEncryption() {
  const QByteArray mode = qgetenv("PGSSLMODE");
  return mode == "require" || mode == "verify-ca" || mode == "verify-full";
}

QByteArray Settings(const ConnectionString& target) {
  QByteArray settings =
      "-c search_path=kel,pg_catalog,pg_temp -c jit=off -c client_min_messages=warning"
      " -c idle_in_transaction_session_timeout=120000 -c client_connection_check_interval=2000"
      " -c tcp_keepalives_idle=5 -c tcp_keepalives_interval=5 -c tcp_keepalives_count=3"
      // An answer still under way holds the kernel's probes back.
      " -c tcp_user_timeout=20000";
  // 0 would mean to wait for ever.
  settings += " -c lock_timeout=" + QByteArray::number(std::max(target.WaitMilliseconds(), 1));
  return target.ReadOnly() ? settings + " -c default_transaction_read_only=on" : settings;
}

QByteArray ApplicationName() {
  return "kel " + qgetenv("USER") + '@' + QSysInfo::machineHostName().toUtf8();
}

using Setting = std::pair<const char*, QByteArray>;

std::vector<Setting> SettingsOf(const ConnectionString& target) {
  const ConnectionString::ServerPlace& place = target.Server();
  std::vector<Setting> settings = {{"host", place.host.toUtf8()},       {"port", place.port.toUtf8()},
                                   {"dbname", place.base.toUtf8()},     {"user", place.user.toUtf8()},
                                   {"service", place.service.toUtf8()}, {"application_name", ApplicationName()},
                                   {"client_encoding", "UTF8"},         {"keepalives_idle", "5"},
                                   {"keepalives_interval", "5"},        {"keepalives_count", "3"},
                                   {"tcp_user_timeout", "10000"},       {"options", Settings(target)}};
  if (!IsOnThisMachine(place.host.toUtf8()) && !AsksForEncryption()) {
    settings.emplace_back("sslmode", "require");
  }
  std::erase_if(settings, [](const Setting& setting) { return setting.second.isEmpty(); });
  return settings;
}

// Settings as the library takes them.
struct Words {
  explicit Words(const std::vector<Setting>& settings) {
    for (const Setting& setting : settings) {
      names.push_back(setting.first);
      values.push_back(setting.second.constData());
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
  }

  std::vector<const char*> names;
  std::vector<const char*> values;
};

// The server's answer is waited for here and not in the library, whose text of a refusal would be in the server's
// language: asked before, it gives the number of the refusal instead.
void Finish(PGconn* engine) {
  const QDeadlineTimer deadline(longestConnecting);
  PostgresPollingStatusType state = PGRES_POLLING_WRITING;
  while (state == PGRES_POLLING_WRITING || state == PGRES_POLLING_READING) {
    const short awaited = state == PGRES_POLLING_READING ? POLLIN : POLLOUT;
    pollfd socket = {PQsocket(engine), awaited, 0};
    if (poll(&socket, 1, static_cast<int>(deadline.remainingTime())) <= 0) {
      return;
    }
    state = PQconnectPoll(engine);
  }
}

}  // namespace

void PostgresDeleter::operator()(pg_conn* connection) const {
  PQfinish(connection);
}

void PostgresDeleter::operator()(pg_result* result) const {
  PQclear(result);
}

void PostgresDeleter::operator()(pg_cancel* cancel) const {
  PQfreeCancel(cancel);
}

PostgresHandle::PostgresHandle(const ConnectionString& target) : m_target(target) {
  Open();
  RequireUsable();
}

// Whether the server said that it wants a password, or another one than was answered.
bool PostgresHandle::WantsPassword() const {
  const bool answered = !Passwords::Instance().Find(m_target.Server()).isNull();
  return PQconnectionNeedsPassword(Engine()) != 0 || (answered && PQconnectionUsedPassword(Engine()) != 0);
}

// An answer that was wrong is asked for again, and not remembered.
void PostgresHandle::Open() {
  constexpr int mostAnswers = 3;
  for (int answers = 0;; ++answers) {
    Reach();
    if (PQstatus(Engine()) == CONNECTION_OK) {
      break;
    }
    if (!WantsPassword() || answers == mostAnswers || !Passwords::Instance().Ask(m_target)) {
      Passwords::Instance().Forget(m_target.Server());
      throw ConnectingError(Engine(), m_target);
    }
  }
  PQsetErrorVerbosity(Engine(), PQERRORS_DEFAULT);
  PQsetNoticeReceiver(Engine(), IgnoreNotice, nullptr);
}

void PostgresHandle::Reach() {
  std::vector<Setting> settings = SettingsOf(m_target);
  if (const QByteArray password = Passwords::Instance().Find(m_target.Server()); !password.isNull()) {
    settings.emplace_back("password", password);
  }
  const Words words(settings);
  m_engine.reset(PQconnectStartParams(words.names.data(), words.values.data(), 0));
  PQsetErrorVerbosity(Engine(), PQERRORS_SQLSTATE);
  if (PQstatus(Engine()) != CONNECTION_BAD) {
    Finish(Engine());
  }
}

bool PostgresHandle::IsAnswering(const ConnectionString& target) {
  std::vector<Setting> settings = SettingsOf(target);
  settings.emplace_back("connect_timeout", "3");
  const Words words(settings);
  return PQpingParams(words.names.data(), words.values.data(), 0) == PQPING_OK;
}

// A service file may name another machine and any mode.
void PostgresHandle::RequireUsable() const {
  if (!IsOnThisMachine(PQhost(Engine())) && PQsslInUse(Engine()) == 0) {
    throw UnusableServer(m_target, u"la conexión no va cifrada; pida «sslmode=verify-full»"_s);
  }
  if (qstrcmp(PQparameterStatus(Engine(), "server_encoding"), "UTF8") != 0) {
    throw UnusableServer(m_target,
                         u"la base de datos no guarda los textos en UTF-8; hay que crearla con esa codificación"_s);
  }
}

bool PostgresHandle::IsAlive() const {
  return PQstatus(Engine()) == CONNECTION_OK;
}

bool PostgresHandle::IsStillAlive() const {
  pollfd socket = {PQsocket(Engine()), POLLIN, 0};
  while (IsAlive() && poll(&socket, 1, 0) > 0 && PQconsumeInput(Engine()) != 0) {
  }
  return IsAlive();
}

PostgresResult PostgresHandle::Execute(const QByteArray& sql) const {
  PostgresResult result(PQexec(Engine(), sql.constData()));
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
    throw ServerError(result.get(), m_target);
  }
  return result;
}

void PostgresHandle::Run(const QByteArray& sql) const {
  Execute(sql);
}

QByteArray PostgresHandle::Value(const QByteArray& sql) const {
  const PostgresResult result = Execute(sql);
  const bool hasValue = PQntuples(result.get()) > 0 && PQgetisnull(result.get(), 0, 0) == 0;
  return hasValue ? QByteArray(PQgetvalue(result.get(), 0, 0)) : QByteArray();
}

void PostgresHandle::Cancel() const {
  std::array<char, 256> reason{};
  const std::unique_ptr<pg_cancel, PostgresDeleter> cancel(PQgetCancel(Engine()));
  if (cancel != nullptr) {
    PQcancel(cancel.get(), reason.data(), static_cast<int>(reason.size()));
  }
}

}  // namespace database
