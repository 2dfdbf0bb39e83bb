#include "host/access/Door.h"

#include "host/access/Accounts.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/text/FoldForSearch.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Execute;
using std::chrono::seconds;

namespace host {

namespace {

constexpr int freeFailures = 2;
constexpr seconds longestWait{60};

QString KeyOf(const QString& name) {
  constexpr qsizetype longest = 100;
  return texts::FoldForSearch(name.trimmed().left(longest));
}

QString Stored(const QDateTime& moment) {
  return moment.isValid() ? moment.toString(Qt::ISODateWithMs) : QString();
}

bool CannotBeWritten(const automation::Error& error) {
  return error.Number() == adodb::DatabaseReadOnly || error.Number() == adodb::DiskFull;
}

}  // namespace

seconds WaitAfter(int failures) {
  constexpr int stepsToLongest = 6;
  const int steps = std::min(failures - freeFailures, stepsToLongest);
  return steps <= 0 ? seconds(0) : std::min(seconds(1 << steps), longestWait);
}

// A moment that is farther away than the wait is one of a clock that was set back since: it begins anew.
seconds Door::Remaining(Count& count) const {
  const QDateTime now = m_clock();
  const seconds full = WaitAfter(count.failures);
  if (!count.until.isValid() || count.until <= now) {
    return seconds(0);
  }
  const QDateTime latest = now.addSecs(full.count());
  count.until = std::min(count.until, latest);
  constexpr qint64 second = 1000;
  return seconds((now.msecsTo(count.until) + second - 1) / second);
}

seconds Door::Add(Count& count) const {
  const seconds wait = Remaining(count);
  if (wait > seconds(0)) {
    return wait;
  }
  constexpr int mostCounted = 1000;
  count.failures = std::clamp(count.failures, 0, mostCounted) + 1;
  count.until = m_clock().addSecs(WaitAfter(count.failures).count());
  return seconds(0);
}

Door::Try Door::Begin(adodb::Connection& connection, const QString& name) {
  Try begun{.name = name};
  const std::optional<Account> account = FindAccount(connection, name);
  if (!account || !account->MayEnter()) {
    begun.wait = Add(m_counts[KeyOf(name)]);
    return begun;
  }
  begun.userId = account->id;
  begun.hash = account->hash;
  try {
    adodb::Transaction together(connection);
    const auto row = Execute(connection, u"SELECT Fallos, EsperaHasta FROM Claves WHERE codUsuario={}", account->id);
    Count count{automation::CLng(row->Field(0)),
                QDateTime::fromString(automation::Text(row->Field(1)), Qt::ISODateWithMs)};
    begun.wait = Add(count);
    Execute(connection, u"UPDATE Claves SET Fallos={}, EsperaHasta='{}' WHERE codUsuario={}", count.failures,
            Stored(count.until), account->id);
    together.Commit();
  } catch (const automation::Error& error) {
    if (!CannotBeWritten(error)) {
      throw;
    }
    begun.wait = Add(m_counts[KeyOf(name)]);
  }
  return begun;
}

void Door::Succeed(adodb::Connection& connection, const Try& done) {
  SucceedAlone(done.name);
  try {
    Execute(connection, u"UPDATE Claves SET Fallos=0, EsperaHasta='', UltimaEntrada='{}' WHERE codUsuario={}",
            m_clock().toString(Qt::ISODate), done.userId);
  } catch (const automation::Error& error) {
    if (!CannotBeWritten(error)) {
      throw;
    }
  }
}

seconds Door::Wait(adodb::Connection& connection, const QString& name) {
  const seconds here = Remaining(m_counts[KeyOf(name)]);
  const std::optional<Account> account = FindAccount(connection, name);
  if (!account) {
    return here;
  }
  const auto row = Execute(connection, u"SELECT Fallos, EsperaHasta FROM Claves WHERE codUsuario={}", account->id);
  if (row->AtEnd()) {
    return here;
  }
  Count count{automation::CLng(row->Field(0)),
              QDateTime::fromString(automation::Text(row->Field(1)), Qt::ISODateWithMs)};
  return std::max(here, Remaining(count));
}

Door::Try Door::BeginAlone(const QString& name) {
  return {.name = name, .wait = Add(m_counts[KeyOf(name)])};
}

void Door::SucceedAlone(const QString& name) {
  m_counts.remove(KeyOf(name));
}

}  // namespace host
